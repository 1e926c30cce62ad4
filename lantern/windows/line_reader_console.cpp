// Lines at lantern.exe's prompt. On a console, the console's own line input
// does the editing and keeps the history (arrows, F7), so lantern keeps no
// history file. A blocking read runs on a thread of its own while this thread
// runs the message loop, so that a live browser keeps loading while lantern
// waits for a line.
#include <windows.h>

#include <cstdio>
#include <thread>
#include <utility>

#include "commands/unicode_text.h"
#include "lantern/program_environment.h"
#include "lantern/prompt/line_reader.h"
#include "lantern/windows/message_loop.h"

namespace qrl {

namespace {

// Ctrl-Z at the start of a console line is the end of input, as for the
// system's own programs.
constexpr wchar_t EndOfInputKey = L'\x1a';
constexpr DWORD ConsoleChunk = 1024;

void DropLineEnd(std::string& line) {
  if (!line.empty() && line.back() == '\n') line.pop_back();
  if (!line.empty() && line.back() == '\r') line.pop_back();
}

}  // namespace

struct LineReader::State {
  std::optional<std::string> ReadConsoleLine();
  std::optional<std::string> ReadPlainLine();

  HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  bool console = InputIsInteractive();
  std::string pending;  // bytes of a pipe read beyond the line handed out
  bool endOfInput = false;
};

LineReader::LineReader(std::string) : state_(std::make_unique<State>()) {}

LineReader::~LineReader() = default;

std::string LineReader::DefaultHistoryFile() { return {}; }

std::optional<std::string> LineReader::State::ReadConsoleLine() {
  std::wstring line;
  for (;;) {
    wchar_t chunk[ConsoleChunk];
    DWORD count = 0;
    if (!ReadConsoleW(input, chunk, ConsoleChunk, &count, nullptr) || count == 0) break;
    line.append(chunk, count);
    if (line.back() == L'\n') break;
  }
  if (line.empty() || line.front() == EndOfInputKey) return std::nullopt;
  std::string text = Utf16ToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(line.data()), line.size()));
  DropLineEnd(text);
  return text;
}

std::optional<std::string> LineReader::State::ReadPlainLine() {
  for (;;) {
    const std::size_t end = pending.find('\n');
    if (end != std::string::npos) {
      std::string line = pending.substr(0, end + 1);
      pending.erase(0, end + 1);
      DropLineEnd(line);
      return line;
    }
    if (endOfInput) {
      if (pending.empty()) return std::nullopt;
      return std::exchange(pending, {});
    }
    char buffer[4096];
    DWORD count = 0;
    if (ReadFile(input, buffer, sizeof buffer, &count, nullptr) && count > 0) {
      pending.append(buffer, count);
    } else {
      endOfInput = true;
    }
  }
}

std::optional<std::string> LineReader::ReadLine(const char* prompt) {
  if (state_->console) {
    std::fputs(prompt, stdout);
    std::fflush(stdout);
  }
  std::optional<std::string> line;
  HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  // Without an event to wait on, the read blocks the loop but still works.
  if (!ready) return state_->console ? state_->ReadConsoleLine() : state_->ReadPlainLine();
  std::thread reader([this, &line, ready] {
    line = state_->console ? state_->ReadConsoleLine() : state_->ReadPlainLine();
    SetEvent(ready);
  });
  while (!RunMessagesOnce(ready, INFINITE)) {
  }
  reader.join();
  CloseHandle(ready);
  if (!line && state_->console) {
    std::fputs("\n", stdout);
    std::fflush(stdout);
  }
  return line;
}

}  // namespace qrl
