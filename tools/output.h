// Where text goes: a file, the terminal, or a string of a test. What could not be written is never
// forgotten.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace corvane::tools {

class Output {
 public:
  virtual ~Output() = default;
  void Write(std::string_view text);
  // False when anything that was ever written was lost.
  [[nodiscard]] bool Flush();
  [[nodiscard]] bool ok() const { return ok_; }

 protected:
  // Both give false on failure.
  virtual bool Put(std::string_view text) = 0;
  virtual bool PutAll() = 0;

 private:
  bool ok_ = true;
};

// One of the standard streams, or a file that is made or emptied. Bytes are written as they are.
class FileOutput : public Output {
 public:
  explicit FileOutput(std::FILE* stream) : stream_(stream) {}
  explicit FileOutput(const std::string& path);
  ~FileOutput() override;
  FileOutput(const FileOutput&) = delete;
  FileOutput& operator=(const FileOutput&) = delete;

  [[nodiscard]] bool is_open() const { return stream_ != nullptr; }
  // Closes a file that was opened here. False when anything was lost.
  [[nodiscard]] bool Close();

 private:
  bool Put(std::string_view text) override;
  bool PutAll() override;

  std::FILE* stream_;
  bool own_ = false;
};

class StringOutput : public Output {
 public:
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  bool Put(std::string_view text) override {
    text_ += text;
    return true;
  }
  bool PutAll() override { return true; }

  std::string text_;
};

}  // namespace corvane::tools
