-- The page's posts come straight back to it as "message" events: the URL
-- that every new document posts, and whatever the page posts itself.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

live.open("echo.html")
wvexecutescript([[
  window.chrome.webview.postMessage("hello \u00e9 \"quoted\"");
  window.chrome.webview.postMessage({not: "a string"});
  window.chrome.webview.postMessage("last");
]])
lantern.pump(500)
wvrefreshdom()
live.page_done("refresh")

local echoes = {}
for _, item in ipairs(wvgetelementsbyclass(0, "echo")) do
  echoes[#echoes + 1] = wvgetinnertext(item)
end
-- Only strings come back; the object is refused on its way back.
check.eq(echoes, {live.url("echo.html"), "hello \xC3\xA9 \"quoted\"", "last"}, "echoes")
print("web message echo: passed")
