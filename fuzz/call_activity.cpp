// The day's file of counted calls: read, saved, read again.
#include "store/call_activity.h"

#include "bench/following_rig.h"
#include "fuzz/fuzzing.h"

namespace corvane {
namespace {

using fuzzing::Require;

// Holds one file, whatever its name, and counts copies made beside it.
class OneFile : public rig::CountingFiles {
 public:
  explicit OneFile(std::string given) : content(std::move(given)) {}
  [[nodiscard]] bool Exists(const std::string& path) override {
    return !path.ends_with(".bad") && !path.ends_with(".new");
  }
  [[nodiscard]] FileError ReadAll(const std::string&, std::string& out) override {
    out = content;
    return kFileOk;
  }
  [[nodiscard]] FileError WriteAll(const std::string& path, std::string_view text) override {
    (path.ends_with(".bad") ? bad : written) = text;
    return kFileOk;
  }
  [[nodiscard]] FileError MoveOver(const std::string& from, const std::string& to) override {
    Require(to + ".new" == from, "the file is replaced by its new version");
    content = written;
    return kFileOk;
  }
  std::string content;
  std::string written;
  std::string bad;
};

void Check(const std::string& given) {
  OneFile files(given);
  rig::Following following(&files);
  CallActivity& activity = following.activity;
  activity.LoadCallActivity();
  Require(activity.CallActivityLoaded, "a file that can be read is loaded");
  Require(files.bad.empty() || files.bad == given, "a bad file is kept as it was");
  const auto records = activity.CallActivityTable.size();
  const std::int32_t saved = activity.SaveCallActivity();
  Require(saved == (records == 0 ? 0 : static_cast<std::int32_t>(records) - 1), "all are saved");
  if (records == 0) return;
  const std::string text = files.content;
  Require(text == CallActivityText(activity.CallActivityTable), "the file is the table");

  OneFile second(text);
  rig::Following next(&second);
  next.activity.LoadCallActivity();
  Require(second.bad.empty(), "what is written has no bad line");
  Require(CallActivityText(next.activity.CallActivityTable) == text, "it reads as the same");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
