// Loads each page of the corpus in the live browser, through the module as
// a host drives it, and reports for each the time from the end of the
// navigation (the browser's completion event) to "NavComplete" (the page
// captured, parsed and made the current document), and the whole time from
// wvNavigate to "NavComplete". Beside them, measured in the same run: the
// browser's bare answer (a second view, outside the module, asked for the
// page's outerHTML when its load finishes, until the value is there), the
// capture's own work on that answer (to bytes, parse, release), and how the
// first time compares with the sum of those two.
// Needs a display: run it under xvfb-run.
//
//   xvfb-run -a build/native/bench/qrlantern_live_capture [rounds]
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <webkit2/webkit2.h>

#include "browser/browser_platform.h"
#include "browser/browser_state.h"
#include "browser/captured_markup.h"
#include "html/html_parser.h"
#include "commands/unicode_text.h"
#include "tests/browser/linked_exports.h"

namespace qrl::bench {
namespace {

using Clock = std::chrono::steady_clock;

// The built-in platform, with the moment of every "NavComplete" noted.
class TimingPlatform : public BrowserPlatform {
 public:
  int completions = 0;
  Clock::time_point lastCompletion;

  void SetWindowText(WindowHandle window, std::string_view text) override {
    BuiltInPlatform().SetWindowText(window, text);
    if (text == "NavComplete") {
      lastCompletion = Clock::now();
      ++completions;
    }
  }
  ClientRect GetClientRect(WindowHandle window) override {
    return BuiltInPlatform().GetClientRect(window);
  }
  void PumpOneMessage() override { BuiltInPlatform().PumpOneMessage(); }
  void ShowMessageBox(std::string_view text, std::string_view title, TextWidth width) override {
    BuiltInPlatform().ShowMessageBox(text, title, width);
  }
  std::optional<std::u16string> LocalAppDataFolder() override {
    return BuiltInPlatform().LocalAppDataFolder();
  }
  char16_t FolderSeparator() const override { return BuiltInPlatform().FolderSeparator(); }
  void CreateFolder(std::u16string_view path) override { BuiltInPlatform().CreateFolder(path); }
};

double Milliseconds(Clock::duration span) {
  return std::chrono::duration<double, std::milli>(span).count();
}

gboolean Wake(gpointer) { return G_SOURCE_CONTINUE; }

bool RunUntil(TimingPlatform& platform, int completions) {
  const Clock::time_point limit = Clock::now() + std::chrono::seconds(120);
  const guint wake = g_timeout_add(100, Wake, nullptr);
  while (platform.completions < completions && Clock::now() < limit)
    g_main_context_iteration(nullptr, TRUE);
  g_source_remove(wake);
  if (platform.completions < completions) std::fputs("no NavComplete within 120 s\n", stderr);
  return platform.completions >= completions;
}

struct BareAnswer {
  Clock::time_point asked;
  double milliseconds = 0;
  std::string utf8;
};

void OnBareAnswer(GObject* view, GAsyncResult* result, gpointer data) {
  auto* answer = static_cast<BareAnswer*>(data);
  JSCValue* value =
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr);
  answer->milliseconds = Milliseconds(Clock::now() - answer->asked);
  if (value) {
    gchar* text = jsc_value_to_string(value);
    answer->utf8 = text;
    g_free(text);
    g_object_unref(value);
  }
}

// The page's markup asked for when its load finishes, as a bare WebKitGTK
// program asks for it.
void OnBareLoadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer data) {
  if (event != WEBKIT_LOAD_FINISHED) return;
  auto* answer = static_cast<BareAnswer*>(data);
  answer->asked = Clock::now();
  static constexpr char Script[] = "document.documentElement.outerHTML;";
  webkit_web_view_evaluate_javascript(view, Script, sizeof Script - 1, nullptr, nullptr, nullptr,
                                      OnBareAnswer, answer);
}

gboolean Refuse() { return TRUE; }

// A second view of its own, outside the module, in a window of the same size.
class BareBrowser {
 public:
  BareBrowser() : window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)) {
    view_ = WEBKIT_WEB_VIEW(webkit_web_view_new());
    gtk_window_set_default_size(GTK_WINDOW(window_), 1024, 768);
    gtk_container_add(GTK_CONTAINER(window_), GTK_WIDGET(view_));
    gtk_widget_show_all(window_);
    g_signal_connect(view_, "load-changed", G_CALLBACK(OnBareLoadChanged), &answer_);
    // Modal print and script dialogs (a corpus page asks for one) would stop
    // the loop; the module's view refuses them too.
    g_signal_connect(view_, "print", G_CALLBACK(Refuse), nullptr);
    g_signal_connect(view_, "script-dialog", G_CALLBACK(Refuse), nullptr);
  }
  ~BareBrowser() { gtk_widget_destroy(window_); }
  BareBrowser(const BareBrowser&) = delete;
  BareBrowser& operator=(const BareBrowser&) = delete;

  BareAnswer Load(const std::string& uri) {
    answer_ = {};
    webkit_web_view_load_uri(view_, uri.c_str());
    const Clock::time_point limit = Clock::now() + std::chrono::seconds(120);
    while (answer_.milliseconds == 0 && Clock::now() < limit) g_main_context_iteration(nullptr, TRUE);
    return answer_;
  }

 private:
  GtkWidget* window_;
  WebKitWebView* view_;
  BareAnswer answer_;
};

// What the capture does with the answer once it is there.
double CaptureWork(const std::string& utf8) {
  const Clock::time_point start = Clock::now();
  {
    const std::string markup = CapturedMarkupFromUtf8(utf8).value_or(utf8);
    HtmlParser parser;
    const DocumentRef document =
        parser.Parse(markup.c_str(), static_cast<std::uint32_t>(markup.size()));
  }
  return Milliseconds(Clock::now() - start);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::filesystem::path CorpusFolder() {
  const char* fromEnvironment = std::getenv("QRL_CORPUS");
  return fromEnvironment && *fromEnvironment ? fromEnvironment : QRL_CORPUS_DIR;
}

int Run(int rounds) {
  gdk_set_allowed_backends("x11");
  if (!gtk_init_check(nullptr, nullptr)) {
    std::fputs("no display: run this under xvfb-run\n", stderr);
    return 1;
  }
  TimingPlatform platform;
  UsePlatform(&platform);
  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_default_size(GTK_WINDOW(window), 1024, 768);
  gtk_widget_show_all(window);
  const auto id = static_cast<std::int32_t>(gdk_x11_window_get_xid(gtk_widget_get_window(window)));

  std::vector<std::filesystem::path> pages;
  for (const auto& entry : std::filesystem::directory_iterator(CorpusFolder()))
    if (entry.path().extension() == ".html") pages.push_back(entry.path());
  std::sort(pages.begin(), pages.end());
  if (pages.empty()) {
    std::fputs("no corpus pages: set QRL_CORPUS\n", stderr);
    return 1;
  }

  ModuleHost host(LinkedExports());
  host.call("wvcreate", {id, Utf8ToUtf16("file://" + pages.front().string()), id});
  if (!RunUntil(platform, 1)) return 1;
  Clock::time_point navigationEnd;
  BrowserView->AddNavigationCompleted([&](WebView&) { navigationEnd = Clock::now(); });

  BareBrowser bareBrowser;

  std::printf("%-8s %10s %14s %14s %10s %8s %18s\n", "page", "bytes", "end->complete", "bare answer",
              "capture", "ratio", "request->complete");
  for (const auto& page : pages) {
    std::vector<double> afterEnd, whole, bare, capture;
    for (int round = 0; round < rounds; ++round) {
      const int before = platform.completions;
      const Clock::time_point request = Clock::now();
      host.call("wvnavigate", {Utf8ToUtf16("file://" + page.string())});
      if (!RunUntil(platform, before + 1)) return 1;
      afterEnd.push_back(Milliseconds(platform.lastCompletion - navigationEnd));
      whole.push_back(Milliseconds(platform.lastCompletion - request));
      const BareAnswer answer = bareBrowser.Load("file://" + page.string());
      bare.push_back(answer.milliseconds);
      capture.push_back(CaptureWork(answer.utf8));
    }
    const double ratio = Median(afterEnd) / (Median(bare) + Median(capture));
    std::printf("%-8s %10ju %11.1f ms %11.1f ms %7.1f ms %8.2f %15.1f ms\n",
                page.stem().string().c_str(),
                static_cast<std::uintmax_t>(std::filesystem::file_size(page)), Median(afterEnd),
                Median(bare), Median(capture), ratio, Median(whole));
  }
  UsePlatform(nullptr);
  return 0;
}

}  // namespace
}  // namespace qrl::bench

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
  return qrl::bench::Run(rounds);
}
