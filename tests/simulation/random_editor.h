// What a user does at random with the G/SSI editor, and an account of what that may have changed.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "scenarios/world.h"

namespace corvane::sim {

class RandomEditor {
 public:
  // `pick` gives a random number from the first to the second.
  RandomEditor(World& world, std::function<int(int, int)> pick)
      : world_(world), pick_(std::move(pick)) {}

  // One thing at random: opens the editor from somewhere, or uses the open one.
  void Use();
  // After every event: nothing of a known group or subscriber is other than the user's edits left
  // it, and an open editor shows the lockouts as they are. What is not so, "" when all is.
  [[nodiscard]] std::string Check();

  [[nodiscard]] int edits() const { return edits_; }

 private:
  struct Group {
    std::string label;
    std::int16_t priority = 0;
    bool follow = false;
    bool operator==(const Group&) const = default;
  };
  using GroupKey = std::tuple<int, int, std::int32_t>;
  using SubscriberKey = std::tuple<int, int, std::int32_t, std::int32_t>;

  // What was compared with the account and found right. It still is for as long as neither has
  // changed, in which case bytes alone are compared.
  struct Found {
    std::vector<GssiRecord> groups;
    std::vector<SsiRecord> subscribers;
    int country = 0;
    int network = 0;
    std::vector<std::string> lines;  // of the editor's list of groups
    std::vector<bool> ticks;
  };

  [[nodiscard]] std::string CheckGroups(const GssiTable& groups);
  [[nodiscard]] std::string CheckSubscribers(const SsiTable& subscribers);
  [[nodiscard]] std::string CheckLockouts(const Dialog& dialog);
  void NoteEdit();
  void Open();
  void UseOpen(Dialog& dialog);
  void Update(Dialog& dialog);
  void NameSubscriber(Dialog& dialog);
  void ToggleLockout(Dialog& dialog);
  [[nodiscard]] int AnyLine(const ListBox& list);
  [[nodiscard]] std::string AnyLabel();

  World& world_;
  std::function<int(int, int)> pick_;
  std::map<GroupKey, Group> groups_;
  std::map<SubscriberKey, std::string> subscribers_;
  Found found_;
  int edits_ = 0;
};

}  // namespace corvane::sim
