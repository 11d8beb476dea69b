// Checked writing.
#include "tools/output.h"

namespace corvane::tools {

void Output::Write(std::string_view text) {
  if (ok_) ok_ = Put(text);
}

bool Output::Flush() {
  if (!PutAll()) ok_ = false;
  return ok_;
}

FileOutput::FileOutput(const std::string& path)
    : stream_(std::fopen(path.c_str(), "wb")), own_(true) {}

FileOutput::~FileOutput() {
  (void)Close();
}

bool FileOutput::Close() {
  if (!own_ || stream_ == nullptr) return ok();
  const bool flushed = Flush();
  const bool closed = std::fclose(stream_) == 0;
  stream_ = nullptr;
  return flushed && closed;
}

bool FileOutput::Put(std::string_view text) {
  return stream_ != nullptr && std::fwrite(text.data(), 1, text.size(), stream_) == text.size();
}

bool FileOutput::PutAll() {
  return stream_ != nullptr && std::fflush(stream_) == 0 && std::ferror(stream_) == 0;
}

}  // namespace corvane::tools
