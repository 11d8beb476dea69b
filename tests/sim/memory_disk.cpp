// One map from whole paths to entries: what is below a folder stands directly behind it.
#include "sim/memory_disk.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvane::sim {

namespace {

constexpr std::string_view kForbidden = "<>\"/|?*:";

bool NameAllowed(std::string_view name) {
  return name != "." && name != ".." && std::ranges::none_of(name, [](char c) {
           return static_cast<unsigned char>(c) < 32 ||
                  kForbidden.find(c) != std::string_view::npos;
         });
}

// The key of the folder above; "" for what stands at the top.
std::string KeyAbove(const std::string& key) {
  if (key.empty()) return {};
  const std::size_t end = key.rfind('\\', key.size() - 2);
  return end == std::string::npos ? std::string{} : key.substr(0, end + 1);
}

}  // namespace

MemoryDisk::Place MemoryDisk::Resolve(std::string_view path) {
  Place place;
  place.key.reserve(path.size() + 1);
  while (!path.empty()) {
    const std::size_t length = std::min(path.find('\\'), path.size());
    const std::string_view part = path.substr(0, length);
    path.remove_prefix(std::min(length + 1, path.size()));
    if (part.empty()) continue;
    const bool drive = place.key.empty() && part.size() == 2 && part[1] == ':';
    if (!drive && !NameAllowed(part)) place.allowed = false;
    for (const char c : part) place.key += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    place.key += '\\';
    place.name = part;
  }
  return place;
}

bool MemoryDisk::HasDirectory(const std::string& key) const {
  if (key.empty()) return true;
  const auto found = entries_.find(key);
  return found != entries_.end() && !found->second.content;
}

const MemoryDisk::Asked& MemoryDisk::Ask(std::string_view path) const {
  const auto known = std::ranges::find(asked_, path, &Asked::path);
  if (known != asked_.end() && !path.empty()) return *known;
  Asked& asked = asked_[next_asked_];
  next_asked_ = (next_asked_ + 1) % asked_.size();
  const Place place = Resolve(path);
  const auto found = place.allowed ? entries_.find(place.key) : entries_.end();
  asked.path = path;
  asked.entry = found == entries_.end() ? nullptr : &found->second;
  asked.is_directory = place.allowed && HasDirectory(place.key);
  return asked;
}

bool MemoryDisk::Exists(std::string_view path) const {
  return Ask(path).entry != nullptr;
}

bool MemoryDisk::IsDirectory(std::string_view path) const {
  return Ask(path).is_directory;
}

bool MemoryDisk::HasParent(std::string_view path) const {
  const Place place = Resolve(path);
  return place.allowed && HasDirectory(KeyAbove(place.key));
}

const std::string* MemoryDisk::Content(std::string_view path) const {
  const Entry* entry = Ask(path).entry;
  return entry != nullptr && entry->content ? &*entry->content : nullptr;
}

std::string* MemoryDisk::Content(std::string_view path) {
  return const_cast<std::string*>(std::as_const(*this).Content(path));
}

void MemoryDisk::MakeDirectory(std::string_view path) {
  Place place = Resolve(path);
  Forget();
  entries_.try_emplace(std::move(place.key), Entry{std::string(place.name), std::nullopt});
}

void MemoryDisk::MakeDirectories(std::string_view path) {
  std::size_t end = 0;
  while (end < path.size()) {
    end = std::min(path.find('\\', end + 1), path.size());
    if (!Resolve(path.substr(0, end)).key.empty()) MakeDirectory(path.substr(0, end));
  }
}

std::string& MemoryDisk::Create(std::string_view path) {
  Place place = Resolve(path);
  if (!place.allowed || !HasDirectory(KeyAbove(place.key))) {
    throw std::runtime_error("no folder for " + std::string(path));
  }
  Forget();
  Entry& entry =
      entries_.try_emplace(std::move(place.key), Entry{std::string(place.name), ""}).first->second;
  entry.content.emplace();
  return *entry.content;
}

bool MemoryDisk::Remove(std::string_view path) {
  const Place place = Resolve(path);
  if (!place.allowed || !entries_.contains(place.key)) return false;
  Forget();
  for (auto entry = entries_.lower_bound(place.key);
       entry != entries_.end() && entry->first.starts_with(place.key);) {
    entry = entries_.erase(entry);
  }
  return true;
}

void MemoryDisk::Move(std::string_view from, std::string_view to) {
  const Place source = Resolve(from);
  const Place target = Resolve(to);
  if (source.key == target.key) return;
  Forget();
  const auto replaced = entries_.find(target.key);
  const std::string name =
      replaced == entries_.end() ? std::string(target.name) : replaced->second.name;
  Remove(to);
  std::vector<std::map<std::string, Entry>::node_type> moved;
  for (auto entry = entries_.lower_bound(source.key);
       entry != entries_.end() && entry->first.starts_with(source.key);) {
    moved.push_back(entries_.extract(entry++));
  }
  for (auto& entry : moved) {
    if (entry.key() == source.key) entry.mapped().name = name;
    entry.key().replace(0, source.key.size(), target.key);
    entries_.insert(std::move(entry));
  }
}

std::vector<std::string> MemoryDisk::List(std::string_view folder) const {
  const Place place = Resolve(folder);
  std::vector<std::string> names;
  if (!place.allowed || !HasDirectory(place.key)) return names;
  for (auto entry = entries_.lower_bound(place.key);
       entry != entries_.end() && entry->first.starts_with(place.key); ++entry) {
    if (!entry->second.content) continue;
    std::string name = entry->second.name;
    for (std::string above = KeyAbove(entry->first); above != place.key; above = KeyAbove(above)) {
      name = entries_.at(above).name + '\\' + name;
    }
    names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace corvane::sim
