// How start-up ends when a file cannot be used: error numbers, and the one handler that all readers
// share. It knows nothing of what the files mean.
#pragma once

#include <string>

#include "base/files.h"
#include "base/prompts.h"

namespace corvane {

// A FileError, or one of the numbers below. 0 is success.
using ErrorNumber = int;
inline constexpr ErrorNumber kNoError = 0;
inline constexpr ErrorNumber kOverflow = 6;
inline constexpr ErrorNumber kTooFewFields = 9;
inline constexpr ErrorNumber kTypeMismatch = 13;
inline constexpr ErrorNumber kInvalidPropertyValue = 380;

// kEnded: a box was shown and Prompts::EndProgram called; the caller must return at once.
enum class Load { kOk, kEnded };

class StartErrors {
 public:
  // `program_folder` without a "\" at its end.
  StartErrors(Files& files, Prompts& prompts, std::string program_folder);

  // kOk when `error` is 0. Otherwise shows the one box that belongs to the number, ends the program
  // and gives kEnded. kInvalidPropertyValue also deletes the settings file; when that fails the
  // file-access box with its number is shown. Lets events run.
  // `cause`, unless it is "", is shown in a box of its own before.
  [[nodiscard]] Load Handle(ErrorNumber error, const std::string& cause = "");

 private:
  Files& files_;
  Prompts& prompts_;
  std::string program_folder_;
};

inline constexpr const char* kSettingsFileName = "\\corvane_simple.dat";

}  // namespace corvane
