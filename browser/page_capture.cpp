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
#include "html/tree_walk.h"
#include "trace/trace_text.h"

namespace qrl {
namespace {

struct WaitingCapture {
  CaptureCause cause;
  ResultCode errorCode;
  std::string markup;
};

bool captureRunning = false;
std::deque<WaitingCapture> waitingCaptures;

const char* CauseName(CaptureCause cause) {
  return cause == CaptureCause::Refresh ? "refresh" : "navigation";
}

// The nodes of the tree that are elements; runs of text don't count.
std::size_t CountElements(const HtmlDocument& document) {
  std::size_t count = 0;
  if (document.root) {
    WalkDescendants(*document.root, [&count](const HtmlElement& node) {
      if (node.name() != "plain") ++count;
      return true;
    });
  }
  return count;
}

void ReplaceDocument(CaptureCause cause, const std::string& markup) {
  const std::lock_guard<std::mutex> hold(PageLock);
  const TraceStopwatch parseTime;
  HtmlParser parser;
  RootDocument = parser.Parse(markup.c_str(), static_cast<std::uint32_t>(markup.size()));
  Trace("capture", [&] {
    const std::string parsed = parseTime.Elapsed();
    return std::string(CauseName(cause)) + " bytes=" + std::to_string(markup.size()) +
           " elements=" + std::to_string(CountElements(*RootDocument)) + " in " + parsed;
  });
  ResetElementTable();
  SetNotifyText(ProgressComplete);
}

void RunCapture(CaptureCause cause, ResultCode errorCode, const std::string& markup) {
  if (errorCode < 0) {
    Trace("capture",
          [&] { return std::string(CauseName(cause)) + " failed=" + TraceCode(errorCode); });
    if (cause == CaptureCause::Refresh) PrintScriptError(errorCode);
    return;
  }
  ReplaceDocument(cause, markup);
}

class RunningCapture {
 public:
  RunningCapture() { captureRunning = true; }
  ~RunningCapture() { captureRunning = false; }
  RunningCapture(const RunningCapture&) = delete;
  RunningCapture& operator=(const RunningCapture&) = delete;
};

}  // namespace

void CaptureMarkup(CaptureCause cause, ResultCode errorCode, std::string markup) {
  if (captureRunning) {
    waitingCaptures.push_back({cause, errorCode, std::move(markup)});
    return;
  }
  const RunningCapture running;
  RunCapture(cause, errorCode, markup);
  while (!waitingCaptures.empty()) {
    const WaitingCapture next = std::move(waitingCaptures.front());
    waitingCaptures.pop_front();
    RunCapture(next.cause, next.errorCode, next.markup);
  }
}

void CapturePage(CaptureCause cause, ResultCode errorCode, std::u16string_view resultJson) {
  CaptureMarkup(cause, errorCode, errorCode < 0 ? std::string() : CapturedMarkup(resultJson));
}

void RequestCapture(WebView& view, CaptureCause cause) {
  view.ExecuteMarkupScript(PageMarkupScript, [cause](ResultCode errorCode, std::string markup) {
    CaptureMarkup(cause, errorCode, std::move(markup));
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
