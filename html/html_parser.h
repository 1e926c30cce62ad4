#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "html/attribute_map.h"
#include "html/finished_nodes.h"
#include "html/html_document.h"

namespace qrl {

class TreeMemory;

// Turns bytes into a document and never fails. The input must be followed by
// one readable NUL byte (a std::string's buffer is). One object may parse any
// number of inputs, one after the other.
class HtmlParser {
 public:
  HtmlParser();
  ~HtmlParser();
  HtmlParser(const HtmlParser&) = delete;
  HtmlParser& operator=(const HtmlParser&) = delete;

  DocumentRef Parse(const char* input, std::uint32_t length);

  std::set<std::string, std::less<>> voidElements;
  ElementRef root;  // root of the last Parse; empty before the first

 private:
  enum class ElementState : std::uint8_t {
    ElementNameState,
    ElementAttributesState,
    ElementContentState,
    ElementCloseState,
  };

  // An element whose end hasn't been read yet. Its node exists from the start
  // tag on, so that children can name it as their parent when they are made;
  // it takes its finished children (waiting in `finished_`) only when it is
  // complete.
  struct OpenElement {
    HtmlElement* node;
    std::uint32_t nameBegin;
    std::uint32_t nameEnd;
    std::uint32_t rawBegin;  // raw attribute text
    std::uint32_t rawEnd;
    std::uint32_t firstChild;  // index in finished_
    ElementState state;
    bool rawText;  // script, noscript or style: content is text up to the closing tag
    bool counted;  // its name is in openNameCounts_
  };

  std::uint32_t ParseElement(std::uint32_t position);
  std::uint32_t SkipPast(std::uint32_t position, std::string_view marker) const;
  std::uint32_t OpenConstruct(std::uint32_t position);
  std::uint32_t ReadName(std::uint32_t position);
  std::uint32_t ReadAttributeText(std::uint32_t position);
  std::uint32_t ReadContent(std::uint32_t position);
  std::uint32_t ReadRawText(std::uint32_t position);
  std::uint32_t ReadClosingTag(std::uint32_t position);

  void EnterContent(OpenElement& element);
  void AddTextNode(std::uint32_t begin, std::uint32_t end);
  void Attach(NodeString text = NodeString());
  HtmlElement* NewNode(HtmlElement* parentNode);
  void AddFinished(HtmlElement* node);
  void AdoptFinishedChildren(HtmlElement& node, std::uint32_t firstChild);
  void DiscardOpenElements();

  void PrepareVoidTest();
  bool IsVoid(std::string_view name) const;
  bool HasOpenAncestorNamed(std::string_view closingName);
  void StartCountingOpenNames();
  void CountOpenName(OpenElement& element);
  void UncountOpenName(const OpenElement& element);
  std::string_view NameOf(const OpenElement& element) const;
  NodeString TerminatedString(std::uint32_t begin, std::uint32_t end);

  const char* input_ = nullptr;
  std::uint32_t length_ = 0;
  TreeMemory* memory_ = nullptr;  // of the tree being built
  HtmlElement* rootNode_ = nullptr;
  char* bytes_ = nullptr;   // the tree's copy of the input, which the tree's strings point into
  std::vector<OpenElement> open_;
  FinishedNodes finished_;
  std::vector<Attribute> attributeScratch_;
  // Names of the open elements, counted only once the stack has grown too
  // deep for a scan to answer "is an ancestor named so?" cheaply.
  std::unordered_map<std::string_view, std::uint32_t> openNameCounts_;
  bool countingOpenNames_ = false;
  // A quick test before a lookup in voidElements: for each byte, a bit per
  // size of the names that begin with it, and of those that end with it.
  std::array<std::uint64_t, 256> voidSizesByFirstByte_{};
  std::array<std::uint64_t, 256> voidSizesByLastByte_{};
};

}  // namespace qrl
