-- Every browser command against the live browser.
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

local window = live.open("one.html")
check.eq(wvurl(), live.url("one.html"), "wvurl")
-- The page arrives as UTF-8; a character beyond the basic plane as its two
-- halves, three bytes each.
check.eq(live.text("chars"), "caf\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80", "characters")

check.eq(wvnavigate(live.url("two.html")), 0, "wvnavigate")
check.eq(lantern.text(window), "Nav", "progress right after wvnavigate")
live.page_done("wvnavigate")
check.eq(wvurl(), live.url("two.html"), "wvurl follows the page")
load("wvback", 1, "one", wvback)
load("wvforward", 1, "two", wvforward)
check.eq(wvforward(), -1, "wvforward at the end of the history")
load("wvhome", 1, "one", wvhome, live.url("one.html"))
load("wvnavigate again", 0, "two", wvnavigate, live.url("two.html"))
load("wvhome without its argument", 1, "one", wvhome)

-- A script changes the live page, not the document, until a refresh.
check.eq(wvexecutescript("document.getElementById('note').textContent = 'after'"), 1,
         "wvexecutescript")
lantern.pump(300)
check.eq(live.text("note"), "before", "the document before wvrefreshdom")
check.eq(wvrefreshdom(), 0, "wvrefreshdom")
check.eq(lantern.text(window), "Nav", "progress right after wvrefreshdom")
live.page_done("wvrefreshdom")
check.eq(live.text("note"), "after", "the document after wvrefreshdom")
load("wvreload", 1, nil, wvreload)
check.eq(live.text("note"), "before", "after wvreload")

-- A click inside the page is a navigation like any other.
load("the click", 1, "two", wvexecutescript,
     "setTimeout(function () { document.getElementById('next').click(); }, 0)")

check.eq(wvnavigatestr(""), -1, "wvnavigatestr of nothing")
load("wvnavigatestr", 0, "from a string", wvnavigatestr, "<p id='name'>from a string</p>")
-- Neither a print request, nor a missing file, nor a stopped load keeps
-- the loop from its NavComplete.
load("a page that prints", 0, "printed", wvnavigatestr,
     "<p id='name'>printed</p><script>window.print()</script>")
load("a missing file", 0, nil, wvnavigate, live.url("missing.html"))
wvnavigate(live.url("one.html"))
load("wvstop", 1, nil, wvstop)

check.eq(wvopendev(), 1, "wvopendev")
check.eq(wvstatusbar(1), 1, "wvstatusbar")
check.eq(wvcontextmenu(0), 1, "wvcontextmenu off")
check.eq(wvcontextmenu(1), 1, "wvcontextmenu on")
lantern.pump(200)

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

-- A second browser in the same window takes over.
load("second wvcreate", 0, "two", wvcreate, window, live.url("two.html"), window)
check.eq(wvurl(), live.url("two.html"), "wvurl of the second browser")
print("browser commands: all passed")
