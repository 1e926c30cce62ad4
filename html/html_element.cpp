#include "html/html_element.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "html/attribute_reader.h"
#include "html/tree_memory.h"

namespace qrl {

namespace {

static_assert(alignof(std::uint32_t) >= 2, "the lowest bit of a block's address must stay free");

std::string_view TrimmedOfSpaces(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(' ') + 1));
  return text;
}

// A copy of `bytes` in the tree's memory, followed by a NUL byte.
char* TerminatedCopy(std::string_view bytes, TreeMemory& memory) {
  char* copy = memory.AllocateArray<char>(bytes.size() + 1);
  if (!bytes.empty()) std::memcpy(copy, bytes.data(), bytes.size());
  copy[bytes.size()] = '\0';
  return copy;
}

}  // namespace

ElementRef HtmlElement::SharedReference() const { return TreeMemory::Of(*this).Share(*this); }

ElementRef HtmlElement::GetParent() const { return parent_ ? parent_->SharedReference() : ElementRef(); }

void HtmlElement::SetText(NodeString text) noexcept {
  if (text.empty()) return;
  payload_ = text.data();
  payloadSize_ = static_cast<std::uint32_t>(text.size());
  attributes_ |= kHoldsText;
}

ElementRef HtmlElement::FromStartTag(std::string_view raw, std::string_view text) {
  const std::shared_ptr<TreeMemory> memory = TreeMemory::Create();
  HtmlElement* node = memory->NewNode();
  const std::string_view trimmed = TrimmedOfSpaces(text);
  node->SetText(NodeString(TerminatedCopy(trimmed, *memory), static_cast<std::uint32_t>(trimmed.size())));
  std::vector<Attribute> scratch;
  node->ParseAttributes(TerminatedCopy(raw, *memory), static_cast<std::uint32_t>(raw.size()), *memory, scratch);
  return memory->Share(*node);
}

void HtmlElement::ParseAttributes(char* raw, std::uint32_t size, TreeMemory& memory,
                                  std::vector<Attribute>& scratch) {
  if (size == 0) return;
  if (scratch.size() < MostAttributesIn(size)) scratch.resize(MostAttributesIn(size));
  const std::uint32_t count = ReadAttributes(raw, size, scratch.data());
  if (count == 0) return;
  void* block = memory.Allocate(kAttributeBlockHeader + count * sizeof(Attribute), alignof(std::uint32_t));
  std::memcpy(block, &count, sizeof count);
  auto* items = reinterpret_cast<Attribute*>(static_cast<char*>(block) + kAttributeBlockHeader);
  std::uninitialized_copy(scratch.data(), scratch.data() + count, items);
  attributes_ = reinterpret_cast<std::uintptr_t>(block) | (attributes_ & kHoldsText);
}

// Siblings stand in document order, which is the order of their keys, so a
// binary search finds a node among any number of them.
std::uint32_t HtmlElement::IndexAmongSiblings(const HtmlElement& parentNode) const noexcept {
  const ChildList siblings = parentNode.children();
  const std::uint64_t key = TreeMemory::DocumentOrderKey(*this);
  const auto found = std::lower_bound(siblings.begin(), siblings.end(), key,
                                      [](const HtmlElement* sibling, std::uint64_t wanted) {
                                        return TreeMemory::DocumentOrderKey(*sibling) < wanted;
                                      });
  return found != siblings.end() && *found == this ? static_cast<std::uint32_t>(found - siblings.begin())
                                                   : static_cast<std::uint32_t>(siblings.size());
}

}  // namespace qrl
