// The start-up error handler.
#include "store/start_error.h"

#include <utility>

#include "base/number_text.h"

namespace corvane {

StartErrors::StartErrors(Files& files, Prompts& prompts, std::string program_folder)
    : files_(files), prompts_(prompts), program_folder_(std::move(program_folder)) {}

Load StartErrors::Handle(ErrorNumber error, const std::string& cause) {
  if (error == kNoError) return Load::kOk;
  std::string text;
  if (error == kInvalidPropertyValue) {
    error = files_.Delete(program_folder_ + kSettingsFileName);
    text =
        "Settings file version change.\r\n"
        "Please restart to re-create\r\n"
        "You will need to reconfigure options\r\n"
        "Aborting.";
  }
  // A settings file that cannot be deleted would be refused again at every start.
  if (error != kNoError) {
    text =
        "Possible file access error.\r\n"
        "Make sure any required files are not opened.\r\n"
        "Error: [" +
        Decimal(error) +
        "]\r\n"
        "Aborting.";
  }
  if (!cause.empty()) prompts_.ShowBox(cause, "Notice", BoxIcon::kCritical);
  prompts_.ShowBox(text, "Error", BoxIcon::kCritical);
  prompts_.EndProgram();
  return Load::kEnded;
}

}  // namespace corvane
