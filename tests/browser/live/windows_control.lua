-- The Windows component end to end under wine, against the autopilot web
-- control of tests/windows/webview2/autopilot: lantern.exe and qrlantern.dll
-- find that WebView2Loader.dll beside them, and this script drives it as it
-- would a real browser. Nothing but the script steers it.
--
--   wine lantern.exe Z:\path\to\tests\browser\live\windows_control.lua

-- This script's folder, with either separator; a relative one is taken from
-- the current folder, which wine passes on as a Unix path in PWD.
local function script_folder()
  local folder = (arg[0]:match("^(.*)[/\\][^/\\]*$") or "."):gsub("\\", "/")
  if folder:find("^/") or folder:find("^%a:/") then return folder end
  local current = assert(os.getenv("PWD"), "the script's path " .. arg[0] .. " is relative and PWD is not set")
  return (current:gsub("\\", "/")) .. "/" .. folder
end

local pages = script_folder() .. "/pages/"

-- file:///C:/... for a drive path, file:///... for a Unix one; a character
-- that a URL can't hold as it is becomes a percent escape.
local function page_url(name)
  local path = pages .. name
  if path:find("^%a:") then path = "/" .. path end
  return "file://" .. (path:gsub("[%%%s#?]", function(c) return string.format("%%%02X", c:byte()) end))
end

local window = lantern.window{width = 800, height = 600, title = "windows control"}

local function step(text) print("windows control: " .. text) end

-- Waits for the page that a command began. Only wvNavigate sets "Nav" itself;
-- after the others the window may still say "NavComplete" from the page
-- before until the load begins, so they wait for "Nav" first.
local function wait_page(what, nav_comes_later)
  if nav_comes_later then lantern.wait(window, "Nav", 10000) end
  assert(lantern.wait(window, "NavComplete", 10000),
         "no NavComplete after " .. what .. "; the window says " .. tostring(lantern.text(window)))
end

local function text_of(id)
  local handle = wvgetelementbyid(0, id)
  return handle ~= -1 and wvgetinnertext(handle) or nil
end

-- The page on show: the browser's address and the heading of the document.
local function expect_page(what, url, name)
  local shown, heading = wvurl(), text_of("name")
  assert(shown == url, string.format("%s: the browser shows %s, not %s", what, shown, url))
  assert(heading == name, string.format("%s: the heading is %s, not %s", what, tostring(heading), tostring(name)))
end

local one, two = page_url("one.html"), page_url("two.html")

step("a browser on one.html")
assert(wvcreate(window, one, window) == 0, "wvcreate")
wait_page("wvcreate", true)
expect_page("the first page", one, "one")
assert(wvback() == -1 and wvforward() == -1, "the first page has no history either way")

step("the links of one.html")
local links = wvgetlinksbyhref(0, "two.html")
assert(#links == 1, "one link to two.html, not " .. #links)
assert(wvgetattribute(links[1], "id") == "next" and wvgetinnertext(links[1]) == "two",
       "the link to two.html is #next, with the text 'two'")
assert(#wvgetlinksbytext(0, "two") == 1, "one link whose text is 'two'")

step("the link to two.html")
assert(wvnavigate(page_url(wvgetattribute(links[1], "href"))) == 0, "wvnavigate")
wait_page("wvnavigate")
expect_page("after the link", two, "two")

step("back to one.html")
assert(wvback() == 1, "wvback from two.html")
wait_page("wvback", true)
expect_page("after wvback", one, "one")

step("forward to two.html")
assert(wvforward() == 1, "wvforward from one.html")
wait_page("wvforward", true)
expect_page("after wvforward", two, "two")
assert(wvforward() == -1, "nothing ahead of the last page")

step("reload two.html")
-- Handles count on until a capture replaces the document, then start at 1.
local before = wvgetelementbyid(0, "name")
assert(before > 1, "a handle of the old document beyond the first, not " .. before)
assert(wvreload() == 1, "wvreload")
wait_page("wvreload", true)
assert(wvgetelementbyid(0, "name") == 1, "the reload brought a new document")
expect_page("after wvreload", two, "two")

step("a file that is not there")
assert(wvnavigate(page_url("no-such-page.html")) == 0, "wvnavigate to a missing file")
wait_page("the missing file")
assert(text_of("name") == nil, "the failed load's page replaced two.html in the document")
assert(wvback() == 1, "the failed load is in the history")
wait_page("wvback from the failed load", true)
expect_page("back from the failed load", two, "two")

print("windows control: all passed")
