#include "browser/captured_markup.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "commands/text_utils.h"

namespace qrl {
namespace {

constexpr std::size_t UnicodeEscapeLength = 6;  // backslash, u, four units
constexpr std::size_t ChunkBytes = 4096;

// Units are narrowed four at a time from words in memory order.
static_assert(std::endian::native == std::endian::little);

bool IsPlainAscii(char16_t unit) { return unit < 0x80 && unit != u'\\'; }

// Whether four units read as one little-endian word are all plain ASCII: no
// bit above the seventh, and no lane equal to a backslash (a lane that the
// exclusive or turns to zero).
bool FourPlainUnits(std::uint64_t word) {
  constexpr std::uint64_t Lanes = 0x0001000100010001ull;
  const std::uint64_t nonAscii = word & (0xFF80 * Lanes);
  const std::uint64_t x = word ^ (u'\\' * Lanes);
  const std::uint64_t zeroLane = (x - Lanes) & ~x & (0x8000 * Lanes);
  return (nonAscii | zeroLane) == 0;
}

// Collects bytes in a small buffer that goes to the result a chunk at a
// time, and remembers how many bytes the last unit took, so that it can be
// taken back at the end.
class UnitWriter {
 public:
  explicit UnitWriter(std::size_t expectedBytes) { out_.reserve(expectedBytes); }

  void Put(char16_t unit) {
    if (used_ + 3 > ChunkBytes) Flush();
    char* at = chunk_ + used_;
    if (unit < 0x80) {
      at[0] = static_cast<char>(unit);
      lastUnitBytes_ = 1;
    } else if (unit < 0x800) {
      at[0] = static_cast<char>(0xC0 | (unit >> 6));
      at[1] = static_cast<char>(0x80 | (unit & 0x3F));
      lastUnitBytes_ = 2;
    } else {
      at[0] = static_cast<char>(0xE0 | (unit >> 12));
      at[1] = static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
      at[2] = static_cast<char>(0x80 | (unit & 0x3F));
      lastUnitBytes_ = 3;
    }
    used_ += lastUnitBytes_;
    ++units_;
  }

  // Copies the run of plain ASCII units (no backslash) that starts at `at`,
  // the bulk of every page, and gives where it ends. Four units are looked
  // at and narrowed at a time.
  std::size_t PutPlainRun(std::u16string_view text, std::size_t at) {
    const std::size_t start = at;
    while (true) {
      if (used_ + 4 > ChunkBytes) Flush();
      std::uint64_t word = 0;
      if (at + 4 > text.size()) break;
      std::memcpy(&word, text.data() + at, sizeof word);
      if (!FourPlainUnits(word)) break;
      const auto narrowed = static_cast<std::uint32_t>(
          (word & 0xFF) | ((word >> 8) & 0xFF00) | ((word >> 16) & 0xFF0000) |
          ((word >> 24) & 0xFF000000));
      std::memcpy(chunk_ + used_, &narrowed, sizeof narrowed);
      used_ += 4;
      at += 4;
    }
    for (; at < text.size() && IsPlainAscii(text[at]); ++at) {
      if (used_ == ChunkBytes) Flush();
      chunk_[used_++] = static_cast<char>(text[at]);
    }
    if (at > start) {
      units_ += at - start;
      lastUnitBytes_ = 1;
    }
    return at;
  }

  std::size_t units() const { return units_; }

  std::string Finish(bool dropLastUnit) {
    if (dropLastUnit) used_ -= lastUnitBytes_;
    Flush();
    return std::move(out_);
  }

 private:
  void Flush() {
    out_.append(chunk_, used_);
    used_ = 0;
  }

  std::string out_;
  char chunk_[ChunkBytes];
  std::size_t used_ = 0;
  std::size_t units_ = 0;
  std::size_t lastUnitBytes_ = 0;
};

// What one escape at the start of `text` stands for, and how many units it
// takes; `text` begins with a backslash that is not the last unit. The rare
// \u escape is read by UnescapeJsonText itself, with all its leniency.
std::size_t ReadEscape(std::u16string_view text, char16_t& unit, bool& hasUnit) {
  const char16_t escaped = text[1];
  hasUnit = true;
  if (escaped != u'u') {
    unit = JsonEscapeUnit(escaped);
    return 2;
  }
  if (text.size() >= UnicodeEscapeLength) {
    unit = UnescapeJsonText(text.substr(0, UnicodeEscapeLength))[0];
    return UnicodeEscapeLength;
  }
  // Too short for a \u escape: the backslash goes, the rest is plain text.
  hasUnit = false;
  return 1;
}

}  // namespace

std::string CapturedMarkup(std::u16string_view json) {
  UnitWriter writer(json.size());
  // Whether the first unit of the unescaped text has been seen, and whether
  // it was a double quote (which is then left out, with the last unit).
  bool started = false;
  bool quoted = false;
  std::size_t i = 0;
  while (i < json.size()) {
    if (IsPlainAscii(json[i])) {
      if (!started && json[i] == u'"') {
        quoted = true;
        ++i;
      }
      started = true;
      i = writer.PutPlainRun(json, i);
      continue;
    }
    char16_t unit = json[i];
    bool hasUnit = true;
    i += unit == u'\\' && i + 1 < json.size() ? ReadEscape(json.substr(i), unit, hasUnit) : 1;
    if (!hasUnit) continue;
    if (!started && unit == u'"') {
      quoted = true;
    } else {
      writer.Put(unit);
    }
    started = true;
  }
  return writer.Finish(quoted && writer.units() > 0);
}

namespace {

// Where the first byte at or above `floor` stands, eight bytes at a time
// through the ASCII that most pages are made of.
std::size_t FindByteFrom(std::string_view text, std::size_t at, unsigned char floor) {
  constexpr std::uint64_t HighBits = 0x8080808080808080ull;
  while (at < text.size()) {
    if (at + 8 <= text.size()) {
      std::uint64_t word = 0;
      std::memcpy(&word, text.data() + at, sizeof word);
      if ((word & HighBits) == 0) {
        at += 8;
        continue;
      }
    }
    if (static_cast<unsigned char>(text[at]) >= floor) return at;
    ++at;
  }
  return at;
}

void AppendUnit(std::string& out, char32_t unit) {
  out += static_cast<char>(0xE0 | (unit >> 12));
  out += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
  out += static_cast<char>(0x80 | (unit & 0x3F));
}

}  // namespace

std::optional<std::string> CapturedMarkupFromUtf8(std::string_view utf8) {
  // Bytes from 0xEF up lead U+FFFD or a character beyond the basic plane.
  constexpr unsigned char ReplacementLead = 0xEF;
  constexpr unsigned char FourByteLead = 0xF0;
  std::string out;
  out.reserve(utf8.size());
  std::size_t done = 0;
  for (std::size_t at = FindByteFrom(utf8, 0, ReplacementLead); at < utf8.size();
       at = FindByteFrom(utf8, at, ReplacementLead)) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead == ReplacementLead) {
      if (utf8.substr(at, 3) == "\xEF\xBF\xBD") return std::nullopt;
      ++at;
      continue;
    }
    if (lead < FourByteLead || at + 4 > utf8.size()) {
      ++at;
      continue;
    }
    out.append(utf8.substr(done, at - done));
    const auto byte = [&](std::size_t i) { return static_cast<char32_t>(utf8[at + i] & 0x3F); };
    const char32_t beyond =
        (((static_cast<char32_t>(lead) & 0x07) << 18) | (byte(1) << 12) | (byte(2) << 6) | byte(3)) -
        0x10000;
    AppendUnit(out, 0xD800 + (beyond >> 10));
    AppendUnit(out, 0xDC00 + (beyond & 0x3FF));
    at += 4;
    done = at;
  }
  out.append(utf8.substr(done));
  return out;
}

}  // namespace qrl
