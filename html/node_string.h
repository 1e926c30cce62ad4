// The byte strings of a parsed tree: a view that is always followed by a NUL
// byte, so that a caller can hand its bytes on as a C string. The bytes live
// in the memory of the tree that holds the view (or are static), never in the
// view itself, which keeps nodes small and copying free.
//
// Packed to the alignment of its size: an attribute, two of these, then takes
// 24 bytes instead of 32 on a 64-bit system, which a large page has hundreds
// of thousands of.
#pragma once

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace qrl {

#pragma pack(push, 4)
class NodeString {
 public:
  constexpr NodeString() noexcept = default;
  // `bytes[size]` must be a NUL byte that stays in place as long as the view.
  constexpr NodeString(const char* bytes, std::uint32_t size) noexcept : data_(bytes), size_(size) {}

  constexpr operator std::string_view() const noexcept { return {data_, size_}; }
  constexpr const char* c_str() const noexcept { return data_; }
  constexpr const char* data() const noexcept { return data_; }
  constexpr std::size_t size() const noexcept { return size_; }
  constexpr bool empty() const noexcept { return size_ == 0; }
  constexpr const char* begin() const noexcept { return data_; }
  constexpr const char* end() const noexcept { return data_ + size_; }

  friend constexpr bool operator==(const NodeString& a, std::string_view b) noexcept {
    return std::string_view(a) == b;
  }
  friend constexpr std::strong_ordering operator<=>(const NodeString& a, std::string_view b) noexcept {
    return std::string_view(a) <=> b;
  }
  // Spelled out for two NodeStrings: otherwise each side could convert, and
  // clang rejects the choice between the two orders as ambiguous.
  friend constexpr bool operator==(const NodeString& a, const NodeString& b) noexcept {
    return std::string_view(a) == std::string_view(b);
  }
  friend constexpr std::strong_ordering operator<=>(const NodeString& a, const NodeString& b) noexcept {
    return std::string_view(a) <=> std::string_view(b);
  }

 private:
  const char* data_ = "";
  std::uint32_t size_ = 0;
};
#pragma pack(pop)

std::ostream& operator<<(std::ostream& out, const NodeString& text);

}  // namespace qrl
