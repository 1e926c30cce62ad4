// The class that carries one handler per script function and the builders
// of host arrays and maps. Document handlers live in commands/, browser
// handlers in browser/; the table of rows is in host/command_table.cpp.
//
// A handler reads `args` (never beyond `argCount`), works, and ends with one
// of the Give helpers (or DeliverResult), returning that word.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/qor_extender.h"

namespace qrl {

class CDOM;
using CommandRow = CommandRowT<CDOM>;

// The signature every handler shares: passOn1, passOn2, passOn3, args, argCount.
// Only used to declare the handlers below; each definition spells it out.
using HandlerSignature = HostWord(HostWord, HostWord, HostWord, HostValue*, HostWord);

using TextMap = std::map<std::string, std::string, std::less<>>;

struct ValueSearch;

class CDOM : public CQorExtenderT<CDOM> {
 public:
  static const std::array<CommandRow, CommandCount> CommandTable;

  // Document: element read commands.
  HandlerSignature wvSetInnerText;
  HandlerSignature wvGetAttribute;
  HandlerSignature wvGetAttributes;
  HandlerSignature wvGetClasses;
  HandlerSignature wvGetInnerText;
  HandlerSignature wvGetInnerHTML;
  HandlerSignature wvGetOuterHTML;
  HandlerSignature wvGetTagName;
  // Document: element table and load.
  HandlerSignature wvClear;
  HandlerSignature wvParse;
  // Document: collections.
  HandlerSignature wvGetElementById;
  HandlerSignature wvGetElementsByClass;
  HandlerSignature wvGetElementsByTagName;
  HandlerSignature wvGetChildren;
  // Document: links, images, attributes by value.
  HandlerSignature wvGetElementsByAttribute;
  HandlerSignature wvGetLinksByHREF;
  HandlerSignature wvGetLinksByText;
  HandlerSignature wvGetImagesBySrc;
  // Document: tree walk.
  HandlerSignature wvGetParent;
  HandlerSignature wvGetSiblingNext;
  HandlerSignature wvGetSiblingPrev;
  // Browser.
  HandlerSignature wvCreate;
  HandlerSignature wvRefreshDOM;
  HandlerSignature wvStop;
  HandlerSignature wvBack;
  HandlerSignature wvForward;
  HandlerSignature wvHome;
  HandlerSignature wvReload;
  HandlerSignature wvURL;
  HandlerSignature wvOpenDev;
  HandlerSignature wvStatusBar;
  HandlerSignature wvContextMenu;
  HandlerSignature wvNavigate;
  HandlerSignature wvNavigateStr;
  HandlerSignature wvExecuteScript;
  // The start of a browser's creation chain, and the word that tells the
  // script of it (defined in browser/).
  void CreateBrowser();
  void RaiseScriptEvent(const char* word);

  // Result builders: each asks the host for a new array or map, fills it and
  // copies the record to `out`, which it returns. Failures of the host's
  // services are reported through DllReportError (see the definitions).
  HostValue* MakeEmptyArray(HostValue* out);
  HostValue* MakeIntArray(HostValue* out, std::vector<std::int32_t> list);
  HostValue* MakeTextArray(HostValue* out, std::vector<std::string> list);
  HostValue* MakeTextMap(HostValue* out, TextMap map);

  // Give a host array as the result: of the handles, or without rows.
  HostWord GiveHandleArray(std::vector<std::int32_t> handles);
  HostWord GiveEmptyArray();

 private:
  HostWord SelectByValue(const ValueSearch& search, std::int32_t handle);
  HostServices& Services();
  template <class List, class SetElement>
  HostValue* FillArray(HostValue* out, const List& list, std::uint32_t elementType,
                       SetElement setElement);
};

// The one process-wide object; the exports reach it through ExtenderPointer.
extern CDOM ExtenderObject;

}  // namespace qrl
