// The trace file on Windows. The variable is read and the file opened by
// their wide names, so that a path outside the ANSI code page works; the file
// is opened for appending only, so that every line lands at its end in one
// write, also when several processes trace into it.
#include <windows.h>

#include <cstdio>
#include <string>

#include "trace/trace_file.h"

namespace qrl {
namespace {

constexpr wchar_t VariableName[] = L"QRLANTERN_TRACE";

// The process's own environment block, which every runtime in the process
// writes through to; empty when the variable is unset.
std::wstring ReadVariable() {
  const DWORD size = GetEnvironmentVariableW(VariableName, nullptr, 0);
  if (size == 0) return {};
  std::wstring value(size, L'\0');
  const DWORD length = GetEnvironmentVariableW(VariableName, value.data(), size);
  value.resize(length < size ? length : 0);
  return value;
}

std::string Utf8(const std::wstring& text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size,
                      nullptr, nullptr);
  return bytes;
}

// A host without a console has no standard error; the trace then stays off.
std::intptr_t StandardError() {
  const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return -1;
  return reinterpret_cast<std::intptr_t>(handle);
}

}  // namespace

TraceFile::TraceFile() noexcept {
  try {
    const std::wstring name = ReadVariable();
    if (name.empty()) return;
    if (name == L"-") {
      handle_ = StandardError();
      return;
    }
    const HANDLE file = CreateFileW(name.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
      const DWORD error = GetLastError();
      std::fprintf(stderr,
                   "qrlantern: cannot open the trace file %s: error %lu; "
                   "going on without a trace\n",
                   Utf8(name).c_str(), static_cast<unsigned long>(error));
      return;
    }
    handle_ = reinterpret_cast<std::intptr_t>(file);
    owned_ = true;
  } catch (...) {
    // No memory for the name while the DLL loads: no trace.
  }
}

TraceFile::~TraceFile() {
  if (owned_) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

// WriteFile keeps nothing back in the process, so a line is in the file as
// soon as this returns, whatever happens to the process next.
void TraceFile::Write(std::string_view bytes) noexcept {
  if (!IsOpen()) return;
  while (!bytes.empty()) {
    DWORD written = 0;
    if (!WriteFile(reinterpret_cast<HANDLE>(handle_), bytes.data(),
                   static_cast<DWORD>(bytes.size()), &written, nullptr) ||
        written == 0)
      return;
    bytes.remove_prefix(written);
  }
}

}  // namespace qrl
