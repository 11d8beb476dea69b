// Loading and saving through the program's own readers and writers.
#include "tools/lists/program_lists.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "archive/path_text.h"
#include "archive/replay_ports.h"
#include "archive/user_files.h"
#include "base/number_text.h"
#include "base/text.h"
#include "panel/form1.h"
#include "store/saved_lists.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

constexpr const char* kGroupFile = "TETRA_GSSI.txt";
constexpr const char* kRadioFile = "TETRA_SSI.txt";

// Who only looks changes nothing, not even a save that was cut short.
class ReadOnlyFiles : public NoFiles {
 public:
  explicit ReadOnlyFiles(Files& files) : files_(files) {}
  [[nodiscard]] bool Exists(const std::string& path) override { return files_.Exists(path); }
  [[nodiscard]] FileError ReadAll(const std::string& path, std::string& content) override {
    return files_.ReadAll(path, content);
  }
  [[nodiscard]] FileError MoveOver(const std::string&, const std::string&) override {
    return kPermissionDenied;
  }
  [[nodiscard]] std::string FromUtf8(std::string_view text) override {
    return files_.FromUtf8(text);
  }

 private:
  Files& files_;
};

// The window whose status log the readers write to.
struct Reader {
  NoWindow window;
  Form1 form{window};
};

std::string WithoutSlash(std::string folder) {
  while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
  return folder;
}

}  // namespace

ProgramLists::ProgramLists(const std::string& folder)
    : folder_(WithoutSlash(folder)),
      files_(SystemFiles()),
      read_only_(std::make_unique<ReadOnlyFiles>(*files_)),
      clock_(SystemClock()) {}

std::string ProgramLists::LoadGroups(bool writable) {
  if (!files_->IsDirectory(folder_)) return folder_ + ": there is no such folder";
  Reader reader;
  GroupList list(writable ? *files_ : *read_only_, reader.form, groups, folder_);
  const ErrorNumber failure = list.Load();
  return failure == kNoError ? "" : folder_ + ": " + kGroupFile + ": " + MeaningOf(failure);
}

std::string ProgramLists::LoadRadios(bool writable) {
  Reader reader;
  SubscriberList list(writable ? *files_ : *read_only_, *clock_, reader.form, radios, folder_);
  const ErrorNumber failure = list.Load();
  if (failure == kNoError) return "";
  const std::string why = ReplaceAll(list.why_not(), "\r\n", " ");
  return folder_ + ": " + kRadioFile + ": " + (why.empty() ? MeaningOf(failure) : why);
}

std::set<NetworkCode> ProgramLists::Networks() const {
  std::set<NetworkCode> networks;
  for (const GssiRecord& group : groups) networks.insert({group.Mcc, group.Mnc});
  for (const SsiRecord& radio : radios) networks.insert({radio.Mcc, radio.Mnc});
  return networks;
}

std::string ProgramLists::Running() const {
  return "Corvane runs in " + folder_ + " and would overwrite its lists: close it first";
}

bool ProgramLists::IsOneOf(const std::string& path) const {
  for (const char* name : {kGroupFile, kRadioFile}) {
    std::error_code error;
    if (std::filesystem::equivalent(PathOfNarrow(path), PathOfNarrow(folder_) / name, error))
      return true;
  }
  return false;
}

std::string ProgramLists::Save(bool groups_changed, bool radios_changed,
                               std::vector<std::string>& written) {
  if (CorvaneRunsIn(folder_)) return Running();
  for (const auto& [changed, name] :
       {std::pair{groups_changed, kGroupFile}, {radios_changed, kRadioFile}}) {
    if (!changed) continue;
    if (const std::string wrong = KeepCopy(name, written); !wrong.empty()) return wrong;
  }
  Reader reader;
  GroupList group_list(*files_, reader.form, groups, folder_);
  SubscriberList radio_list(*files_, *clock_, reader.form, radios, folder_);
  if (groups_changed && group_list.SaveGssiList() < 0) {
    return folder_ + ": " + kGroupFile + " could not be written, it is as it was";
  }
  if (groups_changed) written.emplace_back(kGroupFile);
  if (radios_changed && radio_list.SaveSsiList() < 0) {
    return folder_ + ": " + kRadioFile + " could not be written, it is as it was";
  }
  if (radios_changed) written.emplace_back(kRadioFile);
  return "";
}

std::string ProgramLists::KeepCopy(const char* name, std::vector<std::string>& written) {
  const std::string path = folder_ + "\\" + name;
  if (!files_->Exists(path)) return "";
  std::string content;
  const std::string wrong = folder_ + ": no copy of " + name + " could be kept";
  if (files_->ReadAll(path, content) != kFileOk) return wrong;
  const DateTime now = clock_->Now();
  const std::string stem = std::string(name).substr(0, std::string(name).rfind('.')) + "_" +
                           FolderDate(now) + "_" + ClockDigits(now);
  std::string copy = stem + ".txt";
  for (int again = 2; files_->Exists(folder_ + "\\" + copy); ++again) {
    copy = stem + "_" + Decimal(again) + ".txt";
  }
  if (files_->WriteAll(folder_ + "\\" + copy, content) != kFileOk) {
    // What is cut off is no copy.
    (void)files_->Delete(folder_ + "\\" + copy);
    return wrong;
  }
  written.push_back(copy);
  return "";
}

}  // namespace corvane::tools
