// Command strings to winmm.
#include "record/mci_win.h"

#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace corvane {

namespace {

constexpr unsigned kLargestReply = 64 * 1024;
constexpr unsigned kErrorTextLength = 1024;

// Up to the zero byte, or all of it.
std::string Text(const char* buffer, std::size_t size) {
  return std::string(buffer, strnlen(buffer, size));
}

}  // namespace

Mci::Reply MciWin::Send(const std::string& command, unsigned reply_length) {
  if (command.starts_with("open ") || command.starts_with("record ")) KeepWaveDriver();
  Reply reply;
  const unsigned length = std::min(reply_length, kLargestReply);
  std::vector<char> buffer(length, '\0');
  reply.error =
      mciSendStringA(command.c_str(), length == 0 ? nullptr : buffer.data(), length, nullptr);
  if (reply.error == 0) reply.text = Text(buffer.data(), buffer.size());
  return reply;
}

std::string MciWin::ErrorText(unsigned error) {
  std::array<char, kErrorTextLength> buffer{};
  if (mciGetErrorStringA(error, buffer.data(), kErrorTextLength) == 0) return {};
  return Text(buffer.data(), buffer.size());
}

// Where the driver is unloaded at "close", its recording thread may still be running in it.
void MciWin::KeepWaveDriver() {
  if (wave_driver_ != nullptr) return;
  wave_driver_ = LoadLibraryExA("mciwave.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

}  // namespace corvane
