-- 200 navigations in a row: each ends in NavComplete with the right page,
-- and the memory of this process (the host and the module) stays flat.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

local function resident_kib()
  for line in io.lines("/proc/self/status") do
    local kib = line:match("^VmRSS:%s+(%d+) kB")
    if kib then return tonumber(kib) end
  end
  error("no VmRSS in /proc/self/status")
end

local pages = {"one.html", "two.html"}
local function navigate(i)
  local page = pages[i % 2 + 1]
  wvnavigate(live.url(page))
  live.page_done("navigation " .. i)
  check.eq(live.text("name"), page:match("^(%a+)"), "page of navigation " .. i)
end

live.open("one.html")
-- Caches and pools fill during the first loads.
for i = 1, 40 do navigate(i) end
local before = resident_kib()
for i = 1, 200 do navigate(i) end
local after = resident_kib()
local growth = after - before
print(string.format("resident: %d KiB before, %d KiB after 200 navigations (%+d KiB)",
                    before, after, growth))
check.truthy(growth < 16 * 1024, "memory grew by " .. growth .. " KiB over 200 navigations")
