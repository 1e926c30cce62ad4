// Commands that read one element: text, markup, tag name, attributes,
// classes. None issues a handle and none changes the tree.
#include <string>
#include <string_view>

#include "commands/element_table.h"
#include "commands/inner_markup.h"
#include "commands/text_utils.h"
#include "host/cdom.h"

namespace qrl {
namespace {

// The text of wvGetAttribute stays readable until the next call of it.
std::string AttributeResult;

std::string MarkupOf(const HtmlElement& element) {
  std::string markup;
  element.AppendMarkup(markup);
  return markup;
}

}  // namespace

HostWord CDOM::wvGetInnerText(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef element = StartOfHandle(IntArg(args, 0));
  if (!element) return GiveInt(NoElement);
  const std::string text = element->GetText();
  return GiveText(text.c_str());
}

HostWord CDOM::wvGetOuterHTML(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef element = StartOfHandle(IntArg(args, 0));
  if (!element) return GiveInt(NoElement);
  const std::string markup = MarkupOf(*element);
  return GiveText(markup.c_str());
}

HostWord CDOM::wvGetInnerHTML(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef element = StartOfHandle(IntArg(args, 0));
  if (!element) return GiveInt(NoElement);
  const std::string inner = CutInnerMarkup(MarkupOf(*element));
  return GiveText(inner.c_str());
}

// The name lives in the element, which the table keeps alive.
HostWord CDOM::wvGetTagName(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef element = ElementOfHandle(IntArg(args, 0));
  if (!element) return GiveInt(NoElement);
  return GiveText(element->name().c_str());
}

HostWord CDOM::wvGetAttribute(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  AttributeResult.clear();
  const std::string name = TextArg(args, 1);
  if (const ElementRef element = ElementOfHandle(IntArg(args, 0)))
    AttributeResult = element->GetAttribute(name);
  return GiveText(AttributeResult.c_str());
}

// Without an element the script still gets a map, one without pairs.
HostWord CDOM::wvGetAttributes(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  TextMap attributes;
  if (const ElementRef element = ElementOfHandle(IntArg(args, 0))) {
    for (const auto& [name, value] : element->attributes())
      attributes.emplace_hint(attributes.end(), std::string(std::string_view(name)), std::string(std::string_view(value)));
  }
  HostValue record;
  MakeTextMap(&record, std::move(attributes));
  return GiveRecord(record);
}

HostWord CDOM::wvGetClasses(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef element = ElementOfHandle(IntArg(args, 0));
  if (!element) return GiveEmptyArray();
  HostValue record;
  MakeTextArray(&record, SplitWords(element->GetAttribute("class")));
  return GiveRecord(record);
}

// A parsed tree never changes, so the text is not stored anywhere; the
// command only confirms the handle.
HostWord CDOM::wvSetInnerText(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementHandle handle = IntArg(args, 0);
  return GiveInt(ElementOfHandle(handle) ? handle : NoElement);
}

}  // namespace qrl
