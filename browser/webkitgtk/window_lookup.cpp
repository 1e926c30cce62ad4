#include "browser/webkitgtk/window_lookup.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <gdk/gdkx.h>

#include <string>

namespace qrl {
namespace {

Display* X11Display() {
  GdkDisplay* display = gdk_display_get_default();
  if (!display || !GDK_IS_X11_DISPLAY(display)) return nullptr;
  return GDK_DISPLAY_XDISPLAY(display);
}

// A window id from a script may name nothing; the X error that this gives is
// trapped instead of ending the process.
class TrappedXErrors {
 public:
  TrappedXErrors() { gdk_x11_display_error_trap_push(gdk_display_get_default()); }
  ~TrappedXErrors() { gdk_x11_display_error_trap_pop_ignored(gdk_display_get_default()); }
  TrappedXErrors(const TrappedXErrors&) = delete;
  TrappedXErrors& operator=(const TrappedXErrors&) = delete;
};

// Offscreen windows (a browser placed nowhere) have no X11 id.
bool IsX11Native(GdkWindow* window) {
  return window && GDK_IS_X11_WINDOW(window) &&
         gdk_window_get_window_type(window) != GDK_WINDOW_OFFSCREEN;
}

}  // namespace

GtkWindow* FindOwnWindow(WindowHandle window) {
  if (window == 0) return nullptr;
  GList* toplevels = gtk_window_list_toplevels();
  GtkWindow* found = nullptr;
  for (GList* item = toplevels; item && !found; item = item->next) {
    GtkWidget* widget = GTK_WIDGET(item->data);
    GdkWindow* gdkWindow = gtk_widget_get_window(widget);
    if (IsX11Native(gdkWindow) && gdk_x11_window_get_xid(gdkWindow) == window)
      found = GTK_WINDOW(widget);
  }
  g_list_free(toplevels);
  return found;
}

bool IsForeignWindow(WindowHandle window) {
  Display* display = X11Display();
  if (!display || window == 0) return false;
  const TrappedXErrors trap;
  XWindowAttributes attributes;
  return XGetWindowAttributes(display, window, &attributes) != 0;
}

void SetForeignWindowTitle(WindowHandle window, std::string_view text) {
  Display* display = X11Display();
  if (!display || window == 0) return;
  const TrappedXErrors trap;
  const std::string title(text);
  XStoreName(display, window, title.c_str());
  XChangeProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False),
                  XInternAtom(display, "UTF8_STRING", False), 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(title.data()),
                  static_cast<int>(title.size()));
  XSync(display, False);
}

ClientRect ForeignClientRect(WindowHandle window) {
  Display* display = X11Display();
  if (!display || window == 0) return {};
  const TrappedXErrors trap;
  XWindowAttributes attributes;
  if (!XGetWindowAttributes(display, window, &attributes)) return {};
  return {0, 0, attributes.width, attributes.height};
}

}  // namespace qrl
