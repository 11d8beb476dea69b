// What a path may look like.
#include "app/program_folder.h"

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

namespace {

bool CanBeUsed(const std::optional<std::string>& path) {
  return path && path->size() <= kLongestProgramFolder && !Contains(*path, "+");
}

}  // namespace

ProgramFolder ChooseFolder(const FolderForms& forms) {
  if (CanBeUsed(forms.plain)) return {*forms.plain, ""};
  if (CanBeUsed(forms.short_form)) return {*forms.short_form, ""};
  std::string problem;
  if (!forms.plain) {
    problem = "Its path has letters that the system's code page does not hold";
  } else if (Contains(*forms.plain, "+")) {
    problem = "Its path has a \"+\", which the system's recorder does not take";
  } else {
    problem = "Its path is longer than " + Decimal(kLongestProgramFolder) +
              " characters, which the system's recorder does not take";
  }
  return {forms.plain.value_or(""), problem + ", and there is no short form of it."};
}

std::string WritingProblem(Files& files, const std::string& folder) {
  const std::string probe = folder + "\\corvane_probe.new";
  const FileError error = files.WriteAll(probe, "");
  if (error == kFileOk) {
    // One that is left behind is taken by the next start.
    static_cast<void>(files.Delete(probe));
  }
  if (error != kPermissionDenied) return "";
  return "No file can be written there [" + Decimal(error) + "].";
}

}  // namespace corvane
