#include "tests/windows/webview2/fake_control.h"

#include <set>
#include <utility>

#include "browser/webview2/com_object.h"
#include "browser/windows/wide_text.h"
#include "commands/unicode_text.h"
#include "tests/windows/webview2/test_loader.h"

namespace qrl::testing {

using namespace qrl::webview2;

// A method of the control that the component never calls.
#define QRL_NOT_CALLED(method, ...) \
  HRESULT STDMETHODCALLTYPE method(__VA_ARGS__) override { return E_NOTIMPL; }

namespace {

constexpr UINT RunWorkMessage = WM_APP + 1;

std::string Narrow(const wchar_t* text) {
  return text ? Utf16ToUtf8(FromWide(text)) : "null";
}

std::string Bool(BOOL flag) { return flag ? "1" : "0"; }

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

void Log(std::string line) { FakeControl::Get().calls.push_back(std::move(line)); }

// A setting whose every change is logged, as "put_IsScriptEnabled(1)".
#define QRL_LOGGED_SETTING(method)                    \
  HRESULT STDMETHODCALLTYPE method(BOOL on) override { \
    Log(#method "(" + Bool(on) + ")");                 \
    return S_OK;                                       \
  }

class FakeSettings final : public FakeObject<ICoreWebView2Settings, IID_ICoreWebView2Settings> {
 public:
  QRL_NOT_CALLED(get_IsScriptEnabled, BOOL*)
  QRL_LOGGED_SETTING(put_IsScriptEnabled)
  QRL_NOT_CALLED(get_IsWebMessageEnabled, BOOL*)
  QRL_LOGGED_SETTING(put_IsWebMessageEnabled)
  QRL_NOT_CALLED(get_AreDefaultScriptDialogsEnabled, BOOL*)
  QRL_LOGGED_SETTING(put_AreDefaultScriptDialogsEnabled)
  QRL_NOT_CALLED(get_IsStatusBarEnabled, BOOL*)
  QRL_NOT_CALLED(put_IsStatusBarEnabled, BOOL)
  QRL_NOT_CALLED(get_AreDevToolsEnabled, BOOL*)
  QRL_NOT_CALLED(put_AreDevToolsEnabled, BOOL)
  QRL_NOT_CALLED(get_AreDefaultContextMenusEnabled, BOOL*)
  QRL_LOGGED_SETTING(put_AreDefaultContextMenusEnabled)
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
    if (!text_) {
      *text = nullptr;
      return E_INVALIDARG;
    }
    *text = FakeControl::Get().HandOut(*text_);
    return S_OK;
  }

 private:
  std::optional<std::wstring> text_;
};

}  // namespace

class FakeView final : public FakeObject<ICoreWebView2, IID_ICoreWebView2> {
 public:
  FakeView() { FakeControl::Get().NoteView(this); }
  ~FakeView() override {
    Log("view gone");
    FakeControl& control = FakeControl::Get();
    if (control.view() == this) control.NoteView(nullptr);
    for (auto* list : {&starting, &completed, &history, &messages})
      for (IUnknown* handler : *list) control.LetGo(handler);
    for (auto& waiting : scripts) control.LetGo(waiting);
  }

  std::vector<IUnknown*> starting, completed, history, messages;
  std::deque<ICoreWebView2ExecuteScriptCompletedHandler*> scripts;

  HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings** settings) override {
    Log("get_Settings");
    if (FakeControl::Get().settingsFail) {
      *settings = nullptr;
      return E_FAIL;
    }
    *settings = new FakeSettings;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) override {
    Log("get_Source");
    *uri = FakeControl::Get().HandOut(FakeControl::Get().source);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR uri) override {
    Log("Navigate(" + Narrow(uri) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR html) override {
    Log("NavigateToString(" + Narrow(html) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE add_NavigationStarting(
      ICoreWebView2NavigationStartingEventHandler* handler,
      EventRegistrationToken* token) override {
    return Keep("add_NavigationStarting", starting, handler, token);
  }
  QRL_NOT_CALLED(remove_NavigationStarting, EventRegistrationToken)
  QRL_NOT_CALLED(add_ContentLoading, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_ContentLoading, EventRegistrationToken)
  QRL_NOT_CALLED(add_SourceChanged, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_SourceChanged, EventRegistrationToken)
  HRESULT STDMETHODCALLTYPE add_HistoryChanged(ICoreWebView2HistoryChangedEventHandler* handler,
                                               EventRegistrationToken* token) override {
    return Keep("add_HistoryChanged", history, handler, token);
  }
  QRL_NOT_CALLED(remove_HistoryChanged, EventRegistrationToken)
  HRESULT STDMETHODCALLTYPE add_NavigationCompleted(
      ICoreWebView2NavigationCompletedEventHandler* handler,
      EventRegistrationToken* token) override {
    return Keep("add_NavigationCompleted", completed, handler, token);
  }
  QRL_NOT_CALLED(remove_NavigationCompleted, EventRegistrationToken)
  QRL_NOT_CALLED(add_FrameNavigationStarting, ICoreWebView2NavigationStartingEventHandler*,
                 EventRegistrationToken*)
  QRL_NOT_CALLED(remove_FrameNavigationStarting, EventRegistrationToken)
  QRL_NOT_CALLED(add_FrameNavigationCompleted, ICoreWebView2NavigationCompletedEventHandler*,
                 EventRegistrationToken*)
  QRL_NOT_CALLED(remove_FrameNavigationCompleted, EventRegistrationToken)
  QRL_NOT_CALLED(add_ScriptDialogOpening, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_ScriptDialogOpening, EventRegistrationToken)
  QRL_NOT_CALLED(add_PermissionRequested, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_PermissionRequested, EventRegistrationToken)
  QRL_NOT_CALLED(add_ProcessFailed, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_ProcessFailed, EventRegistrationToken)
  HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(LPCWSTR script,
                                                                IUnknown* handler) override {
    Log("AddScriptToExecuteOnDocumentCreated(" + Narrow(script) + ", " +
        (handler ? "handler" : "null") + ")");
    return S_OK;
  }
  QRL_NOT_CALLED(RemoveScriptToExecuteOnDocumentCreated, LPCWSTR)
  HRESULT STDMETHODCALLTYPE ExecuteScript(
      LPCWSTR script, ICoreWebView2ExecuteScriptCompletedHandler* handler) override {
    Log("ExecuteScript(" + Narrow(script) + ")");
    if (!handler) return E_POINTER;
    handler->AddRef();
    scripts.push_back(handler);
    return S_OK;
  }
  QRL_NOT_CALLED(CapturePreview, COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT, IStream*, IUnknown*)
  HRESULT STDMETHODCALLTYPE Reload() override { return Note("Reload"); }
  QRL_NOT_CALLED(PostWebMessageAsJson, LPCWSTR)
  HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR text) override {
    Log("PostWebMessageAsString(" + Narrow(text) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE add_WebMessageReceived(
      ICoreWebView2WebMessageReceivedEventHandler* handler,
      EventRegistrationToken* token) override {
    return Keep("add_WebMessageReceived", messages, handler, token);
  }
  QRL_NOT_CALLED(remove_WebMessageReceived, EventRegistrationToken)
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
  QRL_NOT_CALLED(add_NewWindowRequested, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_NewWindowRequested, EventRegistrationToken)
  QRL_NOT_CALLED(add_DocumentTitleChanged, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_DocumentTitleChanged, EventRegistrationToken)
  QRL_NOT_CALLED(get_DocumentTitle, LPWSTR*)
  QRL_NOT_CALLED(AddHostObjectToScript, LPCWSTR, VARIANT*)
  QRL_NOT_CALLED(RemoveHostObjectFromScript, LPCWSTR)
  HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() override { return Note("OpenDevToolsWindow"); }

 private:
  static HRESULT Note(const char* call) {
    Log(call);
    return S_OK;
  }
  HRESULT Keep(const char* call, std::vector<IUnknown*>& list, IUnknown* handler,
               EventRegistrationToken* token) {
    Log(call);
    if (!handler || !token) return E_POINTER;
    handler->AddRef();
    list.push_back(handler);
    token->value = static_cast<std::int64_t>(list.size());
    return S_OK;
  }
};

namespace {

class FakeController final
    : public FakeObject<ICoreWebView2Controller, IID_ICoreWebView2Controller> {
 public:
  FakeController() : view_(new FakeView) {}
  ~FakeController() override {
    Log("controller gone");
    view_->Release();
  }

  QRL_NOT_CALLED(get_IsVisible, BOOL*)
  QRL_NOT_CALLED(put_IsVisible, BOOL)
  QRL_NOT_CALLED(get_Bounds, RECT*)
  HRESULT STDMETHODCALLTYPE put_Bounds(RECT bounds) override {
    Log("put_Bounds(" + std::to_string(bounds.left) + "," + std::to_string(bounds.top) + "," +
        std::to_string(bounds.right) + "," + std::to_string(bounds.bottom) + ")");
    return S_OK;
  }
  QRL_NOT_CALLED(get_ZoomFactor, double*)
  QRL_NOT_CALLED(put_ZoomFactor, double)
  QRL_NOT_CALLED(add_ZoomFactorChanged, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_ZoomFactorChanged, EventRegistrationToken)
  QRL_NOT_CALLED(SetBoundsAndZoomFactor, RECT, double)
  QRL_NOT_CALLED(MoveFocus, COREWEBVIEW2_MOVE_FOCUS_REASON)
  QRL_NOT_CALLED(add_MoveFocusRequested, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_MoveFocusRequested, EventRegistrationToken)
  QRL_NOT_CALLED(add_GotFocus, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_GotFocus, EventRegistrationToken)
  QRL_NOT_CALLED(add_LostFocus, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_LostFocus, EventRegistrationToken)
  QRL_NOT_CALLED(add_AcceleratorKeyPressed, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_AcceleratorKeyPressed, EventRegistrationToken)
  QRL_NOT_CALLED(get_ParentWindow, HWND*)
  QRL_NOT_CALLED(put_ParentWindow, HWND)
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

class FakeEnvironment final
    : public FakeObject<ICoreWebView2Environment, IID_ICoreWebView2Environment> {
 public:
  ~FakeEnvironment() override { Log("environment gone"); }

  HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
      HWND parent, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) override {
    Log("CreateCoreWebView2Controller(" +
        std::to_string(reinterpret_cast<std::uintptr_t>(parent)) + ")");
    handler->AddRef();
    FakeControl::Get().Post([handler] {
      if (FakeControl::Get().failing == FakeControl::Failing::Controller) {
        handler->Invoke(E_FAIL, nullptr);
        FakeControl::Get().LetGo(handler);
        return;
      }
      auto* controller = new FakeController;
      handler->Invoke(S_OK, controller);
      controller->Release();
      FakeControl::Get().LetGo(handler);
    });
    return S_OK;
  }
  QRL_NOT_CALLED(CreateWebResourceResponse, IStream*, int, LPCWSTR, LPCWSTR, IUnknown**)
  QRL_NOT_CALLED(get_BrowserVersionString, LPWSTR*)
  QRL_NOT_CALLED(add_NewBrowserVersionAvailable, IUnknown*, EventRegistrationToken*)
  QRL_NOT_CALLED(remove_NewBrowserVersionAvailable, EventRegistrationToken)
};

HRESULT STDAPICALLTYPE CreateEnvironment(
    LPCWSTR browserFolder, LPCWSTR userDataFolder, IUnknown* options,
    ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
  Log("CreateCoreWebView2EnvironmentWithOptions(" + Narrow(browserFolder) + ", " +
      Narrow(userDataFolder) + ", " + (options ? "options" : "null") + ")");
  handler->AddRef();
  FakeControl::Get().Post([handler] {
    if (FakeControl::Get().failing == FakeControl::Failing::Environment) {
      handler->Invoke(E_FAIL, nullptr);
      FakeControl::Get().LetGo(handler);
      return;
    }
    auto* environment = new FakeEnvironment;
    handler->Invoke(S_OK, environment);
    environment->Release();
    FakeControl::Get().LetGo(handler);
  });
  return S_OK;
}

// Watches CoTaskMemFree for the strings that the control handed out.
class StringWatch final : public IMallocSpy {
 public:
  std::set<void*> handedOut;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IUnknown && iid != IID_IMallocSpy) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<IMallocSpy*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
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

StringWatch Strings;
bool WatchingStrings = false;

LRESULT CALLBACK QueueWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace

FakeControl& FakeControl::Get() {
  static FakeControl control;
  return control;
}

FakeControl& FakeControl::Start() {
  FakeControl& control = Get();
  control.calls.clear();
  control.source = L"about:blank";
  control.canGoBack = control.canGoForward = FALSE;
  control.settingsFail = false;
  control.failing = Failing::Nothing;
  if (!control.queueWindow_) {
    WNDCLASSW description{};
    description.lpfnWndProc = QueueWindowProc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"QrlFakeWebControlQueue";
    RegisterClassW(&description);
    control.queueWindow_ = CreateWindowExW(0, description.lpszClassName, nullptr, 0, 0, 0, 0, 0,
                                           HWND_MESSAGE, nullptr, description.hInstance, nullptr);
  }
  if (!WatchingStrings) WatchingStrings = SUCCEEDED(CoRegisterMallocSpy(&Strings));
  QrlRouteEnvironmentRequests(CreateEnvironment);
  return control;
}

void FakeControl::Post(std::function<void()> work) {
  work_.push_back(std::move(work));
  PostMessageW(queueWindow_, RunWorkMessage, 0, 0);
}

namespace {

LRESULT CALLBACK QueueWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != RunWorkMessage) return DefWindowProcW(window, message, wParam, lParam);
  FakeControl::Get().RunOne();
  return 0;
}

}  // namespace

void FakeControl::RunOne() {
  if (work_.empty()) return;
  std::function<void()> work = std::move(work_.front());
  work_.pop_front();
  work();
}

void FakeControl::RunPending() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void FakeControl::LetGo(IUnknown* handler) {
  if (handler->Release() == 0) {
    ++handlersFreed;
  } else {
    ++handlersHeldElsewhere;
  }
}

LPWSTR FakeControl::HandOut(const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
  std::copy(text.c_str(), text.c_str() + text.size() + 1, copy);
  if (WatchingStrings) Strings.handedOut.insert(copy);
  return copy;
}

int FakeControl::stringsNotFreed() const {
  return WatchingStrings ? static_cast<int>(Strings.handedOut.size()) : -1;
}

namespace {

// Raises an event of the newest view on each of its handlers, later.
template <typename Handler, typename Args>
void RaiseOn(std::vector<IUnknown*> FakeView::*list, Args* args) {
  FakeControl::Get().Post([list, args] {
    FakeView* view = FakeControl::Get().view();
    if (view) {
      for (IUnknown* handler : view->*list) static_cast<Handler*>(handler)->Invoke(view, args);
    }
    if (args) args->Release();
  });
}

}  // namespace

void FakeControl::RaiseNavigationStarting() {
  RaiseOn<ICoreWebView2NavigationStartingEventHandler, IUnknown>(&FakeView::starting, nullptr);
}

void FakeControl::RaiseNavigationCompleted() {
  RaiseOn<ICoreWebView2NavigationCompletedEventHandler, IUnknown>(&FakeView::completed, nullptr);
}

void FakeControl::RaiseHistoryChanged() {
  RaiseOn<ICoreWebView2HistoryChangedEventHandler, IUnknown>(&FakeView::history, nullptr);
}

void FakeControl::RaiseWebMessage(std::optional<std::wstring> text) {
  RaiseOn<ICoreWebView2WebMessageReceivedEventHandler, ICoreWebView2WebMessageReceivedEventArgs>(
      &FakeView::messages, new FakeMessageArgs(std::move(text)));
}

void FakeControl::AnswerScript(HRESULT errorCode, const std::wstring& json) {
  Post([errorCode, json] {
    FakeView* view = FakeControl::Get().view();
    if (!view || view->scripts.empty()) return;
    ICoreWebView2ExecuteScriptCompletedHandler* handler = view->scripts.front();
    view->scripts.pop_front();
    handler->Invoke(errorCode, errorCode < 0 ? nullptr : json.c_str());
    FakeControl::Get().LetGo(handler);
  });
}

std::size_t FakeControl::scriptsWaiting() const { return view_ ? view_->scripts.size() : 0; }

}  // namespace qrl::testing
