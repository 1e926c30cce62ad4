// Windows and the message loop for scripts, in the lantern table:
//   lantern.window{width = W, height = H, title = T}
//       makes and shows a window; gives its id, which wvCreate takes both as
//       the browser's window and as the window for progress texts
//   lantern.text(id)       the window's current text (title), or nil
//   lantern.wait(id, text, timeout_ms)
//       runs the message loop until the window's text is `text` (true) or
//       the time is out (false); shows how long it has waited on a terminal
//   lantern.pump(ms)       runs the message loop for that long
// The message loop runs only inside wait and pump, so browser events reach
// the module only there, as they do in a host whose loop the script drives.
#include <gdk/gdkx.h>
#include <gtk/gtk.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <lua.hpp>
#include <string>

#include "lantern/lua/lua_extensions.h"
#include "lantern/lua/window_options.h"
#include "lantern/gtk/xvfb_session.h"

namespace qrl {
namespace {

using Clock = std::chrono::steady_clock;

// How often a wait wakes up to look at the text and show its progress.
constexpr guint WakeIntervalMs = 50;

void RequireGtk(lua_State* L) {
  if (gdk_display_get_default()) return;
  gdk_set_allowed_backends("x11");
  if (!gtk_init_check(nullptr, nullptr))
    luaL_error(L, "lantern: no display for windows (DISPLAY is not usable)");
}

GtkWindow* FindWindow(lua_Integer id) {
  GList* toplevels = gtk_window_list_toplevels();
  GtkWindow* found = nullptr;
  for (GList* item = toplevels; item && !found; item = item->next) {
    GdkWindow* gdkWindow = gtk_widget_get_window(GTK_WIDGET(item->data));
    // Offscreen windows (a browser placed nowhere) have no X11 id.
    if (gdkWindow && GDK_IS_X11_WINDOW(gdkWindow) &&
        gdk_window_get_window_type(gdkWindow) != GDK_WINDOW_OFFSCREEN &&
        static_cast<lua_Integer>(gdk_x11_window_get_xid(gdkWindow)) == id)
      found = GTK_WINDOW(item->data);
  }
  g_list_free(toplevels);
  return found;
}

int MakeWindow(lua_State* L) {
  const auto [width, height, title] = ReadWindowOptions(L);
  RequireGtk(L);

  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_default_size(GTK_WINDOW(window), width, height);
  gtk_window_set_title(GTK_WINDOW(window), title.c_str());
  // A window that the user closes only hides, so that its id stays good for
  // the rest of the script.
  g_signal_connect(window, "delete-event", G_CALLBACK(gtk_widget_hide_on_delete), nullptr);
  gtk_widget_show_all(window);
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  lua_pushinteger(L, static_cast<lua_Integer>(gdk_x11_window_get_xid(gtk_widget_get_window(window))));
  return 1;
}

std::string TitleOf(GtkWindow* window) {
  const gchar* title = gtk_window_get_title(window);
  return title ? title : "";
}

int WindowText(lua_State* L) {
  const lua_Integer id = luaL_checkinteger(L, 1);
  GtkWindow* window = gdk_display_get_default() ? FindWindow(id) : nullptr;
  if (!window) {
    lua_pushnil(L);
    return 1;
  }
  const std::string title = TitleOf(window);
  lua_pushlstring(L, title.data(), title.size());
  return 1;
}

gboolean Wake(gpointer) { return G_SOURCE_CONTINUE; }

// Runs the loop until `done` says so or the time is out; `progress` is
// called at every wake.
template <class Done, class Progress>
bool RunLoop(Clock::duration limit, Done done, Progress progress) {
  const Clock::time_point end = Clock::now() + limit;
  const guint wake = g_timeout_add(WakeIntervalMs, Wake, nullptr);
  bool reached = done();
  while (!reached && Clock::now() < end) {
    g_main_context_iteration(nullptr, TRUE);
    reached = done();
    progress();
  }
  g_source_remove(wake);
  return reached;
}

class TerminalProgress {
 public:
  TerminalProgress(lua_Integer id, std::string wanted)
      : id_(id), wanted_(std::move(wanted)), shown_(isatty(STDERR_FILENO)) {}
  ~TerminalProgress() {
    if (shown_ && drawn_) std::fputs("\r\033[K", stderr);
  }
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;

  void Show(const std::string& current) {
    if (!shown_) return;
    const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    std::fputs(WaitProgressLine(id_, wanted_, seconds, current).c_str(), stderr);
    std::fflush(stderr);
    drawn_ = true;
  }

 private:
  lua_Integer id_;
  std::string wanted_;
  bool shown_;
  bool drawn_ = false;
  Clock::time_point start_ = Clock::now();
};

int WaitForText(lua_State* L) {
  const lua_Integer id = luaL_checkinteger(L, 1);
  const std::string wanted = luaL_checkstring(L, 2);
  const lua_Integer timeoutMs = luaL_checkinteger(L, 3);
  RequireGtk(L);
  auto currentText = [id] {
    GtkWindow* window = FindWindow(id);
    return window ? TitleOf(window) : std::string();
  };
  bool reached = false;
  {
    TerminalProgress progress(id, wanted);
    reached = RunLoop(
        std::chrono::milliseconds(timeoutMs), [&] { return currentText() == wanted; },
        [&] { progress.Show(currentText()); });
  }
  RaisePendingErrors(L);
  lua_pushboolean(L, reached);
  return 1;
}

int Pump(lua_State* L) {
  const lua_Integer ms = luaL_optinteger(L, 1, 0);
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  RunLoop(std::chrono::milliseconds(ms), [] { return false; }, [] {});
  RaisePendingErrors(L);
  return 0;
}

void Install(lua_State* L) {
  static const luaL_Reg functions[] = {{"window", MakeWindow},
                                       {"text", WindowText},
                                       {"wait", WaitForText},
                                       {"pump", Pump},
                                       {nullptr, nullptr}};
  luaL_setfuncs(L, functions, 0);
}

const LanternExtensionRegistration windows{{"windows", StartDisplayWhenNeeded, Install, nullptr}};

}  // namespace
}  // namespace qrl
