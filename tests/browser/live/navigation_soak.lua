-- 200 navigations in a row: each ends in NavComplete with the right page,
-- and the memory of this process (the host and the module) stays flat.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")

local function resident_kib()
  return tonumber(io.open("/proc/self/status"):read("a"):match("VmRSS:%s+(%d+) kB"))
end

local function navigate(i)
  local page = i % 2 == 0 and "one" or "two"
  wvnavigate(live.url(page .. ".html"))
  live.page_done("navigation " .. i)
  live.check.eq(live.text("name"), page, "page of navigation " .. i)
end

live.open("one.html")
-- Caches and pools fill during the first loads.
for i = 1, 40 do navigate(i) end
local before = resident_kib()
for i = 1, 200 do navigate(i) end
local growth = resident_kib() - before
live.check.truthy(growth < 16 * 1024, "memory grew by " .. growth .. " KiB over 200 navigations")
