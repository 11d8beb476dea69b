// A program that begins as many recordings as it can and holds them until it is killed. Writes to
// the file that it is given how the last attempt ended.
#include <windows.h>

#include <mmsystem.h>

#include <fstream>

namespace {

// Under Wine one program's 64th recording never comes back.
constexpr int kMost = 60;

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = 1;
  format.nSamplesPerSec = 22050;
  format.wBitsPerSample = 16;
  format.nBlockAlign = 2;
  format.nAvgBytesPerSec = 44100;
  MMRESULT result = MMSYSERR_NOERROR;
  for (int held = 0; held < kMost && result == MMSYSERR_NOERROR; ++held) {
    HWAVEIN device = nullptr;
    result = waveInOpen(&device, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL);
  }
  std::ofstream(arguments[1]) << (result == MMSYSERR_NOERROR ? "all\n" : "refused\n") << std::flush;
  Sleep(INFINITE);
}
