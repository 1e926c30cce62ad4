// Query with code 1 on Windows, with real files: the version resource, the
// host's QORSHELL.INI, the profile's language, and language files beside the
// DLL or on the search path. Each case loads a copy of the DLL of its own,
// which is a module of its own with a language search not yet made.
//
// Runs under wine in a prefix of its own: it writes into the Windows folder
// and the profile.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "lantern/module_host.h"

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
std::string LanguageEntry(const std::string& baseName, const std::string& text) {
  return "[" + baseName + " Extender]\r\nX101=" + text + "\r\n";
}

class VersionAndDescription : public ::testing::Test {
 public:
  void SetUp() override { Prepare(""); }

  // A folder of the case's own, and no language setting anywhere. A folder
  // is never reused: a DLL that was loaded from it cannot be deleted.
  void Prepare(const std::string& suffix) {
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    folder_ = fs::temp_directory_path() / ("qrl-version-" + name + suffix);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    fs::create_directories(ModuleFolder());
    SetCurrentDirectoryA(folder_.string().c_str());
    fs::remove(WindowsFolder() / "QORSHELL.INI", ignored);
    WriteProfileStringA("INTL", "sLanguage", nullptr);
  }

  // A copy of the DLL as `baseName`.dll in the case's module folder.
  std::unique_ptr<ModuleHost> Load(const std::string& baseName = "qrlantern") const {
    const fs::path copy = ModuleFolder() / (baseName + ".dll");
    fs::copy_file(QRL_MODULE_PATH, copy, fs::copy_options::overwrite_existing);
    return ModuleHost::Load(copy.string());
  }

  static std::string Describe(ModuleHost& host) { return host.versionInfo().description; }

  fs::path ModuleFolder() const { return folder_ / "module"; }

  fs::path folder_;
};

TEST_F(VersionAndDescription, VersionComesFromTheResourceWhateverTheBuffer) {
  auto host = Load();
  // A buffer of 0 bytes is not touched; the others get as much of the text
  // as fits before their zero.
  const struct {
    HostWord size;
    std::string held;
  } buffers[] = {{0, "##########"}, {1, ""}, {10, "DllMapSer"}};
  for (const auto& b : buffers) {
    char buffer[11] = "##########";
    EXPECT_EQ(host->query(1, buffer, b.size), 44001) << b.size;
    EXPECT_EQ(std::string(buffer), b.held) << b.size;
  }
  EXPECT_EQ(host->query(1, nullptr, 260), 44001);
  EXPECT_EQ(Describe(*host), BuiltIn);
}

// Where the language comes from, and where its file is found.
TEST_F(VersionAndDescription, LanguageFileFollowsTheHostsLanguageSetting) {
  const struct {
    const char* why;
    std::function<void(const VersionAndDescription&)> setUp;
    std::string expected;
  } cases[] = {
      {"no setting anywhere: enu beside the module",
       [](const auto& t) { WriteFile(t.ModuleFolder() / "QORMLANG.enu", LanguageEntry("qrlantern", "English")); },
       "English"},
      {"QORSHELL.INI in the Windows folder names the language",
       [](const auto& t) {
         WriteFile(WindowsFolder() / "QORSHELL.INI", "[MAIN]\r\nLanguage=deu\r\n");
         WriteFile(t.ModuleFolder() / "QORMLANG.enu", LanguageEntry("qrlantern", "English"));
         WriteFile(t.ModuleFolder() / "QORMLANG.deu", LanguageEntry("qrlantern", "Deutsch"));
       },
       "Deutsch"},
      {"the profile names it when QORSHELL.INI says XXX",
       [](const auto& t) {
         WriteFile(WindowsFolder() / "QORSHELL.INI", "[MAIN]\r\nLanguage=XXX\r\n");
         WriteProfileStringA("INTL", "sLanguage", "fra");
         WriteFile(t.ModuleFolder() / "QORMLANG.fra", LanguageEntry("qrlantern", "Fran~cais"));
       },
       "Fran\ncais"},
      {"a file only on the search path, by its bare name",
       [](const auto& t) {
         WriteFile(t.folder_ / "QORMLANG.enu", LanguageEntry("qrlantern", "Found|by search"));
       },
       "Found\tby search"},
      {"no language file at all", [](const auto&) {}, BuiltIn},
      {"no section for this extender",
       [](const auto& t) { WriteFile(t.ModuleFolder() / "QORMLANG.enu", LanguageEntry("other", "Other")); },
       BuiltIn},
      {"no X101 key",
       [](const auto& t) { WriteFile(t.ModuleFolder() / "QORMLANG.enu", "[qrlantern Extender]\r\nX102=No\r\n"); },
       BuiltIn},
      {"an entry XXX counts as none",
       [](const auto& t) { WriteFile(t.ModuleFolder() / "QORMLANG.enu", LanguageEntry("qrlantern", "XXX")); },
       BuiltIn},
      {"an entry longer than 259 bytes is cut",
       [](const auto& t) {
         WriteFile(t.ModuleFolder() / "QORMLANG.enu", LanguageEntry("qrlantern", std::string(400, 'L')));
       },
       std::string(259, 'L')},
  };
  int index = 0;
  for (const auto& c : cases) {
    Prepare("-" + std::to_string(index++));
    c.setUp(*this);
    auto host = Load();
    EXPECT_EQ(Describe(*host), c.expected) << c.why;
  }
}

TEST_F(VersionAndDescription, SectionIsNamedForTheModulesOwnFileName) {
  WriteFile(ModuleFolder() / "QORMLANG.enu", LanguageEntry("Lamps", "Lamp keeper"));
  auto host = Load("Lamps");
  EXPECT_EQ(Describe(*host), "Lamp keeper");
}

// The search runs once per process: a file that comes later is not seen, and
// the built-in text stands.
TEST_F(VersionAndDescription, LanguageFileThatAppearsLaterIsNotSeen) {
  auto host = Load();
  EXPECT_EQ(Describe(*host), BuiltIn);
  WriteFile(ModuleFolder() / "QORMLANG.enu", LanguageEntry("qrlantern", "Too late"));
  EXPECT_EQ(Describe(*host), BuiltIn);
}

}  // namespace
}  // namespace qrl
