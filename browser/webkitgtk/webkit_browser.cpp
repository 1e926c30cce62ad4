// The WebKitGTK component: the loader, the environment (one web context per
// user data folder) and the controller, which places a view in the window
// that the script named.
//
// Completions never run inside the call that asks for them: each is queued
// on GLib's default context and runs when the host's loop turns.
#include <gtk/gtkx.h>
#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "browser/browser_component.h"
#include "browser/webkitgtk/gtk_session.h"
#include "browser/webkitgtk/webkit_view.h"
#include "browser/webkitgtk/window_lookup.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

void RunLater(std::function<void()> work) {
  g_idle_add_full(
      G_PRIORITY_DEFAULT,
      [](gpointer data) -> gboolean {
        const std::unique_ptr<std::function<void()>> task(static_cast<std::function<void()>*>(data));
        (*task)();
        return G_SOURCE_REMOVE;
      },
      new std::function<void()>(std::move(work)), nullptr);
}

// Where a view goes: into a GTK window of this process as its content; into
// a window of another program through an embedding plug; or, when the id
// names no window at all, into an invisible window, where the browser works
// all the same.
class ViewPlacement {
 public:
  ViewPlacement(WindowHandle parent, GtkWidget* content) : content_(content) {
    g_object_ref_sink(content_);
    if (GtkWindow* own = FindOwnWindow(parent)) {
      if (GtkWidget* earlier = gtk_bin_get_child(GTK_BIN(own)))
        gtk_container_remove(GTK_CONTAINER(own), earlier);
      gtk_container_add(GTK_CONTAINER(own), content_);
      gtk_widget_show_all(content_);
      return;
    }
    holder_ = IsForeignWindow(parent) ? gtk_plug_new(parent) : gtk_offscreen_window_new();
    gtk_container_add(GTK_CONTAINER(holder_), content_);
    gtk_widget_show_all(holder_);
  }

  ~ViewPlacement() {
    if (holder_) {
      gtk_widget_destroy(holder_);
    } else if (GtkWidget* parent = gtk_widget_get_parent(content_)) {
      gtk_container_remove(GTK_CONTAINER(parent), content_);
    }
    g_object_unref(content_);
  }

  ViewPlacement(const ViewPlacement&) = delete;
  ViewPlacement& operator=(const ViewPlacement&) = delete;

 private:
  GtkWidget* content_;
  GtkWidget* holder_ = nullptr;
};

// The view sits in a fixed layout: it keeps the bounds it was given when
// the window changes its size later.
class WebKitController final : public WebController {
 public:
  WebKitController(WebKitWebContext* context, WindowHandle parent)
      : view_(std::make_shared<WebKitView>(context)),
        layout_(gtk_fixed_new()),
        placement_(parent, layout_) {
    gtk_fixed_put(GTK_FIXED(layout_), view_->widget(), 0, 0);
    gtk_widget_show(view_->widget());
  }

  std::shared_ptr<WebView> GetView() override { return view_; }

  ResultCode SetBounds(const ClientRect& bounds) override {
    gtk_fixed_move(GTK_FIXED(layout_), view_->widget(), bounds.left, bounds.top);
    gtk_widget_set_size_request(view_->widget(), bounds.right - bounds.left,
                                bounds.bottom - bounds.top);
    return ResultOk;
  }

 private:
  std::shared_ptr<WebKitView> view_;
  GtkWidget* layout_;
  ViewPlacement placement_;
};

class WebKitEnvironment final : public WebEnvironment {
 public:
  explicit WebKitEnvironment(const std::string& dataFolder) {
    const std::string cacheFolder = dataFolder + "/cache";
    WebKitWebsiteDataManager* data = webkit_website_data_manager_new(
        "base-data-directory", dataFolder.c_str(), "base-cache-directory", cacheFolder.c_str(),
        nullptr);
    context_ = webkit_web_context_new_with_website_data_manager(data);
    g_object_unref(data);
  }
  ~WebKitEnvironment() override { g_object_unref(context_); }
  WebKitEnvironment(const WebKitEnvironment&) = delete;
  WebKitEnvironment& operator=(const WebKitEnvironment&) = delete;

  ResultCode CreateController(WindowHandle parent, ControllerCompletion completion) override {
    WebKitWebContext* context = WEBKIT_WEB_CONTEXT(g_object_ref(context_));
    RunLater([context, parent, completion = std::move(completion)] {
      auto controller = std::make_shared<WebKitController>(context, parent);
      g_object_unref(context);
      completion(ResultOk, std::move(controller));
    });
    return ResultOk;
  }

 private:
  WebKitWebContext* context_ = nullptr;
};

// The browser's folder names a browser to start; this component always
// uses the system's WebKit, so the folder plays no part.
class WebKitBrowser final : public BrowserComponent {
 public:
  ResultCode CreateEnvironment(std::u16string_view, std::u16string_view userDataFolder,
                               EnvironmentCompletion completion) override {
    if (!EnsureGtk()) return ResultFailed;
    auto environment = std::make_shared<WebKitEnvironment>(Utf16ToUtf8(userDataFolder));
    RunLater([environment = std::move(environment), completion = std::move(completion)] {
      completion(ResultOk, environment);
    });
    return ResultOk;
  }
};

}  // namespace

BrowserComponent& BuiltInBrowserComponent() {
  static WebKitBrowser component;
  return component;
}

}  // namespace qrl
