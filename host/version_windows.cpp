// Version and description on Windows: the number comes from the DLL's own
// version resource, the description from the host's language file when it
// has a text for this extender, and from the DLL's string table otherwise.
#include <windows.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include "host/module_handle_windows.h"
#include "host/module_version.h"
#include "trace/trace_text.h"

namespace qrl {
namespace {

// What a script's host sees when the version resource can't be read.
constexpr std::int32_t DefaultVersionNumber = 10001;
constexpr UINT DescriptionTextId = 101;
constexpr const char* DescriptionKey = "X101";
// The profile reads give this back for a missing entry, and an entry that
// says it counts as missing too.
constexpr const char* MissingEntry = "XXX";
constexpr const char* LanguageFileName = "QORMLANG";
constexpr int LanguageNameSize = 20;

// The search for the language file runs once per process.
enum LanguageSearch { NotTried = 0, NoLanguageFile = 1, LanguageFileFound = 2 };
LanguageSearch LanguageState = NotTried;
char LanguageFile[TextFieldSize];
char LanguageSection[TextFieldSize];

// Appends as much of `tail` as fits, so a long path can never overrun.
void AppendBounded(char* text, const char* tail) {
  const int used = lstrlenA(text);
  const int room = static_cast<int>(TextFieldSize) - used;
  if (room > 1) lstrcpynA(text + used, tail, room);
}

// The module's file name without folder and extension, as the runtime's
// path splitter gives it; false when the path can't be had.
bool ModuleFileBaseName(char* name) {
  char path[TextFieldSize + 1];
  const DWORD length = GetModuleFileNameA(ModuleHandle, path, sizeof path);
  if (length < 1 || length > TextFieldSize) return false;
  char fileName[_MAX_FNAME];
  _splitpath(path, nullptr, nullptr, fileName, nullptr);
  lstrcpynA(name, fileName, TextFieldSize);
  return true;
}

void ReadLanguageName(char* language) {
  GetPrivateProfileStringA("MAIN", "Language", MissingEntry, language, LanguageNameSize,
                           "QORSHELL.INI");
  if (lstrcmpA(language, MissingEntry) == 0)
    GetProfileStringA("INTL", "sLanguage", "enu", language, LanguageNameSize);
}

// The module's folder with its last separator, walked by characters so that
// the second byte of a double-byte character is never taken for one. Empty
// when the path can't be had or has no separator.
void ModuleFolder(char* folder) {
  const DWORD length = GetModuleFileNameA(ModuleHandle, folder, TextFieldSize);
  if (length == 0 || length >= TextFieldSize) {
    folder[0] = '\0';
    return;
  }
  char* behindSeparator = nullptr;
  for (char* c = folder; *c; c = CharNextA(c)) {
    if (*c == '\\' || *c == '/') behindSeparator = c + 1;
  }
  if (behindSeparator) {
    *behindSeparator = '\0';
  } else {
    folder[0] = '\0';
  }
}

bool SearchFile(const char* name, char* found) {
  const DWORD length = SearchPathA(nullptr, name, nullptr, TextFieldSize, found, nullptr);
  return length > 0 && length < TextFieldSize;
}

// Beside the module first, then by its bare name along the default search
// order. Leaves LanguageState at NoLanguageFile when neither is there.
void FindLanguageFile() {
  LanguageState = NoLanguageFile;
  LanguageFile[0] = '\0';
  char language[LanguageNameSize];
  ReadLanguageName(language);
  ModuleFolder(LanguageFile);
  AppendBounded(LanguageFile, LanguageFileName);
  AppendBounded(LanguageFile, ".");
  AppendBounded(LanguageFile, language);
  char found[TextFieldSize];
  if (!SearchFile(LanguageFile, found)) {
    wsprintfA(LanguageFile, "%s.%s", LanguageFileName, language);
    if (!SearchFile(LanguageFile, found)) return;
    lstrcpynA(LanguageFile, found, TextFieldSize);
  }
  char baseName[TextFieldSize] = "";
  ModuleFileBaseName(baseName);
  lstrcpynA(LanguageSection, baseName, TextFieldSize - 1);
  AppendBounded(LanguageSection, " Extender");
  LanguageState = LanguageFileFound;
}

bool ReadLanguageFileEntry(char* buffer) {
  if (LanguageState != LanguageFileFound) return false;
  GetPrivateProfileStringA(LanguageSection, DescriptionKey, MissingEntry, buffer, TextFieldSize,
                           LanguageFile);
  return lstrcmpA(buffer, MissingEntry) != 0;
}

// `~` stands for a line break and `|` for a tab, so that a one-line entry
// can carry both.
void ExpandLineBreaksAndTabs(char* text) {
  for (char* c = text; *c; c = CharNextA(c)) {
    if (*c == '~') {
      *c = '\n';
    } else if (*c == '|') {
      *c = '\t';
    }
  }
}

// atol with errno saved around it; a range or argument error keeps the
// default.
std::int32_t ParseVersionText(const char* text, std::int32_t fallback) {
  const int savedErrno = errno;
  errno = 0;
  const long value = std::atol(text);
  const int error = errno;
  errno = savedErrno;
  return error == ERANGE || error == EINVAL ? fallback : static_cast<std::int32_t>(value);
}

// The paths and sections are in the ANSI code page; the trace is UTF-8.
std::string AnsiTraceText(const char* text) {
  const int size = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
  if (size <= 1) return TraceQuoted(std::string_view());
  std::u16string wide(static_cast<std::size_t>(size), u'\0');
  MultiByteToWideChar(CP_ACP, 0, text, -1, reinterpret_cast<wchar_t*>(wide.data()), size);
  wide.pop_back();
  return TraceQuoted(wide, TraceAddressLimit);
}

// Which file the description came from, or why it is the built-in one.
std::string DescriptionSource(bool fromLanguageFile) {
  if (fromLanguageFile)
    return "from=" + AnsiTraceText(LanguageFile) + " section=" + AnsiTraceText(LanguageSection);
  if (LanguageState != LanguageFileFound) return "from=built-in language-file=none";
  return "from=built-in language-file=" + AnsiTraceText(LanguageFile) + " section=" +
         AnsiTraceText(LanguageSection) + " has no " + DescriptionKey;
}

}  // namespace

std::int32_t ReadVersionNumber() {
  char path[TextFieldSize];
  if (GetModuleFileNameA(ModuleHandle, path, TextFieldSize) == 0) return DefaultVersionNumber;
  DWORD unused = 0;
  const DWORD size = GetFileVersionInfoSizeA(path, &unused);
  if (size == 0) return DefaultVersionNumber;
  const std::unique_ptr<char[]> data(new (std::nothrow) char[size]);
  if (!data || !GetFileVersionInfoA(path, 0, size, data.get())) return DefaultVersionNumber;

  // US English and UTF-16 when the resource names no translation.
  WORD language = 1033;
  WORD codePage = 1200;
  void* translation = nullptr;
  UINT length = 0;
  if (VerQueryValueA(data.get(), "\\VarFileInfo\\Translation", &translation, &length) &&
      length >= 4) {
    const DWORD first = *static_cast<const DWORD*>(translation);
    language = LOWORD(first);
    codePage = HIWORD(first);
  }
  char query[64];
  wsprintfA(query, "\\StringFileInfo\\%04x%04x\\%s", language, codePage, "FileVersion");
  void* text = nullptr;
  if (!VerQueryValueA(data.get(), query, &text, &length) || !text) return DefaultVersionNumber;
  return ParseVersionText(static_cast<const char*>(text), DefaultVersionNumber);
}

bool ReadModuleBaseName(char* name) { return ModuleFileBaseName(name); }

void LoadDescription(char* buffer) {
  if (LanguageState == NotTried) FindLanguageFile();
  const bool fromLanguageFile = ReadLanguageFileEntry(buffer);
  if (!fromLanguageFile) {
    buffer[0] = '\0';
    LoadStringA(ModuleHandle, DescriptionTextId, buffer, TextFieldSize);
  }
  Trace("description", [fromLanguageFile] { return DescriptionSource(fromLanguageFile); });
  ExpandLineBreaksAndTabs(buffer);
}

}  // namespace qrl
