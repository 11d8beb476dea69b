// SDR# with its two plug-ins on a fake desktop, the main window's state, and the link's context.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "base/files.h"
#include "fake_loop.h"
#include "fake_socket.h"
#include "fake_windows.h"
#include "link/link_context.h"
#include "link/ports.h"
#include "record/mci.h"

namespace corvane::test {

class SilentSink : public ControlSink {
 public:
  void Changed(const Control&, Field) override {}
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
};

class FakeFollower : public CallFollower {
 public:
  int scans = 0;
  int resets = 0;
  std::function<void()> on_scan;
  std::function<void()> on_reset;
  void ScanNetworkInfo() override {
    ++scans;
    if (on_scan) on_scan();
  }
  void ResetCallDisplay() override {
    ++resets;
    if (on_reset) on_reset();
  }
};

// Files in memory; a folder exists once it was made.
class MemoryFiles : public Files {
 public:
  std::map<std::string, std::string> content;
  std::vector<std::string> folders;
  FileError append_error = kFileOk;

  bool Exists(const std::string& path) override {
    return content.contains(path) || IsDirectory(path);
  }
  bool IsDirectory(const std::string& path) override {
    return std::find(folders.begin(), folders.end(), path) != folders.end();
  }
  FileError MakeDirectory(const std::string& path) override {
    folders.push_back(path);
    return kFileOk;
  }
  FileError Delete(const std::string& path) override {
    return content.erase(path) == 1 ? kFileOk : kFileNotFound;
  }
  FileError Rename(const std::string& from, const std::string& to) override {
    if (content.contains(to)) return kFileExists;
    return MoveOver(from, to);
  }
  FileError MoveOver(const std::string& from, const std::string& to) override {
    const auto file = content.find(from);
    if (file == content.end()) return kFileNotFound;
    content[to] = file->second;
    content.erase(from);
    return kFileOk;
  }
  FileError ReadAll(const std::string& path, std::string& text) override {
    const auto file = content.find(path);
    if (file == content.end()) return kFileNotFound;
    text = file->second;
    return kFileOk;
  }
  FileError WriteAll(const std::string& path, std::string_view text) override {
    content[path] = text;
    return kFileOk;
  }
  FileError Append(const std::string& path, std::string_view text) override {
    if (append_error != kFileOk) return append_error;
    content[path] += text;
    return kFileOk;
  }
  FileError Patch(const std::string& path, std::uint32_t, std::string_view) override {
    content[path];
    return kFileOk;
  }
};

class FakeMci : public Mci {
 public:
  std::vector<std::string> commands;
  Reply Send(const MciCommand& command, unsigned) override {
    commands.push_back(command.Text());
    return {};
  }
  std::string ErrorText(unsigned) override { return {}; }
};

// Handles of the desktop's windows.
inline constexpr WindowHandle kForeign = 90;
inline constexpr WindowHandle kSdr = 100;
inline constexpr WindowHandle kNetPanel = 110;
inline constexpr WindowHandle kNetHeader = 111;
inline constexpr WindowHandle kNetwork = 112;
inline constexpr WindowHandle kPort = 113;
inline constexpr WindowHandle kTetraPanel = 120;
inline constexpr WindowHandle kTetraHeader = 121;
inline constexpr WindowHandle kDemodulator = 122;
inline constexpr WindowHandle kAuto = 123;
inline constexpr WindowHandle kSlot1 = 124;  // to 127
inline constexpr WindowHandle kNetInfo = 128;
inline constexpr WindowHandle kMcc = 131;
inline constexpr WindowHandle kMnc = 132;
inline constexpr WindowHandle kLa = 133;
inline constexpr WindowHandle kInfoWindow = 200;
inline constexpr WindowHandle kInfoEdit = 201;

inline constexpr const char* kWindow = "WindowsForms10.Window.8.app.0.141b42a_r6_ad1";
inline constexpr const char* kButton = "WindowsForms10.BUTTON.app.0.141b42a_r6_ad1";
inline constexpr const char* kStatic = "WindowsForms10.STATIC.app.0.141b42a_r6_ad1";
inline constexpr const char* kEdit = "WindowsForms10.EDIT.app.0.141b42a_r6_ad1";

class LinkTest : public ::testing::Test {
 protected:
  // Network Info is closed; its button opens it.
  void AddSdr() {
    windows.Add(kSdr, 0, kWindow, "SDR# v1.0.0.1700");
    windows.Add(kNetPanel, kSdr, kWindow);
    windows.Add(kNetHeader, kNetPanel, kStatic, "Net Remote *");
    windows.Add(kNetwork, kNetPanel, kButton, "Network");
    windows.Add(kPort, kNetPanel, kEdit, "9999");
    windows.Add(kTetraPanel, kSdr, kWindow);
    windows.Add(kTetraHeader, kTetraPanel, kStatic, "TETRA Demodulator *");
    windows.Add(kDemodulator, kTetraPanel, kButton, "Demodulator").rect = {300, 400, 400, 420};
    windows.Add(kAuto, kTetraPanel, kButton, "Auto").rect = {300, 430, 400, 450};
    for (WindowHandle slot = 0; slot < 4; ++slot) {
      windows.Add(kSlot1 + slot, kTetraPanel, kButton, "Timeslot " + std::to_string(slot + 1));
    }
    windows.Add(kNetInfo, kTetraPanel, kButton, "Net Info").on_click = [this] {
      if (!windows.IsAlive(kInfoWindow)) AddNetworkInfo();
    };
    windows.Add(kMcc, kTetraPanel, kStatic, "MCC:262");
    windows.Add(kMnc, kTetraPanel, kStatic, "MNC:1");
    windows.Add(kLa, kTetraPanel, kStatic, "LA:100");
  }
  void AddNetworkInfo() {
    windows.Add(kInfoWindow, 0, kWindow, "Network Info");
    windows.Add(kInfoEdit, kInfoWindow, kEdit);
  }
  void FillHandles() {
    const std::map<SdrRole, WindowHandle> all = {{SdrRole::kMainWindow, kSdr},
                                                 {SdrRole::kNetRemoteHeader, kNetHeader},
                                                 {SdrRole::kNetworkButton, kNetwork},
                                                 {SdrRole::kPortBox, kPort},
                                                 {SdrRole::kTetraHeader, kTetraHeader},
                                                 {SdrRole::kDemodulatorBox, kDemodulator},
                                                 {SdrRole::kAutoBox, kAuto},
                                                 {SdrRole::kTimeslot1, kSlot1},
                                                 {SdrRole::kTimeslot2, kSlot1 + 1},
                                                 {SdrRole::kTimeslot3, kSlot1 + 2},
                                                 {SdrRole::kTimeslot4, kSlot1 + 3},
                                                 {SdrRole::kNetInfoButton, kNetInfo},
                                                 {SdrRole::kNetworkInfoWindow, kInfoWindow},
                                                 {SdrRole::kNetworkInfoEdit, kInfoEdit},
                                                 {SdrRole::kMccLabel, kMcc},
                                                 {SdrRole::kMncLabel, kMnc},
                                                 {SdrRole::kLaLabel, kLa}};
    for (const auto& [role, handle] : all) context.handles[role] = handle;
  }
  [[nodiscard]] std::vector<std::string> StatusLog() const { return form.lstStatusLog.items(); }
  [[nodiscard]] std::vector<std::string> CallLog() const { return form.lstCallLog.items(); }
  [[nodiscard]] bool LastStatusLineShown() const {
    return form.lstStatusLog.count() > 0 &&
           form.lstStatusLog.list_index() == form.lstStatusLog.count() - 1;
  }

  SilentSink sink;
  Form1 form{sink};
  FakeLoop loop;
  FakeClock clock;
  FakeWindows windows;
  FakeSocket socket{loop};
  ProgramFlags flags;
  LinkContext context{loop, clock, windows, socket, form, flags};
};

}  // namespace corvane::test
