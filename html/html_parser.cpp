// The parser reads markup in one pass without recursion. Open elements stand
// on an explicit stack (open_); the element on top is in one of four states
// and each state has one reading function, which reads as far as it can in one
// go and then changes state, finishes the element, or opens a child.
//
// Local rules:
// - Positions are 32-bit offsets into the input. Only the byte at `length_`
//   (the terminating NUL) is ever read beyond the input, and only where a
//   byte behind a "<" or a "-" is looked at; a NUL inside the input is an
//   ordinary byte.
// - A node is made at its start tag, so nodes lie in the tree's memory in
//   document order, which is also the order in which a tree is later walked
//   and by which a node is found among its siblings. Finished children wait in finished_ until their parent is
//   complete and takes them into an array of its own; an element still open
//   at the end of the input thus leaves no trace, and neither do its
//   finished children.
// - The tree's strings point into the tree's copy of the input (bytes_). The
//   scanning reads the untouched input, so the copy can be rewritten freely:
//   line breaks and tabs leave text in place, and each string gets its NUL
//   on the byte behind it, which belongs to no other string.
#include "html/html_parser.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "html/tree_memory.h"
#include "html/byte_classes.h"
#include "html/text_scan.h"
#include "html/warnings.h"

namespace qrl {

namespace {

constexpr std::string_view kTextNodeName = "plain";
// Open elements deeper than this find an ancestor by name through a count of
// the open names instead of a scan of the stack.
constexpr std::size_t kAncestorScanLimit = 64;

constexpr ByteTable kEndsTagName = MakeByteTable(" \r\n\t/>");

bool StartsWith(const char* bytes, std::string_view prefix) {
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    if (bytes[i] != prefix[i]) return false;
  }
  return true;
}

std::string_view RawTextClosingMarker(std::string_view name) {
  switch (name.size()) {
    case 5: return name == "style" ? "</style>" : std::string_view();
    case 6: return name == "script" ? "</script>" : std::string_view();
    case 8: return name == "noscript" ? "</noscript>" : std::string_view();
    default: return {};
  }
}

// Sizes of 63 bytes and more share the last bit.
std::uint64_t SizeBit(std::size_t size) { return std::uint64_t{1} << std::min<std::size_t>(size, 63); }

std::uint32_t OffsetOf(const void* hit, const char* base) {
  return static_cast<std::uint32_t>(static_cast<const char*>(hit) - base);
}

}  // namespace

HtmlParser::HtmlParser()
    : voidElements{"br",  "hr",      "img",   "input",  "link",  "meta",   "area",   "base",
                   "col", "command", "embed", "keygen", "param", "source", "track",  "wbr"} {}

HtmlParser::~HtmlParser() = default;

// Made in place where the caller keeps it: a node returned through memory
// and read back at once costs a stalled load per node.
[[gnu::always_inline]] inline HtmlElement* HtmlParser::NewNode(HtmlElement* parentNode) {
  HtmlElement* node = memory_->NewNode();
  node->parent_ = parentNode;
  return node;
}

DocumentRef HtmlParser::Parse(const char* input, std::uint32_t length) {
  root.reset();
  input_ = input;
  length_ = length;
  open_.clear();
  finished_.TruncateTo(0);
  openNameCounts_.clear();
  countingOpenNames_ = false;
  PrepareVoidTest();

  const std::shared_ptr<TreeMemory> memory = TreeMemory::Create();
  memory_ = memory.get();
  bytes_ = memory_->AllocateArray<char>(std::size_t{length} + 1);
  std::memcpy(bytes_, input, length);
  bytes_[length] = '\0';
  rootNode_ = NewNode(nullptr);

  // Text outside of any element ends the document.
  std::uint32_t position = 0;
  while (position < length_) {
    const char byte = input_[position];
    if (IsWhiteSpace(byte)) {
      ++position;
    } else if (byte == '<') {
      position = ParseElement(position);
    } else {
      break;
    }
  }
  AdoptFinishedChildren(*rootNode_, 0);

  input_ = nullptr;
  bytes_ = nullptr;
  memory_ = nullptr;
  root = memory->Share(*rootNode_);
  rootNode_ = nullptr;
  auto document = std::make_shared<HtmlDocument>();
  document->root = root;
  return document;
}

// Reads one construct at top level, from its "<" to its end, with all the
// elements inside it.
std::uint32_t HtmlParser::ParseElement(std::uint32_t position) {
  // A closing tag with no element open is skipped silently.
  if (input_[position + 1] == '/') return SkipPast(position, ">");
  position = OpenConstruct(position);
  while (!open_.empty()) {
    if (position >= length_) {
      DiscardOpenElements();
      return length_;
    }
    switch (open_.back().state) {
      case ElementState::ElementNameState: position = ReadName(position); break;
      case ElementState::ElementAttributesState: position = ReadAttributeText(position); break;
      case ElementState::ElementContentState: position = ReadContent(position); break;
      case ElementState::ElementCloseState: position = ReadClosingTag(position); break;
    }
  }
  return position;
}

std::uint32_t HtmlParser::SkipPast(std::uint32_t position, std::string_view marker) const {
  if (position >= length_) return position;
  const std::size_t found = std::string_view(input_ + position, length_ - position).find(marker);
  if (found == std::string_view::npos) return length_;
  return position + static_cast<std::uint32_t>(found + marker.size());
}

// At a "<" that doesn't begin a closing tag: skips a comment, declaration or
// processing instruction, or opens an element.
std::uint32_t HtmlParser::OpenConstruct(std::uint32_t position) {
  const char next = input_[position + 1];
  if (next == '!') {
    // The search for the end starts at the first "-", so "<!-->" is a whole comment.
    if (input_[position + 2] == '-' && input_[position + 3] == '-') return SkipPast(position + 2, "-->");
    return SkipPast(position + 2, ">");
  }
  if (next == '?') return SkipPast(position, "?>");
  const std::uint32_t nameBegin = position + 1;
  HtmlElement* node = NewNode(open_.empty() ? rootNode_ : open_.back().node);
  open_.push_back(OpenElement{node, nameBegin, nameBegin, nameBegin, nameBegin, finished_.size(),
                              ElementState::ElementNameState, false, false});
  return nameBegin;
}

std::uint32_t HtmlParser::ReadName(std::uint32_t position) {
  // White space before the name is skipped, so "< div>" opens a div.
  while (position < length_ && IsWhiteSpace(input_[position])) ++position;
  std::uint32_t end = position;
  while (end < length_ && !kEndsTagName[input_[end]]) ++end;
  if (end >= length_) return length_;

  OpenElement& element = open_.back();
  element.nameBegin = position;
  element.nameEnd = end;
  element.rawBegin = element.rawEnd = end;
  element.node->SetName(TerminatedString(position, end));
  const char byte = input_[end];
  if (IsWhiteSpace(byte)) {
    element.state = ElementState::ElementAttributesState;
    element.rawBegin = end + 1;
    return end + 1;
  }
  if (byte == '/') {
    // Any element closes itself this way; what stands up to the ">" is lost.
    Attach();
    return SkipPast(end, ">");
  }
  if (IsVoid(NameOf(element))) {
    Attach();
    return end + 1;
  }
  EnterContent(element);
  return end + 1;
}

// Quotes mean nothing here: the first ">" ends the tag.
std::uint32_t HtmlParser::ReadAttributeText(std::uint32_t position) {
  const void* hit = std::memchr(input_ + position, '>', length_ - position);
  if (hit == nullptr) return length_;
  const std::uint32_t close = OffsetOf(hit, input_);
  OpenElement& element = open_.back();
  if (input_[close - 1] == '/') {
    element.rawEnd = close - 1;
    Attach();
    return close + 1;
  }
  element.rawEnd = close;
  if (IsVoid(NameOf(element))) {
    Attach();
    return close + 1;
  }
  EnterContent(element);
  return close + 1;
}

void HtmlParser::EnterContent(OpenElement& element) {
  element.state = ElementState::ElementContentState;
  element.rawText = !RawTextClosingMarker(NameOf(element)).empty();
  if (countingOpenNames_) CountOpenName(element);
}

std::uint32_t HtmlParser::ReadContent(std::uint32_t position) {
  OpenElement& element = open_.back();
  if (element.rawText) return ReadRawText(position);
  const TextRun run = ScanTextRun(input_, bytes_, position, length_);
  if (run.end == length_) return length_;
  const std::uint32_t tag = run.end;
  if (run.keptEnd > position) AddTextNode(position, run.keptEnd);
  if (input_[tag + 1] == '/') {
    element.state = ElementState::ElementCloseState;
    return tag;
  }
  return OpenConstruct(tag);
}

// The content of script, noscript and style is text up to the exact closing
// tag, or up to the end of the input when there is none.
std::uint32_t HtmlParser::ReadRawText(std::uint32_t position) {
  const std::string_view marker = RawTextClosingMarker(NameOf(open_.back()));
  const std::size_t found = std::string_view(input_ + position, length_ - position).find(marker);
  std::uint32_t textEnd = length_;
  std::uint32_t next = length_;
  if (found != std::string_view::npos) {
    textEnd = position + static_cast<std::uint32_t>(found);
    next = textEnd + static_cast<std::uint32_t>(marker.size());
  }
  std::uint32_t textBegin = position;
  while (textBegin < textEnd && input_[textBegin] == ' ') ++textBegin;
  while (textEnd > textBegin && input_[textEnd - 1] == ' ') --textEnd;
  Attach(TerminatedString(textBegin, textEnd));
  return next;
}

// At the "<" of "</".
std::uint32_t HtmlParser::ReadClosingTag(std::uint32_t position) {
  OpenElement& element = open_.back();
  const std::string_view name = NameOf(element);
  const std::uint32_t start = position + 2;
  if (start + name.size() < length_ && StartsWith(input_ + start, name) && input_[start + name.size()] == '>') {
    Attach();
    return start + static_cast<std::uint32_t>(name.size()) + 1;
  }

  // The closing name runs to the next ">", or to the end of the input. The
  // tag "</>" has the name ">", which no element can bear.
  std::string_view closingName(input_ + start, length_ - start);
  std::uint32_t next = length_;
  if (const void* hit = std::memchr(input_ + start, '>', length_ - start)) {
    const std::uint32_t close = OffsetOf(hit, input_);
    closingName = std::string_view(input_ + start, close == start ? 1 : close - start);
    next = close + 1;
  }
  if (HasOpenAncestorNamed(closingName)) {
    // The element ends here, and its parent reads the same closing tag again.
    WarnElementNotClosed(name);
    Attach();
    return position;
  }
  WarnUnexpectedClose(closingName, name);
  element.state = ElementState::ElementContentState;
  return next;
}

// The run's kept bytes already stand in the copy, from `begin` to `end`.
void HtmlParser::AddTextNode(std::uint32_t begin, std::uint32_t end) {
  HtmlElement* node = NewNode(open_.back().node);
  node->SetName(NodeString(kTextNodeName.data(), static_cast<std::uint32_t>(kTextNodeName.size())));
  node->SetText(TerminatedString(begin, end));
  AddFinished(node);
}

// Finishes the element on top of the stack and hands it to its parent.
void HtmlParser::Attach(NodeString text) {
  const OpenElement element = open_.back();
  open_.pop_back();
  if (element.counted) UncountOpenName(element);
  HtmlElement& node = *element.node;
  AdoptFinishedChildren(node, element.firstChild);
  node.SetText(text);
  node.ParseAttributes(bytes_ + element.rawBegin, element.rawEnd - element.rawBegin, *memory_,
                       attributeScratch_);
  AddFinished(element.node);
}

// A finished node waits for its parent, the element now on top of the stack
// (or the root), whose children begin at that element's firstChild.
void HtmlParser::AddFinished(HtmlElement* node) { finished_.Push(node); }

void HtmlParser::AdoptFinishedChildren(HtmlElement& node, std::uint32_t firstChild) {
  const std::uint32_t count = finished_.size() - firstChild;
  if (count == 0) return;
  auto** items = memory_->AllocateArray<HtmlElement*>(count);
  std::memcpy(items, finished_.From(firstChild), count * sizeof(HtmlElement*));
  node.SetChildren(items, count);
  finished_.TruncateTo(firstChild);
}

void HtmlParser::DiscardOpenElements() {
  finished_.TruncateTo(open_.front().firstChild);
  open_.clear();
  openNameCounts_.clear();
}

void HtmlParser::PrepareVoidTest() {
  voidSizesByFirstByte_.fill(0);
  voidSizesByLastByte_.fill(0);
  for (const std::string& name : voidElements) {
    if (name.empty()) continue;
    voidSizesByFirstByte_[static_cast<unsigned char>(name.front())] |= SizeBit(name.size());
    voidSizesByLastByte_[static_cast<unsigned char>(name.back())] |= SizeBit(name.size());
  }
}

bool HtmlParser::IsVoid(std::string_view name) const {
  if (!name.empty()) {
    const std::uint64_t sizeBit = SizeBit(name.size());
    if ((voidSizesByFirstByte_[static_cast<unsigned char>(name.front())] & sizeBit) == 0) return false;
    if ((voidSizesByLastByte_[static_cast<unsigned char>(name.back())] & sizeBit) == 0) return false;
  }
  return voidElements.find(name) != voidElements.end();
}

// The ancestors of the element on top are the elements below it on the stack
// and the root, whose name is empty.
bool HtmlParser::HasOpenAncestorNamed(std::string_view closingName) {
  if (closingName.empty()) return true;
  const std::size_t ancestors = open_.size() - 1;
  if (!countingOpenNames_ && ancestors <= kAncestorScanLimit) {
    for (std::size_t i = 0; i < ancestors; ++i) {
      if (NameOf(open_[i]) == closingName) return true;
    }
    return false;
  }
  if (!countingOpenNames_) StartCountingOpenNames();
  const auto found = openNameCounts_.find(closingName);
  if (found == openNameCounts_.end()) return false;
  const OpenElement& top = open_.back();
  const bool topCounted = top.counted && NameOf(top) == closingName;
  return found->second > (topCounted ? 1u : 0u);
}

void HtmlParser::StartCountingOpenNames() {
  countingOpenNames_ = true;
  for (OpenElement& element : open_) CountOpenName(element);
}

void HtmlParser::CountOpenName(OpenElement& element) {
  ++openNameCounts_[NameOf(element)];
  element.counted = true;
}

void HtmlParser::UncountOpenName(const OpenElement& element) {
  const auto found = openNameCounts_.find(NameOf(element));
  if (--found->second == 0) openNameCounts_.erase(found);
}

std::string_view HtmlParser::NameOf(const OpenElement& element) const {
  return std::string_view(input_ + element.nameBegin, element.nameEnd - element.nameBegin);
}

NodeString HtmlParser::TerminatedString(std::uint32_t begin, std::uint32_t end) {
  if (begin == end) return NodeString();
  bytes_[end] = '\0';
  return NodeString(bytes_ + begin, end - begin);
}

}  // namespace qrl
