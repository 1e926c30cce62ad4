// The vocabulary: 35 script functions and 6 constants. The row number is the
// code the host calls a function by, so the order here is part of the
// interface and never changes.
#include <string>

#include "host/cdom.h"

namespace qrl {
namespace {

constexpr CommandRow Function(CommandRow::Handler handler, const char* name,
                              std::uint32_t counts, std::uint64_t argTypes) {
  return {handler, name, static_cast<std::uint16_t>(std::char_traits<char>::length(name)),
          KindFunction, counts, argTypes};
}

constexpr CommandRow Constant(const char* name, std::uint32_t value) {
  return {nullptr, name, static_cast<std::uint16_t>(std::char_traits<char>::length(name)),
          KindConstant, value, 0};
}

}  // namespace

// Counts are ArgCounts(required, optional); argTypes hold one nibble per
// position, position 1 lowest (0 integer, 1 narrow text, 5 wide text).
const std::array<CommandRow, CommandCount> CDOM::CommandTable = {{
    Function(&CDOM::wvSetInnerText, "wvSetInnerText", ArgCounts(2, 1), 0x10),
    Function(&CDOM::wvCreate, "wvCreate", ArgCounts(1, 5), 0x15050),
    Function(&CDOM::wvClear, "wvClear", ArgCounts(0, 0), 0),
    Function(&CDOM::wvRefreshDOM, "wvRefreshDOM", ArgCounts(0, 0), 0),
    Function(&CDOM::wvGetElementById, "wvGetElementById", ArgCounts(2, 3), 0x10),
    Function(&CDOM::wvGetElementsByClass, "wvGetElementsByClass", ArgCounts(2, 3), 0x110),
    Function(&CDOM::wvGetAttribute, "wvGetAttribute", ArgCounts(2, 1), 0x10),
    Function(&CDOM::wvGetAttributes, "wvGetAttributes", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvGetClasses, "wvGetClasses", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvGetElementsByTagName, "wvGetElementsByTagName", ArgCounts(2, 3), 0x10),
    Function(&CDOM::wvGetElementsByAttribute, "wvGetElementsByAttribute", ArgCounts(3, 2), 0x1110),
    Function(&CDOM::wvGetInnerText, "wvGetInnerText", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvGetInnerHTML, "wvGetInnerHTML", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvGetOuterHTML, "wvGetOuterHTML", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvStop, "wvStop", ArgCounts(0, 1), 0x10),
    Function(&CDOM::wvBack, "wvBack", ArgCounts(0, 1), 0x10),
    Function(&CDOM::wvForward, "wvForward", ArgCounts(0, 1), 0x10),
    Function(&CDOM::wvHome, "wvHome", ArgCounts(0, 1), 0x5),
    Function(&CDOM::wvReload, "wvReload", ArgCounts(0, 1), 0x1),
    Function(&CDOM::wvURL, "wvURL", ArgCounts(0, 1), 0x10),
    Function(&CDOM::wvOpenDev, "wvOpenDev", ArgCounts(0, 1), 0x10),
    Function(&CDOM::wvStatusBar, "wvStatusBar", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvContextMenu, "wvContextMenu", ArgCounts(1, 1), 0x10),
    Function(&CDOM::wvNavigate, "wvNavigate", ArgCounts(1, 1), 0x5),
    Function(&CDOM::wvNavigateStr, "wvNavigateStr", ArgCounts(1, 1), 0x5),
    Function(&CDOM::wvGetLinksByHREF, "wvGetLinksByHREF", ArgCounts(2, 1), 0x10),
    Function(&CDOM::wvGetLinksByText, "wvGetLinksByText", ArgCounts(2, 1), 0x10),
    Function(&CDOM::wvGetImagesBySrc, "wvGetImagesBySrc", ArgCounts(2, 1), 0x10),
    Function(&CDOM::wvGetParent, "wvGetParent", ArgCounts(1, 1), 0),
    Function(&CDOM::wvGetSiblingNext, "wvGetSiblingNext", ArgCounts(1, 1), 0),
    Function(&CDOM::wvGetSiblingPrev, "wvGetSiblingPrev", ArgCounts(1, 1), 0),
    Function(&CDOM::wvGetTagName, "wvGetTagName", ArgCounts(1, 1), 0),
    Function(&CDOM::wvParse, "wvParse", ArgCounts(1, 3), 0x1),
    Function(&CDOM::wvGetChildren, "wvGetChildren", ArgCounts(1, 3), 0x10),
    Function(&CDOM::wvExecuteScript, "wvExecuteScript", ArgCounts(1, 3), 0x5),
    Constant("@WV2Version", 1001),
    Constant("@EasterEgg", 42),
    Constant("@ColIndexRowIndex", 0),
    Constant("@ColNameRowIndex", 1),
    Constant("@ColIndexRowName", 2),
    Constant("@ColNameRowName", 3),
}};

}  // namespace qrl
