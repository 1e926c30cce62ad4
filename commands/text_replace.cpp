// ReplaceAll in both widths. The result is built in one pass over the text:
// since replaced text is never searched again, the search simply goes on in
// the source behind each occurrence, and no prefix is ever copied twice.
//
// The search is Knuth-Morris-Pratt, so a long `from` over a repetitive text
// stays linear; while no partial match is pending it jumps to the next
// candidate first unit with the library's single-unit find.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {
namespace {

template <typename Char>
class OccurrenceFinder {
 public:
  using View = std::basic_string_view<Char>;

  explicit OccurrenceFinder(View pattern) : pattern_(pattern), fallback_(pattern.size(), 0) {
    std::size_t matched = 0;
    for (std::size_t i = 1; i < pattern.size(); ++i) {
      while (matched > 0 && pattern[i] != pattern[matched]) matched = fallback_[matched - 1];
      if (pattern[i] == pattern[matched]) ++matched;
      fallback_[i] = matched;
    }
  }

  // Start of the first occurrence at or behind `from`, or npos.
  std::size_t FindFrom(View text, std::size_t from) const {
    std::size_t matched = 0;
    for (std::size_t i = from; i < text.size(); ++i) {
      if (matched == 0) {
        i = text.find(pattern_[0], i);
        if (i == View::npos) return View::npos;
      }
      while (matched > 0 && text[i] != pattern_[matched]) matched = fallback_[matched - 1];
      if (text[i] == pattern_[matched]) ++matched;
      if (matched == pattern_.size()) return i + 1 - matched;
    }
    return View::npos;
  }

 private:
  View pattern_;
  // fallback_[k]: length of the longest proper border of pattern_[0..k].
  std::vector<std::size_t> fallback_;
};

template <typename Char>
std::basic_string<Char> ReplaceEach(std::basic_string_view<Char> text,
                                    std::basic_string_view<Char> from,
                                    std::basic_string_view<Char> to) {
  // An empty `from` would match everywhere without ever moving on; no caller
  // passes one, and handing the text back unchanged is the harmless reading.
  if (from.empty()) return std::basic_string<Char>(text);
  const OccurrenceFinder<Char> finder(from);
  std::basic_string<Char> result;
  result.reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t hit = finder.FindFrom(text, 0); hit != std::basic_string_view<Char>::npos;
       hit = finder.FindFrom(text, copied)) {
    result.append(text.substr(copied, hit - copied));
    result.append(to);
    copied = hit + from.size();
  }
  result.append(text.substr(copied));
  return result;
}

}  // namespace

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  return ReplaceEach(text, from, to);
}

std::u16string ReplaceAll(std::u16string_view text, std::u16string_view from,
                          std::u16string_view to) {
  return ReplaceEach(text, from, to);
}

}  // namespace qrl
