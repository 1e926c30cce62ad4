// Windows and the message loop for scripts, in the lantern table, over Win32:
//   lantern.window{width = W, height = H, title = T}
//       makes and shows a window; gives its handle, which wvCreate takes both
//       as the browser's window and as the window for progress texts
//   lantern.text(id)       the window's current text (title), or nil
//   lantern.wait(id, text, timeout_ms)
//       runs the message loop until the window's text is `text` (true) or
//       the time is out (false); shows how long it has waited on a console
//   lantern.pump(ms)       runs the message loop for that long
// The message loop runs only inside wait and pump (and at the prompt), so
// browser events reach the module only there, as they do in a host whose
// loop the script drives.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <lua.hpp>
#include <string>

#include "commands/unicode_text.h"
#include "lantern/lua/lua_extensions.h"
#include "lantern/lua/window_options.h"
#include "lantern/windows/message_loop.h"

namespace qrl {
namespace {

// How often a wait looks at the text and shows its progress when no message
// comes.
constexpr DWORD WakeIntervalMs = 50;
constexpr wchar_t WindowClass[] = L"QrLanternScriptWindow";

std::wstring Wide(const std::string& text) {
  const std::u16string units = Utf8ToUtf16(text);
  return std::wstring(units.begin(), units.end());
}

// A window that the user closes only hides, so that its id stays good for
// the rest of the script.
LRESULT CALLBACK ScriptWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE) {
    ShowWindow(window, SW_HIDE);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

bool RegisterScriptWindowClass() {
  static const bool registered = [] {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = ScriptWindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = WindowClass;
    return RegisterClassExW(&windowClass) != 0;
  }();
  return registered;
}

HWND WindowOf(lua_Integer id) { return reinterpret_cast<HWND>(static_cast<std::intptr_t>(id)); }

int MakeWindow(lua_State* L) {
  const auto [width, height, title] = ReadWindowOptions(L);
  if (!RegisterScriptWindowClass()) return luaL_error(L, "lantern.window: no window class (error %d)", static_cast<int>(GetLastError()));

  HWND window = CreateWindowExW(0, WindowClass, Wide(title).c_str(), WS_OVERLAPPEDWINDOW,
                                CW_USEDEFAULT, CW_USEDEFAULT, width, height, nullptr, nullptr,
                                GetModuleHandleW(nullptr), nullptr);
  if (!window) return luaL_error(L, "lantern.window: no window (error %d)", static_cast<int>(GetLastError()));
  ShowWindow(window, SW_SHOWNORMAL);
  UpdateWindow(window);
  DispatchWaitingMessages();
  lua_pushinteger(L, static_cast<lua_Integer>(reinterpret_cast<std::intptr_t>(window)));
  return 1;
}

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  return Utf16ToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(text.data()),
                                         static_cast<std::size_t>(std::max(length, 0))));
}

int WindowText(lua_State* L) {
  HWND window = WindowOf(luaL_checkinteger(L, 1));
  if (!IsWindow(window)) {
    lua_pushnil(L);
    return 1;
  }
  const std::string text = TextOf(window);
  lua_pushlstring(L, text.data(), text.size());
  return 1;
}

// The wait's progress on one console line, redrawn in place; nothing when
// standard error is not a console that takes cursor sequences.
class ConsoleProgress {
 public:
  ConsoleProgress(lua_Integer id, std::string wanted) : id_(id), wanted_(std::move(wanted)) {
    HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    shown_ = GetConsoleMode(error, &mode) &&
             SetConsoleMode(error, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
  ~ConsoleProgress() {
    if (shown_ && drawn_) std::fputs("\r\033[K", stderr);
  }
  ConsoleProgress(const ConsoleProgress&) = delete;
  ConsoleProgress& operator=(const ConsoleProgress&) = delete;

  void Show(const std::string& current) {
    if (!shown_) return;
    const double seconds = static_cast<double>(GetTickCount64() - start_) / 1000.0;
    std::fputs(WaitProgressLine(id_, wanted_, seconds, current).c_str(), stderr);
    std::fflush(stderr);
    drawn_ = true;
  }

 private:
  lua_Integer id_;
  std::string wanted_;
  bool shown_ = false;
  bool drawn_ = false;
  ULONGLONG start_ = GetTickCount64();
};

int WaitForText(lua_State* L) {
  const lua_Integer id = luaL_checkinteger(L, 1);
  const std::string wanted = luaL_checkstring(L, 2);
  const lua_Integer timeoutMs = luaL_checkinteger(L, 3);
  HWND window = WindowOf(id);
  auto currentText = [window] { return IsWindow(window) ? TextOf(window) : std::string(); };
  bool reached = currentText() == wanted;
  {
    const ModuleEventScope namedValuesGoHere(L);
    ConsoleProgress progress(id, wanted);
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(std::max<lua_Integer>(timeoutMs, 0));
    for (ULONGLONG now = GetTickCount64(); !reached && now < end; now = GetTickCount64()) {
      RunMessagesOnce(nullptr, static_cast<DWORD>(std::min<ULONGLONG>(end - now, WakeIntervalMs)));
      const std::string text = currentText();
      reached = text == wanted;
      progress.Show(text);
    }
  }
  RaisePendingErrors(L);
  lua_pushboolean(L, reached);
  return 1;
}

int Pump(lua_State* L) {
  const lua_Integer ms = luaL_optinteger(L, 1, 0);
  {
    const ModuleEventScope namedValuesGoHere(L);
    RunMessagesFor(static_cast<DWORD>(std::clamp<lua_Integer>(ms, 0, 0x7fffffff)));
  }
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

// The web control runs in a single-threaded COM apartment of the thread that
// creates it, which a Windows host has made before it loads extenders.
void EnterComApartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }

const LanternExtensionRegistration windows{{"windows", EnterComApartment, Install, nullptr}};

}  // namespace
}  // namespace qrl
