// The device's news arrive at a window of its own.
#include "standin/sound_win.h"

#include <cmath>
#include <numbers>

namespace corvane::standin {

namespace {

constexpr char kSoundClass[] = "SdrStandinSound";
constexpr DWORD kSamplesPerSecond = 22050;
constexpr double kLoudest = 24000.0;  // at the highest gain
constexpr int kRampSamples = 110;     // 5 ms, so that beginning and end do not click

}  // namespace

Sound::Sound() {
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = Proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = kSoundClass;
  RegisterClassA(&window_class);
  window_ = CreateWindowExA(0, kSoundClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            window_class.hInstance, nullptr);
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Sound::~Sound() {
  if (device_ != nullptr) {
    waveOutReset(device_);
    for (Block& block : blocks_) waveOutUnprepareHeader(device_, &block.header, sizeof(WAVEHDR));
    waveOutClose(device_);
  }
  DestroyWindow(window_);
}

bool Sound::Play(const std::optional<Tone>& tone) {
  target_ = tone ? kLoudest * (tone->gain - kMinAudioGain) / (kMaxAudioGain - kMinAudioGain) : 0;
  if (!tone) return true;
  step_ = 2 * std::numbers::pi * tone->hz / kSamplesPerSecond;
  if (!Open()) return false;
  for (Block& block : blocks_) {
    if (!block.queued) Queue(block);
  }
  return true;
}

LRESULT CALLBACK Sound::Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  auto* self = reinterpret_cast<Sound*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (message == MM_WOM_DONE && self != nullptr) {
    self->OnPlayed(reinterpret_cast<WAVEHDR*>(l_param));
    return 0;
  }
  return DefWindowProcA(window, message, w_param, l_param);
}

bool Sound::Open() {
  if (device_ != nullptr) return true;
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = 1;
  format.nSamplesPerSec = kSamplesPerSecond;
  format.wBitsPerSample = 16;
  format.nBlockAlign = 2;
  format.nAvgBytesPerSec = kSamplesPerSecond * 2;
  if (waveOutOpen(&device_, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(window_), 0,
                  CALLBACK_WINDOW) != MMSYSERR_NOERROR) {
    device_ = nullptr;
    return false;
  }
  for (Block& block : blocks_) {
    block.header.lpData = reinterpret_cast<LPSTR>(block.samples.data());
    block.header.dwBufferLength = static_cast<DWORD>(block.samples.size() * 2);
    waveOutPrepareHeader(device_, &block.header, sizeof(WAVEHDR));
  }
  return true;
}

void Sound::OnPlayed(const WAVEHDR* header) {
  for (Block& block : blocks_) {
    if (&block.header != header) continue;
    block.queued = false;
    if (target_ > 0 || level_ > 0) Queue(block);
  }
}

void Sound::Queue(Block& block) {
  for (std::int16_t& sample : block.samples) {
    const double change = kLoudest / kRampSamples;
    if (level_ < target_) level_ = std::fmin(target_, level_ + change);
    if (level_ > target_) level_ = std::fmax(target_, level_ - change);
    sample = static_cast<std::int16_t>(std::lround(level_ * std::sin(phase_)));
    phase_ = std::fmod(phase_ + step_, 2 * std::numbers::pi);
  }
  block.queued = waveOutWrite(device_, &block.header, sizeof(WAVEHDR)) == MMSYSERR_NOERROR;
}

}  // namespace corvane::standin
