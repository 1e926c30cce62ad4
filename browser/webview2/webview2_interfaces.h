// Our own declarations of the web control's COM interfaces that the Windows
// component calls, with their IIDs. Each interface lists every method up to
// the last one we call, in the runtime's slot order: a method left out or
// put out of order moves every later slot, and a call then lands in another
// method. The slot test checks each one we call against the runtime's order.
//
// Pointers that we only pass along (event arguments we never read, handler
// types of events we never subscribe to) are declared as IUnknown*.
#pragma once

#include <windows.h>
#include <objidl.h>
#include <oaidl.h>

#include <cstdint>

namespace qrl::webview2 {

struct EventRegistrationToken {
  std::int64_t value;
};

// Enumerations travel as 32-bit values; we pass none of them ourselves.
enum COREWEBVIEW2_MOVE_FOCUS_REASON : std::int32_t {};
enum COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT : std::int32_t {};
enum COREWEBVIEW2_WEB_RESOURCE_CONTEXT : std::int32_t {};

struct ICoreWebView2;
struct ICoreWebView2Controller;
struct ICoreWebView2Environment;
struct ICoreWebView2Settings;
struct ICoreWebView2WebMessageReceivedEventArgs;
struct ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler;
struct ICoreWebView2CreateCoreWebView2ControllerCompletedHandler;
struct ICoreWebView2NavigationStartingEventHandler;
struct ICoreWebView2NavigationCompletedEventHandler;
struct ICoreWebView2HistoryChangedEventHandler;
struct ICoreWebView2WebMessageReceivedEventHandler;
struct ICoreWebView2ExecuteScriptCompletedHandler;

inline constexpr IID IID_ICoreWebView2Environment = {
    0xB96D755E, 0x0319, 0x4E92, {0xA2, 0x96, 0x23, 0x43, 0x6F, 0x46, 0xA1, 0xFC}};
inline constexpr IID IID_ICoreWebView2Controller = {
    0x4D00C0D1, 0x9434, 0x4EB6, {0x80, 0x78, 0x86, 0x97, 0xA5, 0x60, 0x33, 0x4F}};
inline constexpr IID IID_ICoreWebView2 = {
    0x76ECEACB, 0x0462, 0x4D94, {0xAC, 0x83, 0x42, 0x3A, 0x67, 0x93, 0x77, 0x5E}};
inline constexpr IID IID_ICoreWebView2Settings = {
    0xE562E4F0, 0xD7FA, 0x43AC, {0x8D, 0x71, 0xC0, 0x51, 0x50, 0x49, 0x9F, 0x00}};
inline constexpr IID IID_ICoreWebView2WebMessageReceivedEventArgs = {
    0x0F99A40C, 0xE962, 0x4207, {0x9E, 0x92, 0xE3, 0xD5, 0x42, 0xEF, 0xF8, 0x49}};
inline constexpr IID IID_ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler = {
    0x4E8A3389, 0xC9D8, 0x4BD2, {0xB6, 0xB5, 0x12, 0x4F, 0xEE, 0x6C, 0xC1, 0x4D}};
inline constexpr IID IID_ICoreWebView2CreateCoreWebView2ControllerCompletedHandler = {
    0x6C4819F3, 0xC9B7, 0x4260, {0x81, 0x27, 0xC9, 0xF5, 0xBD, 0xE7, 0xF6, 0x8C}};
inline constexpr IID IID_ICoreWebView2NavigationStartingEventHandler = {
    0x9ADBE429, 0xF36D, 0x432B, {0x9D, 0xDC, 0xF8, 0x88, 0x1F, 0xBD, 0x76, 0xE3}};
inline constexpr IID IID_ICoreWebView2NavigationCompletedEventHandler = {
    0xD33A35BF, 0x1C49, 0x4F98, {0x93, 0xAB, 0x00, 0x6E, 0x05, 0x33, 0xFE, 0x1C}};
inline constexpr IID IID_ICoreWebView2HistoryChangedEventHandler = {
    0xC79A420C, 0xEFD9, 0x4058, {0x92, 0x95, 0x3E, 0x8B, 0x4B, 0xCA, 0xB6, 0x45}};
inline constexpr IID IID_ICoreWebView2WebMessageReceivedEventHandler = {
    0x57213F19, 0x00E6, 0x49FA, {0x8E, 0x07, 0x89, 0x8E, 0xA0, 0x1E, 0xCB, 0xD2}};
inline constexpr IID IID_ICoreWebView2ExecuteScriptCompletedHandler = {
    0x49511172, 0xCC67, 0x4BCA, {0x99, 0x23, 0x13, 0x71, 0x12, 0xF4, 0xC4, 0xCC}};

struct ICoreWebView2Environment : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
      HWND parentWindow, ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateWebResourceResponse(IStream* content, int statusCode,
                                                              LPCWSTR reasonPhrase,
                                                              LPCWSTR headers,
                                                              IUnknown** response) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_BrowserVersionString(LPWSTR* versionInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_NewBrowserVersionAvailable(
      IUnknown* eventHandler, EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_NewBrowserVersionAvailable(
      EventRegistrationToken token) = 0;
};

struct ICoreWebView2Controller : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_IsVisible(BOOL* isVisible) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_IsVisible(BOOL isVisible) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Bounds(RECT* bounds) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Bounds(RECT bounds) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_ZoomFactor(double* zoomFactor) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_ZoomFactor(double zoomFactor) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_ZoomFactorChanged(IUnknown* eventHandler,
                                                          EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_ZoomFactorChanged(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetBoundsAndZoomFactor(RECT bounds, double zoomFactor) = 0;
  virtual HRESULT STDMETHODCALLTYPE MoveFocus(COREWEBVIEW2_MOVE_FOCUS_REASON reason) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_MoveFocusRequested(IUnknown* eventHandler,
                                                           EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_MoveFocusRequested(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_GotFocus(IUnknown* eventHandler,
                                                 EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_GotFocus(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_LostFocus(IUnknown* eventHandler,
                                                  EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_LostFocus(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_AcceleratorKeyPressed(IUnknown* eventHandler,
                                                              EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_AcceleratorKeyPressed(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_ParentWindow(HWND* parentWindow) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_ParentWindow(HWND parentWindow) = 0;
  virtual HRESULT STDMETHODCALLTYPE NotifyParentWindowPositionChanged() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  virtual HRESULT STDMETHODCALLTYPE get_CoreWebView2(ICoreWebView2** coreWebView2) = 0;
};

struct ICoreWebView2 : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_Settings(ICoreWebView2Settings** settings) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) = 0;
  virtual HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR uri) = 0;
  virtual HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR htmlContent) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_NavigationStarting(
      ICoreWebView2NavigationStartingEventHandler* eventHandler,
      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_NavigationStarting(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_ContentLoading(IUnknown* eventHandler,
                                                       EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_ContentLoading(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_SourceChanged(IUnknown* eventHandler,
                                                      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_SourceChanged(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_HistoryChanged(
      ICoreWebView2HistoryChangedEventHandler* eventHandler, EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_HistoryChanged(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_NavigationCompleted(
      ICoreWebView2NavigationCompletedEventHandler* eventHandler,
      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_NavigationCompleted(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_FrameNavigationStarting(
      ICoreWebView2NavigationStartingEventHandler* eventHandler,
      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_FrameNavigationStarting(
      EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_FrameNavigationCompleted(
      ICoreWebView2NavigationCompletedEventHandler* eventHandler,
      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_FrameNavigationCompleted(
      EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_ScriptDialogOpening(IUnknown* eventHandler,
                                                            EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_ScriptDialogOpening(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_PermissionRequested(IUnknown* eventHandler,
                                                            EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_PermissionRequested(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_ProcessFailed(IUnknown* eventHandler,
                                                      EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_ProcessFailed(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(
      LPCWSTR javaScript, IUnknown* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveScriptToExecuteOnDocumentCreated(LPCWSTR id) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteScript(
      LPCWSTR javaScript, ICoreWebView2ExecuteScriptCompletedHandler* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE CapturePreview(
      COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT imageFormat, IStream* imageStream,
      IUnknown* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE Reload() = 0;
  virtual HRESULT STDMETHODCALLTYPE PostWebMessageAsJson(LPCWSTR webMessageAsJson) = 0;
  virtual HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR webMessageAsString) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_WebMessageReceived(
      ICoreWebView2WebMessageReceivedEventHandler* handler, EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_WebMessageReceived(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE CallDevToolsProtocolMethod(LPCWSTR methodName,
                                                               LPCWSTR parametersAsJson,
                                                               IUnknown* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_BrowserProcessId(UINT32* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_CanGoBack(BOOL* canGoBack) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_CanGoForward(BOOL* canGoForward) = 0;
  virtual HRESULT STDMETHODCALLTYPE GoBack() = 0;
  virtual HRESULT STDMETHODCALLTYPE GoForward() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDevToolsProtocolEventReceiver(LPCWSTR eventName,
                                                                     IUnknown** receiver) = 0;
  virtual HRESULT STDMETHODCALLTYPE Stop() = 0;
  virtual HRESULT STDMETHODCALLTYPE add_NewWindowRequested(IUnknown* eventHandler,
                                                           EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_NewWindowRequested(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE add_DocumentTitleChanged(IUnknown* eventHandler,
                                                             EventRegistrationToken* token) = 0;
  virtual HRESULT STDMETHODCALLTYPE remove_DocumentTitleChanged(EventRegistrationToken token) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_DocumentTitle(LPWSTR* title) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddHostObjectToScript(LPCWSTR name, VARIANT* object) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveHostObjectFromScript(LPCWSTR name) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() = 0;
};

struct ICoreWebView2Settings : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_IsScriptEnabled(BOOL* isScriptEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_IsScriptEnabled(BOOL isScriptEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_IsWebMessageEnabled(BOOL* isWebMessageEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_IsWebMessageEnabled(BOOL isWebMessageEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_AreDefaultScriptDialogsEnabled(
      BOOL* areDefaultScriptDialogsEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_AreDefaultScriptDialogsEnabled(
      BOOL areDefaultScriptDialogsEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_IsStatusBarEnabled(BOOL* isStatusBarEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_IsStatusBarEnabled(BOOL isStatusBarEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_AreDevToolsEnabled(BOOL* areDevToolsEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_AreDevToolsEnabled(BOOL areDevToolsEnabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_AreDefaultContextMenusEnabled(BOOL* enabled) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_AreDefaultContextMenusEnabled(BOOL enabled) = 0;
};

struct ICoreWebView2WebMessageReceivedEventArgs : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* source) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_WebMessageAsJson(LPWSTR* webMessageAsJson) = 0;
  virtual HRESULT STDMETHODCALLTYPE TryGetWebMessageAsString(LPWSTR* webMessageAsString) = 0;
};

struct ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode,
                                           ICoreWebView2Environment* createdEnvironment) = 0;
};

struct ICoreWebView2CreateCoreWebView2ControllerCompletedHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode,
                                           ICoreWebView2Controller* createdController) = 0;
};

struct ICoreWebView2NavigationStartingEventHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender, IUnknown* args) = 0;
};

struct ICoreWebView2NavigationCompletedEventHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender, IUnknown* args) = 0;
};

struct ICoreWebView2HistoryChangedEventHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender, IUnknown* args) = 0;
};

struct ICoreWebView2WebMessageReceivedEventHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(ICoreWebView2* sender,
                                           ICoreWebView2WebMessageReceivedEventArgs* args) = 0;
};

struct ICoreWebView2ExecuteScriptCompletedHandler : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Invoke(HRESULT errorCode, LPCWSTR resultObjectAsJson) = 0;
};

// The loader's one entry point, which WebView2Loader.dll exports by this name.
using CreateEnvironmentWithOptionsFn = HRESULT(STDAPICALLTYPE*)(
    LPCWSTR browserExecutableFolder, LPCWSTR userDataFolder, IUnknown* environmentOptions,
    ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* environmentCreatedHandler);
inline constexpr char CreateEnvironmentWithOptionsName[] =
    "CreateCoreWebView2EnvironmentWithOptions";

}  // namespace qrl::webview2
