#include "trace/trace_text.h"

#include <algorithm>
#include <cstdio>

#include "commands/unicode_text.h"

namespace qrl {
namespace {

bool IsContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Cuts at `limit`, moved back to the start of the character that the cut
// would split (at most three bytes: the text need not be valid UTF-8).
std::size_t ShownLength(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  std::size_t shown = limit;
  for (int back = 0; back < 3 && shown > 0 && IsContinuationByte(text[shown]); ++back) --shown;
  return shown;
}

void AppendEscaped(std::string& out, char byte) {
  switch (byte) {
    case '"': out += "\\\""; return;
    case '\\': out += "\\\\"; return;
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    default: break;
  }
  const auto code = static_cast<unsigned char>(byte);
  if (code < 0x20 || code == 0x7F) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", code);
    out += escape;
    return;
  }
  out.push_back(byte);
}

}  // namespace

std::string TraceQuoted(std::string_view text, std::size_t limit) {
  const std::size_t shown = ShownLength(text, limit);
  std::string out = "\"";
  for (const char byte : text.substr(0, shown)) AppendEscaped(out, byte);
  out.push_back('"');
  if (shown < text.size()) out += "...(" + std::to_string(text.size()) + " bytes)";
  return out;
}

std::string TraceQuoted(std::u16string_view text, std::size_t limit) {
  return TraceQuoted(Utf16ToUtf8(text), limit);
}

std::string TraceCode(std::int32_t code) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08lx",
                static_cast<unsigned long>(static_cast<std::uint32_t>(code)));
  return text;
}

std::string TraceStopwatch::Elapsed() const {
  const auto elapsed = std::chrono::steady_clock::now() - start_;
  char text[32];
  std::snprintf(text, sizeof text, "%.3f ms",
                std::chrono::duration<double, std::milli>(elapsed).count());
  return text;
}

}  // namespace qrl
