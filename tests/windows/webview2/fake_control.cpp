#include "tests/windows/webview2/fake_control.h"

#include <atomic>
#include <set>
#include <utility>

#include "commands/unicode_text.h"
#include "tests/windows/webview2/test_loader.h"

namespace qrl::testing {

using namespace qrl::webview2;

namespace {

constexpr UINT RunWorkMessage = WM_APP + 1;

std::string Narrow(const wchar_t* text) {
  if (!text) return "null";
  const std::wstring_view wide(text);
  return Utf16ToUtf8(std::u16string(wide.begin(), wide.end()));
}

std::string Bool(BOOL flag) { return flag ? "1" : "0"; }

// Reference counting and QueryInterface of every object of the control.
template <typename Interface, const IID& InterfaceId>
class FakeObject : public Interface {
 public:
  FakeObject() { ++FakeControl::Get().liveObjects; }
  virtual ~FakeObject() { --FakeControl::Get().liveObjects; }
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IUnknown && iid != InterfaceId) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_{1};
};

void Log(std::string line) { FakeControl::Get().calls.push_back(std::move(line)); }

class FakeSettings final : public FakeObject<ICoreWebView2Settings, IID_ICoreWebView2Settings> {
 public:
  HRESULT STDMETHODCALLTYPE get_IsScriptEnabled(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_IsScriptEnabled(BOOL on) override {
    Log("put_IsScriptEnabled(" + Bool(on) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_IsWebMessageEnabled(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_IsWebMessageEnabled(BOOL on) override {
    Log("put_IsWebMessageEnabled(" + Bool(on) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_AreDefaultScriptDialogsEnabled(BOOL*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE put_AreDefaultScriptDialogsEnabled(BOOL on) override {
    Log("put_AreDefaultScriptDialogsEnabled(" + Bool(on) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_IsStatusBarEnabled(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_IsStatusBarEnabled(BOOL on) override {
    Log("put_IsStatusBarEnabled(" + Bool(on) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_AreDevToolsEnabled(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_AreDevToolsEnabled(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_AreDefaultContextMenusEnabled(BOOL*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE put_AreDefaultContextMenusEnabled(BOOL on) override {
    Log("put_AreDefaultContextMenusEnabled(" + Bool(on) + ")");
    return S_OK;
  }
};

class FakeMessageArgs final
    : public FakeObject<ICoreWebView2WebMessageReceivedEventArgs,
                        IID_ICoreWebView2WebMessageReceivedEventArgs> {
 public:
  explicit FakeMessageArgs(std::optional<std::wstring> text) : text_(std::move(text)) {}
  HRESULT STDMETHODCALLTYPE get_Source(LPWSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_WebMessageAsJson(LPWSTR*) override { return E_NOTIMPL; }
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
  HRESULT STDMETHODCALLTYPE remove_NavigationStarting(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_ContentLoading(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_ContentLoading(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_SourceChanged(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_SourceChanged(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_HistoryChanged(ICoreWebView2HistoryChangedEventHandler* handler,
                                               EventRegistrationToken* token) override {
    return Keep("add_HistoryChanged", history, handler, token);
  }
  HRESULT STDMETHODCALLTYPE remove_HistoryChanged(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_NavigationCompleted(
      ICoreWebView2NavigationCompletedEventHandler* handler,
      EventRegistrationToken* token) override {
    return Keep("add_NavigationCompleted", completed, handler, token);
  }
  HRESULT STDMETHODCALLTYPE remove_NavigationCompleted(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_FrameNavigationStarting(
      ICoreWebView2NavigationStartingEventHandler*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_FrameNavigationStarting(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_FrameNavigationCompleted(
      ICoreWebView2NavigationCompletedEventHandler*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_FrameNavigationCompleted(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_ScriptDialogOpening(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_ScriptDialogOpening(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_PermissionRequested(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_PermissionRequested(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_ProcessFailed(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_ProcessFailed(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(LPCWSTR script,
                                                                IUnknown* handler) override {
    Log("AddScriptToExecuteOnDocumentCreated(" + Narrow(script) + ", " +
        (handler ? "handler" : "null") + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE RemoveScriptToExecuteOnDocumentCreated(LPCWSTR) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE ExecuteScript(
      LPCWSTR script, ICoreWebView2ExecuteScriptCompletedHandler* handler) override {
    Log("ExecuteScript(" + Narrow(script) + ")");
    if (!handler) return E_POINTER;
    handler->AddRef();
    scripts.push_back(handler);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CapturePreview(COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT, IStream*,
                                           IUnknown*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Reload() override { return Note("Reload"); }
  HRESULT STDMETHODCALLTYPE PostWebMessageAsJson(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR text) override {
    Log("PostWebMessageAsString(" + Narrow(text) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE add_WebMessageReceived(
      ICoreWebView2WebMessageReceivedEventHandler* handler,
      EventRegistrationToken* token) override {
    return Keep("add_WebMessageReceived", messages, handler, token);
  }
  HRESULT STDMETHODCALLTYPE remove_WebMessageReceived(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE CallDevToolsProtocolMethod(LPCWSTR, LPCWSTR, IUnknown*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE get_BrowserProcessId(UINT32*) override { return E_NOTIMPL; }
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
  HRESULT STDMETHODCALLTYPE GetDevToolsProtocolEventReceiver(LPCWSTR, IUnknown**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Stop() override { return Note("Stop"); }
  HRESULT STDMETHODCALLTYPE add_NewWindowRequested(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_NewWindowRequested(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_DocumentTitleChanged(IUnknown*,
                                                     EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_DocumentTitleChanged(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE get_DocumentTitle(LPWSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE AddHostObjectToScript(LPCWSTR, VARIANT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE RemoveHostObjectFromScript(LPCWSTR) override { return E_NOTIMPL; }
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

  HRESULT STDMETHODCALLTYPE get_IsVisible(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_IsVisible(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_Bounds(RECT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_Bounds(RECT bounds) override {
    Log("put_Bounds(" + std::to_string(bounds.left) + "," + std::to_string(bounds.top) + "," +
        std::to_string(bounds.right) + "," + std::to_string(bounds.bottom) + ")");
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_ZoomFactor(double*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_ZoomFactor(double) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE add_ZoomFactorChanged(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_ZoomFactorChanged(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetBoundsAndZoomFactor(RECT, double) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE MoveFocus(COREWEBVIEW2_MOVE_FOCUS_REASON) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_MoveFocusRequested(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_MoveFocusRequested(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_GotFocus(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_GotFocus(EventRegistrationToken) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE add_LostFocus(IUnknown*, EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_LostFocus(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE add_AcceleratorKeyPressed(IUnknown*,
                                                      EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_AcceleratorKeyPressed(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE get_ParentWindow(HWND*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_ParentWindow(HWND) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE NotifyParentWindowPositionChanged() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Close() override { return E_NOTIMPL; }
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
      auto* controller = new FakeController;
      handler->Invoke(S_OK, controller);
      controller->Release();
      FakeControl::Get().LetGo(handler);
    });
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CreateWebResourceResponse(IStream*, int, LPCWSTR, LPCWSTR,
                                                      IUnknown**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE get_BrowserVersionString(LPWSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE add_NewBrowserVersionAvailable(IUnknown*,
                                                           EventRegistrationToken*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE remove_NewBrowserVersionAvailable(EventRegistrationToken) override {
    return E_NOTIMPL;
  }
};

HRESULT STDAPICALLTYPE CreateEnvironment(
    LPCWSTR browserFolder, LPCWSTR userDataFolder, IUnknown* options,
    ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
  Log("CreateCoreWebView2EnvironmentWithOptions(" + Narrow(browserFolder) + ", " +
      Narrow(userDataFolder) + ", " + (options ? "options" : "null") + ")");
  handler->AddRef();
  FakeControl::Get().Post([handler] {
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
