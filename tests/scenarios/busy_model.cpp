// Rules written down once more, for whole events instead of texts.
#include "scenarios/busy_model.h"

#include <array>
#include <cstdio>
#include <utility>

namespace corvane::busy {

namespace {

constexpr int kFirstDay = 15;
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::size_t kFullLog = 1001;
// The earliest: the first tick of the watchdog may come at once.
constexpr std::int64_t kTimeoutMs = 29'700;
constexpr int kNewStart = 50;

constexpr std::array kListed = {
    "D_Alert",       "D_Call_Proceeding", "D_Call_Restore", "D_Connect",  "D_Connect_Acknowledge",
    "D_Disconnect",  "D_Facility",        "D_Info",         "D_SDS_Data", "D_Status",
    "D_TX_Continue", "D_TX_Granted",      "D_Wait"};

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::string Summary(const std::map<int, int>& counts) {
  std::string text = "GSSI;Call Activity\r\n";
  for (const auto& [group, calls] : counts) {
    text += std::to_string(group) + ";" + std::to_string(calls) + "\r\n";
  }
  return text;
}

}  // namespace

Model::Model(std::int64_t begin_s, std::vector<std::string> call_log)
    : begin_s_(begin_s), log_(std::move(call_log)), day_(Day()) {
  EndStep();
}

int Model::Day() const {
  return kFirstDay + static_cast<int>((begin_s_ + now_ms_ / 1000) / kSecondsPerDay);
}

std::string Model::Time() const {
  const auto second = static_cast<int>((begin_s_ + now_ms_ / 1000) % kSecondsPerDay);
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", second / 3600, second / 60 % 60,
                second % 60);
  return text.data();
}

std::string Model::Stamp() const {
  return std::to_string(Day()) + "/11/2026 " + Time();
}

std::string Model::Folder(int day) const {
  return "202611" + std::to_string(day) + "\\";
}

std::string Model::DailyFile(int day) const {
  return Folder(day) + "DailyCallActivity_" + std::to_string(day) + "-11-2026.csv";
}

void Model::AdvanceTo(std::int64_t ms) {
  if (following_ && ms > deadline_ms_) {
    now_ms_ = deadline_ms_;
    AdvanceTo(deadline_ms_);
    ++seen_.timed_out;
    EndCall(" - Call timeout occured - Did not see D-Release for Call ID: " +
            std::to_string(followed_.id));
    EndStep();
  }
  now_ms_ = ms;
  if (Day() == day_) return;
  if (!today_.empty()) files_[DailyFile(day_)] += Summary(today_);
  today_.clear();
  day_ = Day();
}

void Model::Take(const Event& event) {
  AdvanceTo(event.ms);
  switch (event.what) {
    case What::kLogModeOn:
      if (following_) {
        ++seen_.ended_by_log_mode;
        following_ = false;
        Stamped(" - Manual D-Release occured and UI reset");
        Log("");
      }
      log_mode_ = true;
      Log("");
      Stamped(" - LOG mode active - No calls will be heard");
      break;
    case What::kLogModeOff:
      log_mode_ = false;
      Stamped(" - LOG mode de-activated - Calls can now be heard");
      break;
    default:
      TakeLine(event);
      break;
  }
  EndStep();
}

void Model::TakeLine(const Event& event) {
  if (event.line == last_lines_[0] || event.line == last_lines_[1]) {
    ++seen_.repeats;
    return;
  }
  last_lines_[next_slot_] = event.line;
  next_slot_ = 1 - next_slot_;

  WriteCcLog(event.line);
  if (!event.encrypted) {
    List(event.line);
    if (event.what == What::kSetup && !event.individual) {
      if (event.status == "Transmission Not_granted") {
        ++seen_.not_granted;
        if (log_mode_) (void)CountAsNew(event);
      } else if (log_mode_) {
        Count(event);
        return;
      } else if (!following_) {
        Follow(event);
      }
    }
  }
  WriteCcLog(event.line);
  if (following_ && event.id == followed_.id) FollowedCall(event);
}

void Model::List(const std::string& line) {
  for (const char* name : kListed) {
    if (Has(line, name)) Stamped(" - " + line);
  }
}

bool Model::CountAsNew(const Event& setup) {
  if (setup.id < last_id_ - kNewStart) {
    ++seen_.wraps;
    last_id_ = -1;
  }
  if (setup.id <= last_id_) {
    ++seen_.not_counted;
    return false;
  }
  last_id_ = setup.id;
  files_[DailyFile(Day())] += Time() + ";" + std::to_string(setup.group) + ";" +
                              std::to_string(setup.id) + ";D-Setup " + setup.status + "\r\n";
  return true;
}

void Model::Count(const Event& setup) {
  if (!CountAsNew(setup)) return;
  ++seen_.counted;
  ++today_[setup.group];
  ++total_[setup.group];
  Stamped(" - Call ID: " + std::to_string(setup.id) + " - On carrier: " +
          std::to_string(setup.carrier) + " - Group: " + GroupText(setup.group));
}

void Model::Follow(const Event& setup) {
  if (setup.group == 9004) {
    const std::string text = " - Skipping Call, lockout found GSSI: " + GroupText(setup.group);
    if (log_.size() >= 2 && Has(log_[log_.size() - 2], text)) return;
    ++seen_.skipped_by_lockout;
    Stamped(text);
    return;
  }
  ++seen_.followed;
  following_ = true;
  followed_ = setup;
  deadline_ms_ = now_ms_ + kTimeoutMs;
  const std::string id = " - Call ID: " + std::to_string(setup.id);
  Stamped(id + " - On carrier: " + std::to_string(setup.carrier) +
          " - Group: " + GroupText(setup.group));
  Stamped(id + " - Calling SSI: " + PartyText(setup.party));
}

void Model::FollowedCall(const Event& event) {
  const std::string id = " - Call ID: " + std::to_string(followed_.id);
  const std::string last = log_.empty() ? "" : log_.back();
  if (event.what == What::kRelease) {
    EndCall(id + " - VC D-Released");
  } else if (event.what == What::kDisconnect) {
    EndCall(id + " - VC D-Disconnect");
  } else if (event.what == What::kCeased) {
    const std::string text = " - VC D-TX-Ceased SSI: " + PartyText(followed_.party);
    if (!Has(last, text)) Stamped(id + text);
  } else if (event.what == What::kGranted) {
    deadline_ms_ = now_ms_ + kTimeoutMs;
    if (!Has(last, " - VC D-TX-Granted SSI: " + std::to_string(event.party))) {
      followed_.party = event.party;
      Stamped(id + " - VC D-TX-Granted SSI: " + PartyText(event.party));
    }
  }
}

void Model::EndCall(const std::string& text) {
  following_ = false;
  Stamped(text);
  Log("");
}

std::string Model::GroupText(int group) const {
  const std::string number = std::to_string(group) + " ";
  if (group == 9001) return number + "[Fire & rescue]";
  if (group == 9002)
    return number +
           "[K\xF6ln S\xFC"
           "d]";
  if (group == 9004) return number + "[Not for me]";
  return number;
}

std::string Model::PartyText(int party) const {
  const bool labelled = party == 5010 && followed_.group == 9001;
  return std::to_string(party) + (labelled ? " [Engine 1]" : "");
}

void Model::Log(const std::string& text) {
  log_.push_back(text);
}

void Model::Stamped(const std::string& text) {
  Log(Stamp() + text);
}

void Model::WriteCcLog(const std::string& line) {
  files_[Folder(Day()) + "TETRA_cc.log"] += line + "\r\n";
}

void Model::EndStep() {
  for (; log_written_ < log_.size(); ++log_written_) {
    files_[Folder(Day()) + "TETRA_event.log"] += log_[log_written_] + "\r\n";
  }
  if (log_.size() < kFullLog) return;
  ++seen_.log_clears;
  log_.clear();
  log_written_ = 0;
}

void Model::End(std::int64_t ms) {
  AdvanceTo(ms);
  if (total_.empty()) return;
  files_[Folder(kFirstDay) + "Call_Activity_" + std::to_string(kFirstDay) + "-11-2026.csv"] =
      Summary(total_);
}

}  // namespace corvane::busy
