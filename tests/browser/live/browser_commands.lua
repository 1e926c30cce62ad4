-- The live browser where the reference's examples do not go: characters as
-- they arrive, loads that the page starts or a stop ends, the page's messages.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

-- Checks the result of `command`, then the name of the page it loads.
local function load(what, result, page, command, ...)
  check.eq(command(...), result, what)
  live.page_done(what)
  if page then check.eq(live.text("name"), page, "the page after " .. what) end
end

live.open("one.html")
-- UTF-8, with a character beyond the basic plane as two halves of 3 bytes.
check.eq(live.text("chars"), "caf\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80", "characters")

-- A click inside the page is a navigation like any other.
load("the click", 1, "two", wvexecutescript,
     "setTimeout(function () { document.getElementById('next').click(); }, 0)")
-- Neither a print request nor a stopped load keeps NavComplete away.
load("a page that prints", 0, "printed", wvnavigatestr,
     "<p id='name'>printed</p><script>window.print()</script>")
wvnavigate(live.url("one.html"))
load("wvstop", 1, nil, wvstop)

-- The page's posts come straight back as "message" events: the URL that each
-- new document posts, and the strings that the page posts itself.
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
