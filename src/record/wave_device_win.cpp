// The plain device: what its driver conceals is the matter of RepairedWaveDevice.
#include "record/wave_device_win.h"

#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace corvane {

namespace {
constexpr unsigned kLargestReply = 64 * 1024;
}

WaveDevice::WaveDevice(std::string alias) : alias_(std::move(alias)) {}

WaveDevice::~WaveDevice() {
  if (open_) Send(MciCommand::Close(), 0);
}

Mci::Reply WaveDevice::Send(const MciCommand& command, unsigned reply_length) {
  const std::string text = command.Text(alias_);
  const unsigned length = std::min(reply_length, kLargestReply);
  std::vector<char> buffer(length, '\0');
  Mci::Reply reply;
  reply.error =
      mciSendStringA(text.c_str(), length == 0 ? nullptr : buffer.data(), length, nullptr);
  if (reply.error != 0) return reply;
  reply.text.assign(buffer.data(), strnlen(buffer.data(), buffer.size()));
  if (command.verb == MciCommand::Verb::kOpen) open_ = true;
  if (command.verb == MciCommand::Verb::kClose || command.verb == MciCommand::Verb::kCloseAll) {
    open_ = false;
  }
  return reply;
}

unsigned WaveDevice::Mode() const {
  MCI_STATUS_PARMS status{};
  status.dwItem = MCI_STATUS_MODE;
  const MCIDEVICEID device = mciGetDeviceIDA(alias_.c_str());
  if (device == 0 || mciSendCommandA(device, MCI_STATUS, MCI_STATUS_ITEM,
                                     reinterpret_cast<DWORD_PTR>(&status)) != 0) {
    return 0;
  }
  return LOWORD(status.dwReturn);
}

}  // namespace corvane
