// A day folder that grows, and what is shared of it.
#pragma once

#include <string>
#include <vector>

#include "archive/instant.h"
#include "tools/share/live_calls.h"
#include "tools/share/live_day.h"
#include "tools/share/outbox.h"
#include "tools/share/sidecar.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {

inline constexpr DateTime kDay = {2026, 11, 15};
inline const char* const kDate = "15/11/2026 ";
inline const char* const kWav = "142306_7_9001.wav";

class ShareTest : public ToolsTest {
 protected:
  // A second of sound.
  static std::string Sound() {
    const auto word = [](unsigned value) {
      std::string bytes;
      for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>((value >> shift) & 0xFFU);
      }
      return bytes;
    };
    return "RIFF" + word(36 + 4000) + "WAVEfmt " + word(16) + word(0x00010001) + word(2000) +
           word(4000) + word(0x00100002) + "data" + word(4000) + std::string(4000, '\x10');
  }
  void Record(const std::string& name) const { Put("20261115/Record/" + name, Sound()); }
  void Log(const std::string& time, const std::string& text) {
    log_ += kDate + time + " - " + text + "\r\n";
    Put("20261115/TETRA_event.log", log_);
  }
  std::vector<SharedCall> LookAt(LiveDay& day, const char* time) {
    const auto now = SecondsOf(*ParseIsoDate(std::string("2026-11-15 ") + time));
    return day.Look(
        now, [](const std::string&, const std::string&) { return false; }, notices_);
  }
  LiveDay Live() { return LiveDay(Path("20261115"), kDay, calls_); }
  SharedCall Call() const {
    Record(kWav);
    SharedCall shared;
    shared.day = "20261115";
    shared.name = kWav;
    shared.file = Path("20261115/Record/" + shared.name);
    shared.seconds = 1;
    return shared;
  }

  std::string log_;
  LiveCalls calls_{Path(".")};
  std::vector<std::string> notices_;
};

}  // namespace corvane::tools
