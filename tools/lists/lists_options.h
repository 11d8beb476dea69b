// What the user asks to be done with lists.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/command.h"
#include "tools/lists/foreign_list.h"
#include "tools/replay_options.h"

namespace corvane::tools {

struct ListsOptions {
  bool import = false;  // else export
  ListFormat format = ListFormat::kTrunkRecorder;
  std::vector<std::string> files;
  std::optional<NetworkCode> network;
  std::string folder = ".";
  bool write = false;
  bool replace_labels = false;
  std::string output;  // "": the standard output
};

// What is wrong with `arguments`; "" when nothing is.
[[nodiscard]] std::string ParseListsOptions(const Arguments& arguments, ListsOptions& options);

extern const char* const kListsHelp;

}  // namespace corvane::tools
