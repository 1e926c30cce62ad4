// Steps from an element to its parent or a neighbour. Each step issues a new
// handle, even for a node that already has one.
#include "commands/element_table.h"
#include "host/cdom.h"

namespace qrl {
namespace {

template <class Step>
ElementRef StepFrom(const HostValue* args, Step step) {
  const ElementRef element = ElementOfHandle(IntArg(args, 0));
  return element ? step(*element) : ElementRef{};
}

}  // namespace

HostWord CDOM::wvGetParent(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef parent =
      StepFrom(args, [](const HtmlElement& element) { return element.GetParent(); });
  return GiveInt(parent ? RegisterElement(parent) : NoElement);
}

HostWord CDOM::wvGetSiblingNext(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef next =
      StepFrom(args, [](const HtmlElement& element) { return element.GetNextSibling(); });
  return GiveInt(next ? RegisterElement(next) : NoElement);
}

HostWord CDOM::wvGetSiblingPrev(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef previous =
      StepFrom(args, [](const HtmlElement& element) { return element.GetPreviousSibling(); });
  return GiveInt(previous ? RegisterElement(previous) : NoElement);
}

}  // namespace qrl
