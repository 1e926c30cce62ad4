// Query with code 1 on Windows, with real files: the version resource, the
// host's QORSHELL.INI, the profile's language, and language files beside the
// DLL or on the search path. Each case loads a copy of the DLL of its own,
// which is a module of its own with a language search not yet made. (How
// the answer fills the host's buffer is the same on every system and tested
// with the host.)
//
// Runs under wine in a prefix of its own: it writes into the Windows folder
// and the profile.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "lantern/host/module_host.h"

namespace qrl {
namespace {

namespace fs = std::filesystem;

constexpr const char* BuiltIn = "DllMapServices extender API example";

fs::path WindowsFolder() {
  char folder[MAX_PATH];
  GetWindowsDirectoryA(folder, MAX_PATH);
  return folder;
}

void WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A language file with one entry for the extender named `baseName`.
std::string LanguageEntry(const std::string& text, const std::string& baseName = "qrlantern") {
  return "[" + baseName + " Extender]\r\nX101=" + text + "\r\n";
}

// A folder of the case's own, with the module folder in it, and no language
// setting anywhere. A folder is never reused: a DLL that was loaded from it
// cannot be deleted.
fs::path FreshFolder(const std::string& name) {
  const fs::path folder = fs::temp_directory_path() / ("qrl-version-" + name);
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  fs::create_directories(folder / "module");
  SetCurrentDirectoryA(folder.string().c_str());
  fs::remove(WindowsFolder() / "QORSHELL.INI", ignored);
  WriteProfileStringA("INTL", "sLanguage", nullptr);
  return folder;
}

// A copy of the DLL as `baseName`.dll in the case's module folder.
std::unique_ptr<ModuleHost> Load(const fs::path& folder, const std::string& baseName) {
  const fs::path copy = folder / "module" / (baseName + ".dll");
  fs::copy_file(QRL_MODULE_PATH, copy, fs::copy_options::overwrite_existing);
  return ModuleHost::Load(copy.string());
}

// Where the language comes from, where its file is found and which section
// is read; the version number is the resource's whatever the description.
TEST(VersionAndDescription, DescriptionFollowsTheHostsLanguageSetting) {
  const fs::path shell = WindowsFolder() / "QORSHELL.INI";
  const struct {
    const char* why;
    // Files by their paths in the case's folder, or anywhere.
    std::vector<std::pair<fs::path, std::string>> files;
    std::string expected;
    const char* profileLanguage = nullptr;
    std::string baseName = "qrlantern";
  } cases[] = {
      {"no setting anywhere: enu beside the module",
       {{"module/QORMLANG.enu", LanguageEntry("English")}}, "English"},
      {"QORSHELL.INI in the Windows folder names the language",
       {{shell, "[MAIN]\r\nLanguage=deu\r\n"}, {"module/QORMLANG.enu", LanguageEntry("English")},
        {"module/QORMLANG.deu", LanguageEntry("Deutsch")}}, "Deutsch"},
      {"the profile names it when QORSHELL.INI says XXX",
       {{shell, "[MAIN]\r\nLanguage=XXX\r\n"}, {"module/QORMLANG.fra", LanguageEntry("Fran~cais")}},
       "Fran\ncais", "fra"},
      {"a file only on the search path, by its bare name",
       {{"QORMLANG.enu", LanguageEntry("Found|by search")}}, "Found\tby search"},
      {"the section is named for the module's own file name",
       {{"module/QORMLANG.enu", LanguageEntry("Lamp keeper", "Lamps")}}, "Lamp keeper", nullptr,
       "Lamps"},
      {"an entry longer than 259 bytes is cut",
       {{"module/QORMLANG.enu", LanguageEntry(std::string(400, 'L'))}}, std::string(259, 'L')},
      {"no language file at all", {}, BuiltIn},
      {"no X101 key in the section",
       {{"module/QORMLANG.enu", "[qrlantern Extender]\r\nX102=No\r\n"}}, BuiltIn},
      {"an entry XXX counts as none", {{"module/QORMLANG.enu", LanguageEntry("XXX")}}, BuiltIn},
  };
  int index = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const fs::path folder = FreshFolder("case-" + std::to_string(index++));
    for (const auto& [path, text] : c.files) WriteFile(folder / path, text);
    if (c.profileLanguage) WriteProfileStringA("INTL", "sLanguage", c.profileLanguage);
    const std::unique_ptr<ModuleHost> host = Load(folder, c.baseName);
    EXPECT_EQ(host->versionInfo().number, 44001);
    EXPECT_EQ(host->versionInfo().description, c.expected);
    if (c.files.empty()) {  // the search runs once: a file that comes later is not seen
      WriteFile(folder / "module" / "QORMLANG.enu", LanguageEntry("Too late"));
      EXPECT_EQ(host->versionInfo().description, BuiltIn);
    }
  }
}

}  // namespace
}  // namespace qrl
