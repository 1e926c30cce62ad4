// What the unload cycles need of the system they run on: a window for the
// browser and its progress texts, a way to let the browser work, and the
// process's memory. One file per system implements it; the build picks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qrl::testing {

class CyclePlatform {
 public:
  virtual ~CyclePlatform() = default;
  // Whether a browser can be made here: a build with one, and a display.
  virtual bool HasBrowser() = 0;
  // A window as a script passes it, for the browser and its progress texts.
  virtual std::int32_t MakeWindow() = 0;
  virtual std::string WindowText(std::int32_t window) = 0;
  virtual void ClearText(std::int32_t window) = 0;
  // Lets the browser go `stage` steps into a load that was just asked for:
  // 0 leaves it where it is, higher stages get further (the creation chain,
  // the navigation, the capture), and FinishedStage waits for "NavComplete".
  virtual void Advance(std::int32_t window, int stage) = 0;
  // Runs what the browser still owes after the module was let go: its late
  // events, answers and releases reach the module's code now.
  virtual void Drain() = 0;
  virtual std::size_t ResidentBytes() = 0;

  static constexpr int FinishedStage = 3;
};

CyclePlatform& ThisPlatform();

}  // namespace qrl::testing
