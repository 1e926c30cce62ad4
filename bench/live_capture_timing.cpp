// Loads each page of the corpus in the live browser, through the module as
// a host drives it, and reports for each the time from the end of the
// navigation (the browser's completion event) to "NavComplete" (the page
// captured, parsed and made the current document), and the whole time from
// wvNavigate to "NavComplete". Needs a display: run it under xvfb-run.
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

#include "browser/browser_platform.h"
#include "browser/browser_state.h"
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

  std::printf("%-10s %12s %16s %20s\n", "page", "bytes", "end->complete", "request->complete");
  for (const auto& page : pages) {
    std::vector<double> afterEnd;
    std::vector<double> whole;
    for (int round = 0; round < rounds; ++round) {
      const int before = platform.completions;
      const Clock::time_point request = Clock::now();
      host.call("wvnavigate", {Utf8ToUtf16("file://" + page.string())});
      if (!RunUntil(platform, before + 1)) return 1;
      afterEnd.push_back(Milliseconds(platform.lastCompletion - navigationEnd));
      whole.push_back(Milliseconds(platform.lastCompletion - request));
    }
    std::printf("%-10s %12ju %13.1f ms %17.1f ms\n", page.stem().string().c_str(),
                static_cast<std::uintmax_t>(std::filesystem::file_size(page)), Median(afterEnd),
                Median(whole));
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
