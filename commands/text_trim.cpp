// TrimText never removes the last byte of a text: a lone tab or two blanks
// keep one byte. Only a text that is one single blank trims to nothing.
#include <string>
#include <string_view>

#include "commands/text_utils.h"

namespace qrl {
namespace {

bool IsTrimmedSpace(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

bool TrimsLeft(TrimSide side) { return side == TrimSide::Left || side == TrimSide::Both; }
bool TrimsRight(TrimSide side) { return side == TrimSide::Right || side == TrimSide::Both; }

}  // namespace

std::string TrimText(std::string_view text, TrimSide side) {
  if (text.empty() || text == " ") return std::string();
  if (TrimsLeft(side)) {
    while (text.size() > 1 && IsTrimmedSpace(text.front())) text.remove_prefix(1);
  }
  if (TrimsRight(side)) {
    while (text.size() > 1 && IsTrimmedSpace(text.back())) text.remove_suffix(1);
  }
  return std::string(text);
}

}  // namespace qrl
