// make_day DAILY CALLS PER_HOUR SHORTEST_MS LONGEST_MS RECORDINGS: day folders as Corvane would
// have written them on a network with the stand-in's traffic, for measuring and looking at reports.
// Follows one call at a time from 15 November 2026, midnight, on until CALLS are followed.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/number_text.h"
#include "standin/agenda.h"
#include "standin/air.h"
#include "standin/traffic.h"

namespace {

using namespace corvane;
using namespace corvane::standin;

constexpr std::int64_t kMsPerDay = 86400000;
constexpr int kFirstDay = 15;
constexpr int kLastDay = 30;
constexpr int kRate = 8000;

struct Wish {
  std::filesystem::path daily;
  long calls = 0;
  TrafficSettings traffic;
  long recordings = 0;
};

std::string Bytes(std::uint32_t number, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

// Speech, as far as a picture of it goes: tones that swell and pause.
std::string Sound(std::int64_t ms, int seed) {
  const auto samples = static_cast<std::uint32_t>(ms * kRate / 1000);
  std::string wav = "RIFF" + Bytes(36 + 2 * samples, 4) + "WAVEfmt " + Bytes(16, 4) + Bytes(1, 2) +
                    Bytes(1, 2) + Bytes(kRate, 4) + Bytes(2 * kRate, 4) + Bytes(2, 2) +
                    Bytes(16, 2) + "data" + Bytes(2 * samples, 4);
  for (std::uint32_t i = 0; i < samples; ++i) {
    const double t = static_cast<double>(i) / kRate;
    const bool pause = std::fmod(t + seed % 5, 6.0) > 3.8;
    const double swell = std::pow(std::sin(t * (2.1 + seed % 3)) * std::cos(t * 7.3), 2);
    const double tone = std::sin(2 * std::numbers::pi * (180 + seed % 7 * 40) * t);
    const double sample = pause ? 0 : 12000 * swell * tone;
    wav += Bytes(static_cast<std::uint32_t>(static_cast<std::int32_t>(sample)), 2);
  }
  return wav;
}

class Program {
 public:
  explicit Program(const Wish& wish) : wish_(wish) {}

  void Run() {
    Air air;
    Agenda agenda;
    air.signalling_on_control = true;
    air.SetEvents({[this](const Pdu& pdu) { Take(pdu.line); }, [this, &air] { air_ = &air; }});
    air_ = &air;
    Traffic traffic(
        air, agenda, [this] { return now_ms_; }, 20261115);
    traffic.SetTraffic(wish_.traffic);
    Stamped("MCC:262  MNC:42  LA:101");
    while (followed_ < wish_.calls || call_) {
      const auto due = agenda.NextDueMs();
      if (!due || *due / kMsPerDay > kLastDay - kFirstDay) break;
      EndIfSilent(*due);
      now_ms_ = std::max(now_ms_, *due);
      if (const auto action = agenda.TakeDue(now_ms_)) action();
    }
    std::printf("calls,setups,recordings,airtime_s\n%ld,%ld,%ld,%lld\n", followed_, setups_,
                recorded_, static_cast<long long>(airtime_s_));
  }

 private:
  struct Followed {
    Call call;
    std::int64_t begin_ms = 0;
  };

  [[nodiscard]] DateTime Now() const {
    const std::int64_t second = now_ms_ / 1000;
    return {2026,
            11,
            kFirstDay + static_cast<int>(second / 86400),
            static_cast<int>(second / 3600 % 24),
            static_cast<int>(second / 60 % 60),
            static_cast<int>(second % 60)};
  }
  std::ofstream& Log(const char* name) {
    const std::filesystem::path folder = wish_.daily / FolderDate(Now());
    if (folder != folder_) {
      folder_ = folder;
      logs_.clear();
      std::filesystem::create_directories(folder / "Record");
    }
    std::ofstream& log = logs_[name];
    if (!log.is_open()) log.open(folder / name, std::ios::binary);
    return log;
  }
  void Stamped(const std::string& text) {
    Log("TETRA_event.log") << FixedGeneralDate(Now()) << " - " << text << "\r\n";
  }
  [[nodiscard]] std::string CallId() const { return "Call ID: " + Decimal(call_->call.id); }

  void Take(const std::string& line) {
    Log("TETRA_cc.log") << line << "\r\n" << line << "\r\n";
    if (line.find("D_Setup") != std::string::npos) ++setups_;
    if (!call_) {
      Follow(line);
      return;
    }
    if (line.find("Call ID:" + Decimal(call_->call.id) + " ") == std::string::npos) return;
    const Call* now = air_->Find(call_->call.id);
    if (line.find("D_Release") != std::string::npos) {
      End(CallId() + " - VC D-Released");
    } else if (line.find("D_Disconnect") != std::string::npos) {
      End(CallId() + " - VC D-Disconnect");
    } else if (line.find("D_TX_Ceased") != std::string::npos) {
      Stamped(CallId() + " - VC D-TX-Ceased SSI: " + Decimal(talker_));
    } else if (line.find("D_TX_Granted") != std::string::npos && now != nullptr) {
      talker_ = now->party;
      Stamped(CallId() + " - VC D-TX-Granted SSI: " + Decimal(talker_));
    }
  }

  void Follow(const std::string& line) {
    const bool wanted = line.find("D_Setup Transmission Granted") != std::string::npos &&
                        line.find("Point_to_multipoint") != std::string::npos &&
                        line.find("PDU encrypted") == std::string::npos;
    if (!wanted || followed_ == wish_.calls) return;
    for (const auto& [id, call] : air_->calls()) {
      if (SetupLine(call) != line) continue;
      call_ = Followed{call, now_ms_};
      talker_ = call.party;
      const std::string label = call.group % 2 == 0 ? "[Group " + Decimal(call.group) + "]" : "";
      Stamped(CallId() + " - On carrier: " + Decimal(call.carrier) +
              " - Group: " + Decimal(call.group) + " " + label);
      Stamped(CallId() + " - Calling SSI: " + Decimal(call.party));
      name_ = ClockDigits(Now()) + "_" + Decimal(call.id) + "_" + Decimal(call.group) + ".wav";
      ++followed_;
      return;
    }
  }

  // A call whose end was not heard is left when nobody has spoken for a while.
  void EndIfSilent(std::int64_t until_ms) {
    constexpr std::int64_t kTimeoutMs = 10000;
    if (!call_ || air_->IsOn(call_->call.id, call_->call.serial)) {
      silent_since_ms_ = until_ms;
      return;
    }
    if (until_ms - silent_since_ms_ < kTimeoutMs) return;
    now_ms_ = std::max(now_ms_, silent_since_ms_ + kTimeoutMs);
    End("Call timeout occured - Did not see D-Release for Call ID: " + Decimal(call_->call.id));
  }

  void End(const std::string& text) {
    Stamped(text);
    Log("TETRA_event.log") << "\r\n";
    const std::int64_t ms = now_ms_ - call_->begin_ms;
    airtime_s_ += now_ms_ / 1000 - call_->begin_ms / 1000;
    if (recorded_ < wish_.recordings) {
      std::ofstream(folder_ / "Record" / name_, std::ios::binary)
          << Sound(ms, static_cast<int>(followed_));
      ++recorded_;
    }
    call_.reset();
  }

  const Wish& wish_;
  Air* air_ = nullptr;
  std::int64_t now_ms_ = 0;
  std::int64_t silent_since_ms_ = 0;
  std::filesystem::path folder_;
  std::map<std::string, std::ofstream> logs_;
  std::optional<Followed> call_;
  std::int32_t talker_ = 0;
  std::string name_;
  long followed_ = 0;
  long setups_ = 0;
  long recorded_ = 0;
  std::int64_t airtime_s_ = 0;
};

}  // namespace

int main(int count, char** values) {
  if (count != 7) {
    std::fprintf(stderr,
                 "usage: make_day DAILY CALLS PER_HOUR SHORTEST_MS LONGEST_MS RECORDINGS\n");
    return 2;
  }
  const auto number = [values](int at) { return ParseDecimal<int>(values[at]).value_or(0); };
  Wish wish;
  wish.daily = values[1];
  wish.calls = number(2);
  wish.traffic.calls_per_hour = number(3);
  wish.traffic.shortest_ms = number(4);
  wish.traffic.longest_ms = number(5);
  wish.recordings = number(6);
  wish.traffic.carriers = {2610, 2611, 2612, 2613};
  wish.traffic.last_party = 5400;
  wish.traffic.individual = 4;
  wish.traffic.encrypted = 3;
  wish.traffic.not_granted = 3;
  wish.traffic.missed = 2;
  wish.traffic.disconnected = 15;
  wish.traffic.groups.clear();
  // Some groups are busier than others.
  for (std::int32_t group = 9001; group <= 9040; ++group) {
    for (std::int32_t share = 0; share < 1 + 60 / (group - 9000); ++share) {
      wish.traffic.groups.push_back(group);
    }
  }
  Program(wish).Run();
  return 0;
}
