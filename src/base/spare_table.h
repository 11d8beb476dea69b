// A growable table that always holds exactly one spare, empty element behind its last record.
#pragma once

#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

namespace corvane {

// Records are at indexes 0 to size() - 1; the spare element is at size(), the highest index. An
// index stays valid while the table grows; references do not, so none is held across a wait.
template <typename Record>
class SpareTable {
 public:
  SpareTable() : elements_(1) {}

  [[nodiscard]] std::size_t size() const { return elements_.size() - 1; }
  [[nodiscard]] bool empty() const { return size() == 0; }
  [[nodiscard]] std::size_t highest_index() const { return size(); }

  // `index` up to and including the spare element.
  [[nodiscard]] Record& operator[](std::size_t index) {
    assert(index < elements_.size());
    return elements_[index];
  }
  [[nodiscard]] const Record& operator[](std::size_t index) const {
    assert(index < elements_.size());
    return elements_[index];
  }

  // Fills the spare element and grows the table by one. Returns the record's index.
  std::size_t Append(Record record) {
    elements_.back() = std::move(record);
    elements_.emplace_back();
    return elements_.size() - 2;
  }

  // Back to the single spare element.
  void Reset() { elements_.assign(1, Record{}); }

  void Reserve(std::size_t records) { elements_.reserve(records + 1); }

  // The records, without the spare element.
  [[nodiscard]] auto begin() const { return elements_.begin(); }
  [[nodiscard]] auto end() const { return elements_.end() - 1; }

 private:
  std::vector<Record> elements_;
};

}  // namespace corvane
