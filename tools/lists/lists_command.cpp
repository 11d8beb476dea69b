// corvane-tools lists: from the command line to the exit code.
#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "archive/user_files.h"
#include "base/number_text.h"
#include "tools/command.h"
#include "tools/lists/lists_options.h"
#include "tools/lists/merge.h"
#include "tools/lists/program_lists.h"
#include "tools/lists/write_list.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

constexpr const char* kLists = "lists";
constexpr std::size_t kMostToldNetworks = 8;

std::string Network(const NetworkCode& code, const char* between) {
  return Decimal(code.mcc) + between + Decimal(code.mnc);
}

// "412 groups (12 new)"; the words are the same for every number, because scripts read them.
std::string Counted(const MergeCounts& counts, const char* what) {
  return Decimal(counts.listed) + " " + what + " (" + Decimal(counts.added) + " new)";
}

class ListsRun {
 public:
  ListsRun(const ListsOptions& options, Console& console)
      : options_(options),
        console_(console),
        lists_(options.folder),
        kind_(KindOf(options.format)) {}

  ExitCode Run() {
    std::string wrong = LoadLists();
    if (wrong.empty()) wrong = ChooseNetwork();
    if (wrong.empty()) wrong = options_.import ? Import() : Export();
    return wrong.empty() ? ExitCode::kDone : Fail(console_, kLists, wrong);
  }

 private:
  std::string LoadLists() {
    // Before anything of the folder is touched, and again before it is written.
    if (options_.write && CorvaneRunsIn(options_.folder)) return lists_.Running();
    std::string wrong = lists_.LoadGroups(options_.write);
    const bool radios = kind_ != ListKind::kGroups;
    if (wrong.empty() && radios) wrong = LoadRadios();
    return wrong;
  }

  // Whoever writes no list needs no dates.
  std::string LoadRadios() {
    bool found = false;
    return options_.import ? lists_.LoadRadios(options_.write)
                           : LoadSubscribers(options_.folder, lists_.radios, found);
  }

  std::string ChooseNetwork() {
    if (options_.network) {
      network_ = *options_.network;
      return "";
    }
    const std::set<NetworkCode> known = lists_.Networks();
    if (known.size() == 1) {
      network_ = *known.begin();
      return "";
    }
    if (known.empty()) {
      return options_.import ? "which network do they belong to? Choose it with --network MCC/MNC"
                             : options_.folder + " has no list to export";
    }
    std::string names;
    std::size_t told = 0;
    for (const NetworkCode& code : known) {
      names += ++told > kMostToldNetworks ? "" : " " + Network(code, "/");
    }
    if (told > kMostToldNetworks) names += " ...";
    return "the lists have several networks, choose one with --network:" + names;
  }

  std::string Import() {
    ListMerge merge(lists_.groups, lists_.radios, network_, options_.replace_labels);
    std::string skipped;
    std::size_t rows = 0;
    for (const std::string& file : options_.files) {
      std::string content;
      if (const FileError error = files_->ReadAll(file, content)) {
        return file + ": " + MeaningOf(error);
      }
      ForeignList list = ReadForeignList(options_.format, content);
      if (!list.problem.empty()) return file + " " + list.problem;
      for (const ForeignEntry& entry : list.entries) {
        std::string why = merge.Add(entry, kind_);
        if (!why.empty()) list.Skip(entry.line, std::move(why));
      }
      std::ranges::stable_sort(list.skipped, {}, &SkippedRow::line);
      rows += list.skipped.size();
      const std::string place = options_.files.size() > 1 ? file + ", line " : "line ";
      for (const SkippedRow& row : list.skipped) {
        skipped += place + Decimal(row.line) + ": " + row.reason + "\n";
      }
    }
    merge.Finish();
    std::string wrong;
    std::vector<std::string> written;
    if (options_.write) {
      wrong = lists_.Save(merge.groups_changed(), merge.radios_changed(), written);
    }
    if (wrong.empty()) Tell(merge, rows, skipped, written);
    return wrong;
  }

  void Tell(const ListMerge& merge, std::size_t rows, const std::string& skipped,
            const std::vector<std::string>& written) {
    std::string text;
    if (kind_ != ListKind::kRadios) text += Counted(merge.groups(), "groups") + ", ";
    if (kind_ != ListKind::kGroups) text += Counted(merge.radios(), "radios") + ", ";
    console_.out.Write(text + Decimal(rows) + " rows skipped\n" + skipped);
    std::string rest = "names: " + Decimal(merge.named()) + " given, " + Decimal(merge.kept()) +
                       " stay as they were\n";
    if (!options_.write) {
      rest += "nothing was written: that takes --write\n";
    } else if (written.empty()) {
      rest += "nothing had to be written\n";
    }
    for (const std::string& name : written) rest += "written: " + name + "\n";
    console_.err.Write(rest);
  }

  [[nodiscard]] bool IsOurs(std::int16_t mcc, std::int16_t mnc) const {
    return mcc == network_.mcc && mnc == network_.mnc;
  }

  // Of records with the same number the first with a name counts, as for the program.
  std::vector<NamedNumber> Named() {
    std::vector<NamedNumber> named;
    std::set<std::int32_t> groups;
    if (kind_ != ListKind::kRadios) {
      for (const GssiRecord& record : lists_.groups) {
        const std::string label = record.Label.trimmed();
        if (!IsOurs(record.Mcc, record.Mnc) || !groups.insert(record.Gssi).second) continue;
        if (label.empty()) {
          ++unnamed_;
        } else {
          named.push_back({record.Gssi, 0, label, !record.Follow, false});
        }
      }
    }
    if (kind_ == ListKind::kGroups) return named;
    const bool by_group = options_.format == ListFormat::kDsdPlusRadios;
    std::map<std::pair<std::int32_t, std::int32_t>, bool> radios;
    for (const SsiRecord& record : lists_.radios) {
      if (!IsOurs(record.Mcc, record.Mnc)) continue;
      const std::int32_t group = by_group ? record.LastGssi : 0;
      const std::string label = record.Label.trimmed();
      bool& has_name = radios[{record.Ssi, group}];
      if (has_name || label.empty()) continue;
      has_name = true;
      if (groups.contains(record.Ssi)) {
        left_out_.push_back("radio " + Decimal(record.Ssi) + " has the number of a group");
      } else {
        named.push_back({record.Ssi, group, label, false, true});
      }
    }
    for (const auto& [radio, has_name] : radios) unnamed_ += has_name ? 0 : 1;
    return named;
  }

  std::string Export() {
    const WrittenList list = WriteForeignList(options_.format, Named(), Network(network_, "-"));
    if (options_.output.empty()) {
      console_.out.Write(list.text);
    } else {
      const std::string wrong = WriteTo(options_.output, list.text);
      if (!wrong.empty()) return wrong;
    }
    std::string rest = Decimal(list.rows) + " rows written";
    if (unnamed_ > 0) rest += ", " + Decimal(unnamed_) + " without a name left out";
    left_out_.insert(left_out_.end(), list.left_out.begin(), list.left_out.end());
    if (!left_out_.empty()) rest += ", " + Decimal(left_out_.size()) + " skipped";
    rest += "\n";
    for (const std::string& line : left_out_) rest += line + "\n";
    console_.err.Write(rest);
    return "";
  }

  std::string WriteTo(const std::string& path, const std::string& text) {
    if (lists_.IsOneOf(path)) return path + " would be overwritten";
    FileOutput file(path);
    if (!file.is_open()) return path + " cannot be written";
    file.Write(text);
    return file.Close() ? "" : path + " could not be written";
  }

  const ListsOptions& options_;
  Console& console_;
  ProgramLists lists_;
  ListKind kind_;
  std::unique_ptr<Files> files_ = SystemFiles();
  NetworkCode network_;
  std::size_t unnamed_ = 0;
  std::vector<std::string> left_out_;
};

ExitCode RunLists(const Arguments& arguments, Console& console) {
  ListsOptions options;
  const std::string wrong = ParseListsOptions(arguments, options);
  if (!wrong.empty()) {
    return Fail(console, kLists, wrong + "\ncorvane-tools lists --help tells more");
  }
  return ListsRun(options, console).Run();
}

}  // namespace

const Command kListsCommand = {"lists", "names of groups and radios from and for other programs",
                               kListsHelp, RunLists};

}  // namespace corvane::tools
