// The pages that a view has shown and the one it shows, as a browser keeps
// them: a new page drops every page ahead of the current one, and going back
// or forward only moves the current one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qrl::autopilot {

struct HistoryEntry {
  std::wstring url;
  // The page of NavigateToString, shown again as it was. Nothing for a page
  // of `url`, which is loaded anew each time it is shown, as on a reload.
  std::optional<std::wstring> markup;
};

class BrowsingHistory {
 public:
  // Null before the first page.
  const HistoryEntry* Current() const { return entries_.empty() ? nullptr : &entries_[current_]; }

  // The entry one step back (-1) or forward (+1), if there is one.
  std::optional<std::size_t> Neighbour(int step) const {
    if (entries_.empty()) return std::nullopt;
    if (step < 0) return current_ > 0 ? std::optional<std::size_t>(current_ - 1) : std::nullopt;
    return current_ + 1 < entries_.size() ? std::optional<std::size_t>(current_ + 1)
                                          : std::nullopt;
  }

  const HistoryEntry& At(std::size_t index) const { return entries_.at(index); }

  void Add(HistoryEntry entry) {
    if (!entries_.empty())
      entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(current_) + 1, entries_.end());
    entries_.push_back(std::move(entry));
    current_ = entries_.size() - 1;
  }

  void MoveTo(std::size_t index) {
    if (index < entries_.size()) current_ = index;
  }

 private:
  std::vector<HistoryEntry> entries_;
  std::size_t current_ = 0;
};

}  // namespace qrl::autopilot
