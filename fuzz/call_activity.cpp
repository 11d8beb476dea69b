// The day's file of counted calls: read, saved, read again.
#include "store/call_activity.h"

#include "bench/following_rig.h"
#include "fuzz/fuzzing.h"

namespace corvane {
namespace {

using fuzzing::Require;

constexpr const char* kFile = "C:\\Corvane\\Daily\\20261115\\Call_Activity_15-11-2026.csv";

std::string ContentOf(const rig::Following& following, const std::string& path) {
  return following.files.Content(path).value_or("");
}

void Check(const std::string& given) {
  rig::Following following;
  following.files.Put(kFile, given);
  CallActivity& activity = following.activity;
  activity.LoadCallActivity();
  Require(activity.CallActivityLoaded, "a file that can be read is loaded");
  const std::string bad = ContentOf(following, std::string(kFile) + ".bad");
  Require(bad.empty() || bad == given, "a bad file is kept as it was");
  const auto records = activity.CallActivityTable.size();
  const std::int32_t saved = activity.SaveCallActivity();
  Require(saved == (records == 0 ? 0 : static_cast<std::int32_t>(records) - 1), "all are saved");
  if (records == 0) return;
  const std::string text = ContentOf(following, kFile);
  Require(text == CallActivityText(activity.CallActivityTable), "the file is the table");

  rig::Following next;
  next.files.Put(kFile, text);
  next.activity.LoadCallActivity();
  Require(!next.files.Content(std::string(kFile) + ".bad"), "what is written has no bad line");
  Require(CallActivityText(next.activity.CallActivityTable) == text, "it reads as the same");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
