// The platform on Linux with GTK: window texts are window titles, one step
// of the message loop is one iteration of GLib's default context, and a
// message box is a modal GTK dialog.
#include <gtk/gtk.h>

#include <string>

#include "browser/browser_platform.h"
#include "browser/linux/data_folder.h"
#include "browser/message_box_line.h"
#include "browser/webkitgtk/gtk_session.h"
#include "browser/webkitgtk/window_lookup.h"

namespace qrl {
namespace {

void RunDialog(std::string_view text, std::string_view title) {
  const std::string message(text);
  GtkWidget* dialog = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_OTHER,
                                             GTK_BUTTONS_OK, "%s", message.c_str());
  gtk_window_set_title(GTK_WINDOW(dialog), std::string(title).c_str());
  gtk_dialog_run(GTK_DIALOG(dialog));
  gtk_widget_destroy(dialog);
}

class GtkPlatform : public BrowserPlatform {
 public:
  void SetWindowText(WindowHandle window, std::string_view text) override {
    if (!EnsureGtk()) return;
    if (GtkWindow* own = FindOwnWindow(window)) {
      gtk_window_set_title(own, std::string(text).c_str());
    } else {
      SetForeignWindowTitle(window, text);
    }
  }

  ClientRect GetClientRect(WindowHandle window) override {
    if (!EnsureGtk()) return {};
    if (GtkWindow* own = FindOwnWindow(window)) {
      // A window that has not been laid out yet knows only the size it asked for.
      GtkAllocation area;
      gtk_widget_get_allocation(GTK_WIDGET(own), &area);
      if (area.width > 1 && area.height > 1) return {0, 0, area.width, area.height};
      int width = 0;
      int height = 0;
      gtk_window_get_size(own, &width, &height);
      return {0, 0, width, height};
    }
    return ForeignClientRect(window);
  }

  void PumpOneMessage() override {
    g_main_context_iteration(nullptr, FALSE);
  }

  void ShowMessageBox(std::string_view text, std::string_view title, TextWidth) override {
    WriteMessageBoxLine(text, title);
    if (MessageBoxDialogsAllowed() && EnsureGtk()) RunDialog(text, title);
  }

  std::optional<std::u16string> LocalAppDataFolder() override { return UserDataHome(); }
  char16_t FolderSeparator() const override { return u'/'; }
  void CreateFolder(std::u16string_view path) override { MakeFolder(path); }
};

}  // namespace

BrowserPlatform& BuiltInPlatform() {
  static GtkPlatform platform;
  return platform;
}

}  // namespace qrl
