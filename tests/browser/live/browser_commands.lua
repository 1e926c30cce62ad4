-- The browser commands against the live browser, where the examples of the
-- functions reference do not go: the characters as they arrive, loads that
-- the page starts or a stop ends, and the page's own messages.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

-- Calls `command`, checks its result, waits for the page it loads and, if
-- given, checks that page's name.
local function load(what, result, page, command, ...)
  check.eq(command(...), result, what)
  live.page_done(what)
  if page then check.eq(live.text("name"), page, "the page after " .. what) end
end

live.open("one.html")
-- The page arrives as UTF-8; a character beyond the basic plane as its two
-- halves, three bytes each.
check.eq(live.text("chars"), "caf\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80", "characters")

-- A click inside the page is a navigation like any other.
load("the click", 1, "two", wvexecutescript,
     "setTimeout(function () { document.getElementById('next').click(); }, 0)")
-- Neither a print request nor a stopped load keeps the loop from its
-- NavComplete.
load("a page that prints", 0, "printed", wvnavigatestr,
     "<p id='name'>printed</p><script>window.print()</script>")
wvnavigate(live.url("one.html"))
load("wvstop", 1, nil, wvstop)

-- The page's posts come straight back to it as "message" events: the URL
-- that every new document posts, and whatever the page posts itself, but
-- only strings.
load("the echo page", 0, nil, wvnavigate, live.url("echo.html"))
wvexecutescript([[
  window.chrome.webview.postMessage("hello \u00e9 \"quoted\"");
  window.chrome.webview.postMessage({not: "a string"});
  window.chrome.webview.postMessage("last");
]])
lantern.pump(500)
load("the echoes", 0, nil, wvrefreshdom)
local echoes = {}
for _, item in ipairs(wvgetelementsbyclass(0, "echo")) do
  echoes[#echoes + 1] = wvgetinnertext(item)
end
check.eq(echoes, {live.url("echo.html"), "hello \xC3\xA9 \"quoted\"", "last"}, "echoes")
print("browser commands: all passed")
