#include "tests/windows/webview2/fake_control.h"

#include <deque>
#include <memory>
#include <set>
#include <utility>

#include "browser/webview2/com_object.h"
#include "browser/windows/wide_text.h"
#include "commands/unicode_text.h"
#include "tests/windows/webview2/test_loader.h"

namespace qrl::testing {

using namespace qrl::webview2;

namespace {

constexpr UINT RunWorkMessage = WM_APP + 1;

void Log(std::string line) { FakeControl::Get().calls.push_back(std::move(line)); }

// An argument as the log shows it.
std::string Text(const wchar_t* text) { return text ? Utf16ToUtf8(FromWide(text)) : "null"; }
std::string Text(BOOL flag) { return flag ? "1" : "0"; }
std::string Text(RECT r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) +
         "," + std::to_string(r.bottom);
}

// A method of the control that the component never calls.
#define QRL_NOT_CALLED(method, ...) \
  HRESULT STDMETHODCALLTYPE method(__VA_ARGS__) override { return E_NOTIMPL; }

// A method whose every call is logged with its argument, as
// "put_IsScriptEnabled(1)".
#define QRL_LOGGED(method, Type)                          \
  HRESULT STDMETHODCALLTYPE method(Type value) override { \
    Log(#method "(" + Text(value) + ")");                 \
    return S_OK;                                          \
  }

// A property that the component only sets, each time logged.
#define QRL_SET_ONLY(property, Type)     \
  QRL_NOT_CALLED(get_##property, Type*) \
  QRL_LOGGED(put_##property, Type)

// A property that the component neither reads nor sets.
#define QRL_NOT_TOUCHED(property, Type) \
  QRL_NOT_CALLED(get_##property, Type*) \
  QRL_NOT_CALLED(put_##property, Type)

// An event that the component never subscribes to.
#define QRL_NOT_SUBSCRIBED(event, Handler)                       \
  QRL_NOT_CALLED(add_##event, Handler*, EventRegistrationToken*) \
  QRL_NOT_CALLED(remove_##event, EventRegistrationToken)

// An event that the component subscribes to, and never unsubscribes from:
// the view keeps its handlers until it goes.
#define QRL_EVENT(event, Handler, list)                                                  \
  HRESULT STDMETHODCALLTYPE add_##event(Handler* handler, EventRegistrationToken* token) \
      override {                                                                         \
    return Keep("add_" #event, list, handler, token);                                    \
  }                                                                                      \
  QRL_NOT_CALLED(remove_##event, EventRegistrationToken)

// Every object of the control is counted while it lives, and starts with the
// one reference that its maker holds.
template <typename Interface, const IID& InterfaceId>
class FakeObject : public ComObject<Interface, InterfaceId> {
 public:
  FakeObject() {
    this->AddRef();
    ++FakeControl::Get().liveObjects;
  }
  ~FakeObject() override { --FakeControl::Get().liveObjects; }
};

class FakeSettings final : public FakeObject<ICoreWebView2Settings, IID_ICoreWebView2Settings> {
 public:
  QRL_SET_ONLY(IsScriptEnabled, BOOL)
  QRL_SET_ONLY(IsWebMessageEnabled, BOOL)
  QRL_SET_ONLY(AreDefaultScriptDialogsEnabled, BOOL)
  QRL_NOT_TOUCHED(IsStatusBarEnabled, BOOL)
  QRL_NOT_TOUCHED(AreDevToolsEnabled, BOOL)
  QRL_SET_ONLY(AreDefaultContextMenusEnabled, BOOL)
};

class FakeMessageArgs final
    : public FakeObject<ICoreWebView2WebMessageReceivedEventArgs,
                        IID_ICoreWebView2WebMessageReceivedEventArgs> {
 public:
  explicit FakeMessageArgs(std::optional<std::wstring> text) : text_(std::move(text)) {}
  QRL_NOT_CALLED(get_Source, LPWSTR*)
  QRL_NOT_CALLED(get_WebMessageAsJson, LPWSTR*)
  HRESULT STDMETHODCALLTYPE TryGetWebMessageAsString(LPWSTR* text) override {
    Log("TryGetWebMessageAsString");
    *text = text_ ? FakeControl::Get().HandOut(*text_) : nullptr;
    return text_ ? S_OK : E_INVALIDARG;
  }

 private:
  std::optional<std::wstring> text_;
};

}  // namespace

class FakeView final : public FakeObject<ICoreWebView2, IID_ICoreWebView2> {
 public:
  FakeView() { FakeControl::Get().view = this; }
  ~FakeView() override {
    FakeControl& control = FakeControl::Get();
    if (control.view == this) control.view = nullptr;
    for (IUnknown* handler : starting) control.LetGo(handler);
    for (IUnknown* handler : completed) control.LetGo(handler);
    for (IUnknown* handler : history) control.LetGo(handler);
    for (IUnknown* handler : messages) control.LetGo(handler);
    for (IUnknown* handler : scripts) control.LetGo(handler);
  }

  std::vector<ICoreWebView2NavigationStartingEventHandler*> starting;
  std::vector<ICoreWebView2NavigationCompletedEventHandler*> completed;
  std::vector<ICoreWebView2HistoryChangedEventHandler*> history;
  std::vector<ICoreWebView2WebMessageReceivedEventHandler*> messages;
  std::deque<ICoreWebView2ExecuteScriptCompletedHandler*> scripts;

  HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings** settings) override {
    Log("get_Settings");
    *settings = FakeControl::Get().settingsFail ? nullptr : new FakeSettings;
    return *settings ? S_OK : E_FAIL;
  }
  HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) override {
    Log("get_Source");
    *uri = FakeControl::Get().HandOut(FakeControl::Get().source);
    return S_OK;
  }
  QRL_LOGGED(Navigate, LPCWSTR)
  QRL_LOGGED(NavigateToString, LPCWSTR)
  QRL_EVENT(NavigationStarting, ICoreWebView2NavigationStartingEventHandler, starting)
  QRL_NOT_SUBSCRIBED(ContentLoading, IUnknown)
  QRL_NOT_SUBSCRIBED(SourceChanged, IUnknown)
  QRL_EVENT(HistoryChanged, ICoreWebView2HistoryChangedEventHandler, history)
  QRL_EVENT(NavigationCompleted, ICoreWebView2NavigationCompletedEventHandler, completed)
  QRL_NOT_SUBSCRIBED(FrameNavigationStarting, ICoreWebView2NavigationStartingEventHandler)
  QRL_NOT_SUBSCRIBED(FrameNavigationCompleted, ICoreWebView2NavigationCompletedEventHandler)
  QRL_NOT_SUBSCRIBED(ScriptDialogOpening, IUnknown)
  QRL_NOT_SUBSCRIBED(PermissionRequested, IUnknown)
  QRL_NOT_SUBSCRIBED(ProcessFailed, IUnknown)
  HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(LPCWSTR script,
                                                                IUnknown* handler) override {
    Log("AddScriptToExecuteOnDocumentCreated(" + Text(script) + ", " +
        (handler ? "handler" : "null") + ")");
    return S_OK;
  }
  QRL_NOT_CALLED(RemoveScriptToExecuteOnDocumentCreated, LPCWSTR)
  HRESULT STDMETHODCALLTYPE ExecuteScript(
      LPCWSTR script, ICoreWebView2ExecuteScriptCompletedHandler* handler) override {
    Log("ExecuteScript(" + Text(script) + ")");
    handler->AddRef();
    scripts.push_back(handler);
    return S_OK;
  }
  QRL_NOT_CALLED(CapturePreview, COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT, IStream*, IUnknown*)
  HRESULT STDMETHODCALLTYPE Reload() override { return Note("Reload"); }
  QRL_NOT_CALLED(PostWebMessageAsJson, LPCWSTR)
  QRL_LOGGED(PostWebMessageAsString, LPCWSTR)
  QRL_EVENT(WebMessageReceived, ICoreWebView2WebMessageReceivedEventHandler, messages)
  QRL_NOT_CALLED(CallDevToolsProtocolMethod, LPCWSTR, LPCWSTR, IUnknown*)
  QRL_NOT_CALLED(get_BrowserProcessId, UINT32*)
  HRESULT STDMETHODCALLTYPE get_CanGoBack(BOOL* flag) override {
    *flag = FakeControl::Get().canGoBack;
    return Note("get_CanGoBack");
  }
  HRESULT STDMETHODCALLTYPE get_CanGoForward(BOOL* flag) override {
    *flag = FakeControl::Get().canGoForward;
    return Note("get_CanGoForward");
  }
  HRESULT STDMETHODCALLTYPE GoBack() override { return Note("GoBack"); }
  HRESULT STDMETHODCALLTYPE GoForward() override { return Note("GoForward"); }
  QRL_NOT_CALLED(GetDevToolsProtocolEventReceiver, LPCWSTR, IUnknown**)
  HRESULT STDMETHODCALLTYPE Stop() override { return Note("Stop"); }
  QRL_NOT_SUBSCRIBED(NewWindowRequested, IUnknown)
  QRL_NOT_SUBSCRIBED(DocumentTitleChanged, IUnknown)
  QRL_NOT_CALLED(get_DocumentTitle, LPWSTR*)
  QRL_NOT_CALLED(AddHostObjectToScript, LPCWSTR, VARIANT*)
  QRL_NOT_CALLED(RemoveHostObjectFromScript, LPCWSTR)
  HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() override { return Note("OpenDevToolsWindow"); }

 private:
  static HRESULT Note(const char* call) {
    Log(call);
    return S_OK;
  }
  template <typename Handler>
  static HRESULT Keep(const char* call, std::vector<Handler*>& handlers, Handler* handler,
                      EventRegistrationToken* token) {
    Log(call);
    handler->AddRef();
    handlers.push_back(handler);
    token->value = static_cast<std::int64_t>(handlers.size());
    return S_OK;
  }
};

namespace {

class FakeController final
    : public FakeObject<ICoreWebView2Controller, IID_ICoreWebView2Controller> {
 public:
  FakeController() : view_(new FakeView) {}
  ~FakeController() override { view_->Release(); }

  QRL_NOT_TOUCHED(IsVisible, BOOL)
  QRL_SET_ONLY(Bounds, RECT)
  QRL_NOT_TOUCHED(ZoomFactor, double)
  QRL_NOT_SUBSCRIBED(ZoomFactorChanged, IUnknown)
  QRL_NOT_CALLED(SetBoundsAndZoomFactor, RECT, double)
  QRL_NOT_CALLED(MoveFocus, COREWEBVIEW2_MOVE_FOCUS_REASON)
  QRL_NOT_SUBSCRIBED(MoveFocusRequested, IUnknown)
  QRL_NOT_SUBSCRIBED(GotFocus, IUnknown)
  QRL_NOT_SUBSCRIBED(LostFocus, IUnknown)
  QRL_NOT_SUBSCRIBED(AcceleratorKeyPressed, IUnknown)
  QRL_NOT_TOUCHED(ParentWindow, HWND)
  QRL_NOT_CALLED(NotifyParentWindowPositionChanged)
  QRL_NOT_CALLED(Close)
  HRESULT STDMETHODCALLTYPE get_CoreWebView2(ICoreWebView2** view) override {
    Log("get_CoreWebView2");
    view_->AddRef();
    *view = view_;
    return S_OK;
  }

 private:
  FakeView* view_;
};

// Answers a creation step later: with a new object, or with an error and
// none when the test makes this step fail.
template <typename Object, typename Handler>
void AnswerLater(Handler* handler, FakeControl::Failing step) {
  handler->AddRef();
  FakeControl::Get().Post([handler, step] {
    Object* object = FakeControl::Get().failing == step ? nullptr : new Object;
    handler->Invoke(object ? S_OK : E_FAIL, object);
    if (object) object->Release();
    FakeControl::Get().LetGo(handler);
  });
}

class FakeEnvironment final
    : public FakeObject<ICoreWebView2Environment, IID_ICoreWebView2Environment> {
 public:
  ~FakeEnvironment() override { Log("environment gone"); }

  HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
      HWND parent, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) override {
    Log("CreateCoreWebView2Controller(" +
        std::to_string(reinterpret_cast<std::uintptr_t>(parent)) + ")");
    AnswerLater<FakeController>(handler, FakeControl::Failing::Controller);
    return S_OK;
  }
  QRL_NOT_CALLED(CreateWebResourceResponse, IStream*, int, LPCWSTR, LPCWSTR, IUnknown**)
  QRL_NOT_CALLED(get_BrowserVersionString, LPWSTR*)
  QRL_NOT_SUBSCRIBED(NewBrowserVersionAvailable, IUnknown)
};

HRESULT STDAPICALLTYPE CreateEnvironment(
    LPCWSTR browserFolder, LPCWSTR userDataFolder, IUnknown* options,
    ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
  Log("CreateCoreWebView2EnvironmentWithOptions(" + Text(browserFolder) + ", " +
      Text(userDataFolder) + ", " + (options ? "options" : "null") + ")");
  AnswerLater<FakeEnvironment>(handler, FakeControl::Failing::Environment);
  return S_OK;
}

// Watches CoTaskMemFree for the strings that the control handed out. It
// holds a reference of its own, so that COM never deletes it.
class StringWatch final : public ComObject<IMallocSpy, IID_IMallocSpy> {
 public:
  std::set<void*> handedOut;

  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
  void* STDMETHODCALLTYPE PostAlloc(void* actual) override { return actual; }
  void* STDMETHODCALLTYPE PreFree(void* request, BOOL) override {
    handedOut.erase(request);
    return request;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* request, SIZE_T size, void** newRequest,
                                      BOOL) override {
    *newRequest = request;
    return size;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* actual, BOOL) override { return actual; }
  void* STDMETHODCALLTYPE PreGetSize(void* request, BOOL) override { return request; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* request, BOOL) override { return request; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int actual) override { return actual; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}
};

// Null when the system does not take a spy.
StringWatch* Strings = nullptr;

// A message-only window whose messages each run the work that they carry: a
// system class with our procedure put in, so there is no class to register.
HWND QueueWindow = nullptr;

LRESULT CALLBACK QueueWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != RunWorkMessage) return DefWindowProcW(window, message, wParam, lParam);
  const std::unique_ptr<std::function<void()>> work(
      reinterpret_cast<std::function<void()>*>(lParam));
  (*work)();
  return 0;
}

// Raises an event of the newest view on each of its handlers, later.
template <typename Handler, typename Args = IUnknown>
void RaiseOn(std::vector<Handler*> FakeView::*handlers, Args* args = nullptr) {
  FakeControl::Get().Post([handlers, args] {
    if (FakeView* view = FakeControl::Get().view)
      for (Handler* handler : view->*handlers) handler->Invoke(view, args);
    if (args) args->Release();
  });
}

}  // namespace

FakeControl& FakeControl::Get() {
  static FakeControl control;
  return control;
}

FakeControl& FakeControl::Start() {
  FakeControl& control = Get();
  control = FakeControl{};
  if (!QueueWindow) {
    QueueWindow = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  nullptr, nullptr);
    SetWindowLongPtrW(QueueWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&QueueWindowProc));
  }
  if (!Strings) {
    auto* spy = new StringWatch;
    spy->AddRef();
    if (SUCCEEDED(CoRegisterMallocSpy(spy))) Strings = spy;
  }
  QrlRouteEnvironmentRequests(CreateEnvironment);
  return control;
}

void FakeControl::Post(std::function<void()> work) {
  PostMessageW(QueueWindow, RunWorkMessage, 0,
               reinterpret_cast<LPARAM>(new std::function<void()>(std::move(work))));
}

void FakeControl::RunPending() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void FakeControl::LetGo(IUnknown* handler) {
  if (handler->Release() != 0) ++handlersHeldElsewhere;
}

LPWSTR FakeControl::HandOut(const std::wstring& text) {
  auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  std::copy(text.c_str(), text.c_str() + text.size() + 1, copy);
  if (Strings) Strings->handedOut.insert(copy);
  return copy;
}

int FakeControl::stringsNotFreed() const {
  return Strings ? static_cast<int>(Strings->handedOut.size()) : -1;
}

void FakeControl::RaiseNavigationStarting() { RaiseOn(&FakeView::starting); }
void FakeControl::RaiseNavigationCompleted() { RaiseOn(&FakeView::completed); }
void FakeControl::RaiseHistoryChanged() { RaiseOn(&FakeView::history); }

void FakeControl::RaiseWebMessage(std::optional<std::wstring> text) {
  RaiseOn(&FakeView::messages, new FakeMessageArgs(std::move(text)));
}

void FakeControl::AnswerScript(HRESULT errorCode, const std::wstring& json) {
  Post([errorCode, json] {
    FakeView* view = FakeControl::Get().view;
    if (!view || view->scripts.empty()) return;
    ICoreWebView2ExecuteScriptCompletedHandler* handler = view->scripts.front();
    view->scripts.pop_front();
    handler->Invoke(errorCode, errorCode < 0 ? nullptr : json.c_str());
    FakeControl::Get().LetGo(handler);
  });
}

}  // namespace qrl::testing
