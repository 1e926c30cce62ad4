// The reader walks the raw text once. A name is gathered by moving its bytes
// down over the TAB, CR, LF and quote bytes that it loses, so every name and
// value ends up as one run of bytes inside `raw`; the byte behind each run has
// already been read when the run ends, so it can take the NUL.
#include "html/attribute_reader.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "html/byte_classes.h"
#include "html/warnings.h"

namespace qrl {

namespace {

bool IsQuote(char byte) { return byte == '"' || byte == '\''; }

// Bytes that a name doesn't simply take: they end it, are dropped, or warn.
constexpr ByteTable kSpecialInName = MakeByteTable(" \t\r\n\"'=");

// Unsigned byte order; most names already differ in their first byte.
inline bool NameBefore(const Attribute& a, const Attribute& b) {
  const std::string_view left(a.first);
  const std::string_view right(b.first);
  if (!left.empty() && !right.empty() && left.front() != right.front())
    return static_cast<unsigned char>(left.front()) < static_cast<unsigned char>(right.front());
  return left < right;
}

// Names in strictly rising order need neither sorting nor merging.
bool NamesStrictlyRise(const Attribute* found, std::uint32_t count) {
  for (std::uint32_t i = 1; i < count; ++i) {
    if (!NameBefore(found[i - 1], found[i])) return false;
  }
  return true;
}

// Small lists are the rule; sorting them by insertion avoids the buffer that a
// library stable sort would allocate for every tag.
void SortByName(Attribute* found, std::uint32_t count) {
  constexpr std::uint32_t kInsertionSortLimit = 16;
  if (count > kInsertionSortLimit) {
    std::stable_sort(found, found + count, [](const Attribute& a, const Attribute& b) { return NameBefore(a, b); });
    return;
  }
  for (std::uint32_t i = 1; i < count; ++i) {
    Attribute moving = found[i];
    std::uint32_t j = i;
    for (; j > 0 && NameBefore(moving, found[j - 1]); --j) found[j] = found[j - 1];
    found[j] = moving;
  }
}

// Keeps the last of each run of equal names: a later attribute replaces an
// earlier one of the same name.
std::uint32_t KeepLastOfEqualNames(Attribute* found, std::uint32_t count) {
  std::uint32_t kept = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (i + 1 < count && found[i + 1].first == found[i].first) continue;
    found[kept++] = found[i];
  }
  return kept;
}

class AttributeReader {
 public:
  AttributeReader(char* raw, std::uint32_t size, Attribute* found) : raw_(raw), size_(size), found_(found) {}

  std::uint32_t Run() {
    std::uint32_t at = 0;
    while (at < size_) {
      if (state_ == State::Name && !HaveName()) {
        at = ReadQuotedPairs(at);
        if (at == size_) break;
      }
      switch (state_) {
        case State::Name: at = ReadName(at); break;
        case State::AfterEquals: at = ReadFirstValueByte(at); break;
        case State::Value: at = ReadValue(at); break;
      }
    }
    FinishAtEnd();
    return count_;
  }

 private:
  enum class State { Name, AfterEquals, Value };

  // The usual form, name="value" with at most one space behind it, read with
  // locals only: every write into the raw text could otherwise change the
  // reader's own fields as far as the compiler knows. Stops where the form
  // isn't met, in the name state with no name begun, as the full machine
  // would be there.
  std::uint32_t ReadQuotedPairs(std::uint32_t at) {
    char* const raw = raw_;
    const std::uint32_t size = size_;
    Attribute* out = found_ + count_;
    while (true) {
      std::uint32_t equals = at;
      while (equals < size && !kSpecialInName[raw[equals]]) ++equals;
      if (equals == at || equals + 1 >= size || raw[equals] != '=' || !IsQuote(raw[equals + 1])) break;
      const std::uint32_t valueBegin = equals + 2;
      const void* hit = std::memchr(raw + valueBegin, raw[equals + 1], size - valueBegin);
      if (hit == nullptr) break;
      const auto close = static_cast<std::uint32_t>(static_cast<const char*>(hit) - raw);
      raw[equals] = '\0';
      raw[close] = '\0';
      const NodeString value = close > valueBegin ? NodeString(raw + valueBegin, close - valueBegin) : NodeString();
      *out++ = Attribute(NodeString(raw + at, equals - at), value);
      at = close + 1;
      if (at < size && raw[at] == ' ') ++at;
    }
    count_ = static_cast<std::uint32_t>(out - found_);
    return at;
  }

  // Reads a run of plain name bytes, then acts on the byte that ends it.
  std::uint32_t ReadName(std::uint32_t at) {
    std::uint32_t end = at;
    while (end < size_ && !kSpecialInName[raw_[end]]) ++end;
    if (end > at) AppendNameBytes(at, end);
    if (end == size_) return end;
    const char byte = raw_[end];
    if (byte == ' ') {
      if (HaveName()) Store(TakeName(), NodeString());
    } else if (IsQuote(byte)) {
      WarnUnexpectedAttributeQuote(byte);
    } else if (byte == '=') {
      pendingName_ = TakeName();
      state_ = State::AfterEquals;
      // The value usually follows at once; reading it here saves a round
      // through the state loop.
      return end + 1 < size_ ? ReadFirstValueByte(end + 1) : end + 1;
    }
    // A TAB, CR or LF is dropped and doesn't end the name.
    return end + 1;
  }

  std::uint32_t ReadFirstValueByte(std::uint32_t at) {
    const char byte = raw_[at];
    if (IsWhiteSpace(byte)) {
      if (!pendingName_.empty()) Store(pendingName_, NodeString());
      pendingName_ = NodeString();
      state_ = State::Name;
      return at + 1;
    }
    state_ = State::Value;
    quote_ = IsQuote(byte) ? byte : '\0';
    valueBegin_ = quote_ != '\0' ? at + 1 : at;
    return ReadValue(valueBegin_);
  }

  std::uint32_t ReadValue(std::uint32_t at) {
    const std::uint32_t end = quote_ != '\0' ? FindQuote(at) : FindBlank(at);
    if (end == size_) return end;
    Store(pendingName_, Terminate(valueBegin_, end));
    pendingName_ = NodeString();
    state_ = State::Name;
    return end + 1;
  }

  void FinishAtEnd() {
    switch (state_) {
      case State::Name:
        if (HaveName()) Store(TakeName(), NodeString());
        break;
      case State::AfterEquals:
        if (!pendingName_.empty()) Store(pendingName_, NodeString());
        break;
      case State::Value:
        // A value without its closing quote or blank keeps what was read, but
        // only under a name.
        if (!pendingName_.empty()) Store(pendingName_, Terminate(valueBegin_, size_));
        break;
    }
  }

  std::uint32_t FindQuote(std::uint32_t at) const {
    const void* hit = std::memchr(raw_ + at, quote_, size_ - at);
    return hit != nullptr ? static_cast<std::uint32_t>(static_cast<const char*>(hit) - raw_) : size_;
  }

  std::uint32_t FindBlank(std::uint32_t at) const {
    while (at < size_ && !IsWhiteSpace(raw_[at])) ++at;
    return at;
  }

  bool HaveName() const { return nameEnd_ != nameBegin_; }

  void AppendNameBytes(std::uint32_t begin, std::uint32_t end) {
    if (!HaveName()) nameBegin_ = nameEnd_ = begin;
    if (nameEnd_ != begin) std::memmove(raw_ + nameEnd_, raw_ + begin, end - begin);
    nameEnd_ += end - begin;
  }

  NodeString TakeName() {
    if (!HaveName()) return NodeString();
    NodeString name = Terminate(nameBegin_, nameEnd_);
    nameBegin_ = nameEnd_ = 0;
    return name;
  }

  NodeString Terminate(std::uint32_t begin, std::uint32_t end) {
    if (begin == end) return NodeString();
    raw_[end] = '\0';
    return NodeString(raw_ + begin, end - begin);
  }

  void Store(NodeString name, NodeString value) { found_[count_++] = Attribute(name, value); }

  char* raw_;
  std::uint32_t size_;
  Attribute* found_;
  std::uint32_t count_ = 0;
  State state_ = State::Name;
  std::uint32_t nameBegin_ = 0;
  std::uint32_t nameEnd_ = 0;
  NodeString pendingName_;
  char quote_ = '\0';
  std::uint32_t valueBegin_ = 0;
};

}  // namespace

std::uint32_t ReadAttributes(char* raw, std::uint32_t size, Attribute* found) {
  const std::uint32_t count = AttributeReader(raw, size, found).Run();
  if (NamesStrictlyRise(found, count)) return count;
  SortByName(found, count);
  return KeepLastOfEqualNames(found, count);
}

}  // namespace qrl
