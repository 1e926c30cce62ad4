// The cycles on Linux with the WebKitGTK browser: a GTK window on the X
// display (a private Xvfb when there is none), the GLib main loop, and the
// resident set from /proc.
#include <gdk/gdkx.h>
#include <gtk/gtk.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <map>

#include "lantern/gtk/xvfb_session.h"
#include "tests/unload/cycle_platform.h"

namespace qrl::testing {
namespace {

using Clock = std::chrono::steady_clock;

void PumpFor(std::chrono::milliseconds time) {
  const auto end = Clock::now() + time;
  while (Clock::now() < end) {
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(1000);
  }
}

class GtkCyclePlatform final : public CyclePlatform {
 public:
  bool HasBrowser() override {
    StartDisplayWhenNeeded();
    gdk_set_allowed_backends("x11");
    return gtk_init_check(nullptr, nullptr);
  }

  std::int32_t MakeWindow() override {
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(window), 640, 480);
    gtk_widget_show(window);
    const auto id =
        static_cast<std::int32_t>(gdk_x11_window_get_xid(gtk_widget_get_window(window)));
    windows_[id] = GTK_WINDOW(window);
    return id;
  }

  std::string WindowText(std::int32_t window) override {
    const char* title = gtk_window_get_title(windows_.at(window));
    return title ? title : "";
  }

  void ClearText(std::int32_t window) override { gtk_window_set_title(windows_.at(window), ""); }

  // The browser's steps are not ours to call here, so the stages are spans of
  // the main loop; over the cycles they leave loads at every point.
  void Advance(std::int32_t window, int stage) override {
    if (stage < FinishedStage) {
      PumpFor(std::chrono::milliseconds(stage * stage * 4));
      return;
    }
    const auto end = Clock::now() + std::chrono::seconds(30);
    while (WindowText(window) != "NavComplete" && Clock::now() < end)
      PumpFor(std::chrono::milliseconds(5));
  }

  void Drain() override { PumpFor(std::chrono::milliseconds(20)); }

  std::size_t ResidentBytes() override {
    std::size_t pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  }

 private:
  // The windows made here, by the id that a script passes.
  std::map<std::int32_t, GtkWindow*> windows_;
};

}  // namespace

CyclePlatform& ThisPlatform() {
  static GtkCyclePlatform platform;
  return platform;
}

}  // namespace qrl::testing
