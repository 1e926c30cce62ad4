#include "browser/page_capture.h"

#include <deque>
#include <mutex>
#include <string>
#include <utility>

#include "browser/browser_state.h"
#include "browser/captured_markup.h"
#include "browser/script_output.h"
#include "commands/element_table.h"
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

void ReplaceDocument(std::u16string_view resultJson) {
  const std::lock_guard<std::mutex> hold(PageLock);
  const std::string bytes = CapturedMarkup(resultJson);
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
