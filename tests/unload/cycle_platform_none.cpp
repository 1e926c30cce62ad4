// The cycles in a build without a browser: documents only.
#include <unistd.h>

#include <fstream>

#include "tests/unload/cycle_platform.h"

namespace qrl::testing {
namespace {

class DocumentOnlyPlatform final : public CyclePlatform {
 public:
  bool HasBrowser() override { return false; }
  std::int32_t MakeWindow() override { return 0; }
  std::string WindowText(std::int32_t) override { return {}; }
  void ClearText(std::int32_t) override {}
  void Advance(std::int32_t, int) override {}
  void Drain() override {}
  std::size_t ResidentBytes() override {
    std::size_t pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  }
};

}  // namespace

CyclePlatform& ThisPlatform() {
  static DocumentOnlyPlatform platform;
  return platform;
}

}  // namespace qrl::testing
