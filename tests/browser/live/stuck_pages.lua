-- Pages that hang or lose their process never hang the browser: each case
-- ends in "NavComplete" within its time, with the page that was asked for.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

-- Loads `page`; the document must then be the page named `name`, if given.
local function navigate_to(page, name, seconds)
  wvnavigate(live.url(page))
  live.page_done(page, seconds or 15)
  if name then check.eq(live.text("name"), name, "the document after loading " .. page) end
end

-- Kills this browser's page processes, lantern's WebKit descendants only.
local function kill_page_processes()
  local own = io.open("/proc/self/stat"):read("l"):match("^(%d+)")
  local parents, pids = {}, {}
  for line in io.popen("ps -eo pid=,ppid=,comm="):lines() do
    local pid, parent, name = line:match("^%s*(%d+)%s+(%d+)%s+(.*)$")
    parents[pid] = parent
    if name:find("WebKitWebProces", 1, true) then pids[#pids + 1] = pid end
  end
  for i = #pids, 1, -1 do
    local ancestor = parents[pids[i]]
    while ancestor and ancestor ~= own and ancestor ~= "0" do ancestor = parents[ancestor] end
    if ancestor ~= own then table.remove(pids, i) end
  end
  check.truthy(#pids > 0, "a page process to kill")
  os.execute("kill -9 " .. table.concat(pids, " "))
end

live.open("one.html")

-- A page whose script loops for ever, then a navigation.
wvexecutescript("setTimeout(function () { for (;;) {} }, 10)")
lantern.pump(200)
navigate_to("two.html", "two")

-- A stuck page, then a refresh: the capture fails and the browser goes on.
wvexecutescript("setTimeout(function () { for (;;) {} }, 10)")
lantern.pump(200)
wvrefreshdom()
lantern.pump(9000)
check.eq(lantern.text(live.window), "Nav", "the window after a failed capture")
navigate_to("one.html", "one")

-- A page that loops while it loads, then on its own.
navigate_to("stuck_on_load.html", nil, 20)
navigate_to("two.html", "two")

-- The page process killed before a load, and during one.
kill_page_processes()
lantern.pump(300)
navigate_to("one.html", "one")
wvnavigate(live.url("two.html"))
kill_page_processes()
live.page_done("a load whose process was killed", 15)
check.eq(live.text("name"), "two", "the page whose process was killed while it loaded")

-- A load that fails ends like any other.
navigate_to("no-such-page.html")

-- Fifty navigations without waiting: the last page stands.
for i = 1, 50 do wvnavigate(live.url(i % 2 == 0 and "one.html" or "two.html")) end
live.page_done("fifty navigations")
lantern.pump(1000)
check.eq(lantern.text(live.window), "NavComplete", "the window once the fifty have settled")
check.eq(live.text("name"), "one", "the last of fifty navigations")

-- A second browser over the live one.
check.eq(wvcreate(live.window, live.url("two.html"), live.window), 0, "the second wvcreate")
-- (The old page's NavComplete stays until the new browser's first load.)
live.page_done("the second browser's page", 15)
check.eq(live.text("name"), "two", "the second browser's page")

-- A page of 4 MB from a string.
local rows = {}
for i = 1, 70000 do rows[i] = string.format("<p class=\"row\">row %06d of the big page, with some text</p>", i) end
local big = "<!DOCTYPE html><html><body><h1 id=\"name\">big</h1>" .. table.concat(rows) .. "</body></html>"
wvnavigatestr(big)
live.page_done("the 4 MB page")
check.eq(#wvgetelementsbyclass(0, "row"), 70000, "rows of the 4 MB page")
