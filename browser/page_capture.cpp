#include "browser/page_capture.h"

#include <deque>
#include <mutex>
#include <string>
#include <utility>

#include "browser/browser_state.h"
#include "browser/script_output.h"
#include "browser/wide_text.h"
#include "commands/element_table.h"
#include "commands/text_utils.h"
#include "host/cdom.h"
#include "html/html_parser.h"

namespace qrl {
namespace {

struct WaitingCapture {
  CaptureCause cause;
  ResultCode errorCode;
  std::u16string resultJson;
};

bool captureRunning = false;
std::deque<WaitingCapture> waitingCaptures;

// A JSON string value arrives between double quotes; anything else (a number,
// null, an object) is taken as markup as it stands.
std::u16string_view WithoutQuotes(std::u16string_view text) {
  if (text.empty() || text.front() != u'"') return text;
  text.remove_prefix(1);
  if (!text.empty()) text.remove_suffix(1);
  return text;
}

void ReplaceDocument(std::u16string_view resultJson) {
  const std::lock_guard<std::mutex> hold(PageLock);
  const std::u16string unescaped = UnescapeJsonText(resultJson);
  const std::string bytes = EachUnitToUtf8(WithoutQuotes(unescaped));
  HtmlParser parser;
  RootDocument = parser.Parse(bytes.c_str(), static_cast<std::uint32_t>(bytes.size()));
  ResetElementTable();
  SetNotifyText(ProgressComplete);
}

void RunCapture(CaptureCause cause, ResultCode errorCode, std::u16string_view resultJson) {
  if (errorCode < 0) {
    if (cause == CaptureCause::Refresh) PrintScriptError(errorCode);
    return;
  }
  ReplaceDocument(resultJson);
}

class RunningCapture {
 public:
  RunningCapture() { captureRunning = true; }
  ~RunningCapture() { captureRunning = false; }
  RunningCapture(const RunningCapture&) = delete;
  RunningCapture& operator=(const RunningCapture&) = delete;
};

}  // namespace

void CapturePage(CaptureCause cause, ResultCode errorCode, std::u16string_view resultJson) {
  if (captureRunning) {
    waitingCaptures.push_back({cause, errorCode, std::u16string(resultJson)});
    return;
  }
  const RunningCapture running;
  RunCapture(cause, errorCode, resultJson);
  while (!waitingCaptures.empty()) {
    const WaitingCapture next = std::move(waitingCaptures.front());
    waitingCaptures.pop_front();
    RunCapture(next.cause, next.errorCode, next.resultJson);
  }
}

void RequestCapture(WebView& view, CaptureCause cause) {
  view.ExecuteScript(PageMarkupScript, [cause](ResultCode errorCode, std::u16string_view json) {
    CapturePage(cause, errorCode, json);
  });
}

void EchoWebMessage(WebView& sender, const WebMessageArgs& message) {
  const std::optional<std::u16string> text = message.TryGetWebMessageAsString();
  sender.PostWebMessageAsString(text ? std::optional<std::u16string_view>(*text) : std::nullopt);
}

// The old document stays until the capture's completion runs.
HostWord CDOM::wvRefreshDOM(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (BrowserView) {
    SetNotifyText(ProgressNavigating);
    RequestCapture(*BrowserView, CaptureCause::Refresh);
  }
  return GiveInt(0);
}

}  // namespace qrl
