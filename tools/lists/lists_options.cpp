// The options of lists, and its page of help.
#include "tools/lists/lists_options.h"

#include "tools/arguments.h"

namespace corvane::tools {

const char* const kListsHelp =
    R"(usage: corvane-tools lists import FORMAT FILE... [OPTION]...
       corvane-tools lists export FORMAT [OPTION]...

Brings names of groups and radios from the lists of other programs into Corvane's, TETRA_GSSI.txt
and TETRA_SSI.txt, and writes lists for other programs.

formats
  trunk-recorder         groups: CSV with a header that begins with Decimal, or without one
  trunk-recorder-units   radios: id,name
  radioreference         groups: CSV with or without a header
  dsdplus-groups         groups: DSDPlus.groups
  dsdplus-radios         radios: DSDPlus.radios
  op25                   groups: number, tab, name
  telive                 both: number, blank, name
  dsd-fme                groups: id,mode,name,tag
  rdio-scanner           groups, export only

import tells what would be done: how many groups or radios the lists have, how many of them are new,
and of each row that is skipped why. Nothing is written without --write.
  --network MCC/MNC      the network they belong to; default: the only one in Corvane's lists
  --folder DIR           Corvane's folder; default: the current one
  --write                do it: nothing is deleted, names that are there stay, a copy of each list
                         with the date in its name is kept. Refused while Corvane runs there.
  --replace-labels       names that are there are replaced

export writes all that have a name.
  --network MCC/MNC      of this network; default: the only one in Corvane's lists
  --folder DIR           Corvane's folder; default: the current one
  -o FILE                write the list to FILE instead of the standard output

  --help                 this page

exit status: 0 done, 2 failed: wrong usage, a list that cannot be read or written, refused.
)";

namespace {

std::string TakeWord(const std::string& word, ListsOptions& options, std::size_t& words) {
  switch (words++) {
    case 0:
      options.import = word == "import";
      return options.import || word == "export" ? "" : "import or export? not " + word;
    case 1: {
      const auto format = FormatNamed(word);
      if (!format) return "there is no format " + word;
      options.format = *format;
      if (options.import && *format == ListFormat::kRdioScanner) {
        return word + " can be exported alone";
      }
      return "";
    }
    default:
      if (!options.import) return "export reads no file: " + word;
      if (word.empty()) return "the name of the list is empty";
      options.files.push_back(word);
      return "";
  }
}

bool TakeOption(std::string_view name, const std::string& value, ListsOptions& options) {
  if (name == "--write") return options.write = true;
  if (name == "--replace-labels") return options.replace_labels = true;
  if (name == "--network") return ReadNetwork(value, options.network);
  (name == "-o" ? options.output : options.folder) = value;
  return !value.empty();
}

}  // namespace

std::string ParseListsOptions(const Arguments& arguments, ListsOptions& options) {
  std::size_t words = 0;
  ArgumentRules rules;
  rules.with_value = {"--network", "--folder", "-o"};
  rules.flags = {"--write", "--replace-labels"};
  rules.take_word = [&](const std::string& word) { return TakeWord(word, options, words); };
  rules.take_option = [&](std::string_view name, const std::string& value) {
    return TakeOption(name, value, options);
  };
  std::string wrong = ReadArguments(arguments, rules);
  if (!wrong.empty()) return wrong;
  if (words < 2) return words == 0 ? "import or export?" : "which format?";
  if (options.import && options.files.empty()) return "which list?";
  if (options.import && !options.output.empty()) return "-o is for export";
  if (!options.import && (options.write || options.replace_labels)) {
    return "--write and --replace-labels are for import";
  }
  return "";
}

}  // namespace corvane::tools
