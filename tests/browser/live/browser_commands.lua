-- Every browser command against the live browser.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

local window = live.open("one.html")
check.eq(wvurl(), live.url("one.html"), "wvurl")
check.eq(live.text("name"), "one", "first page")
-- The page arrives as UTF-8; a character beyond the basic plane as its two
-- halves, three bytes each.
check.eq(live.text("chars"), "caf\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80", "characters")

check.eq(wvnavigate(live.url("two.html")), 0, "wvnavigate")
check.eq(lantern.text(window), "Nav", "progress right after wvnavigate")
live.page_done("two")
check.eq(live.text("name"), "two", "after wvnavigate")
check.eq(wvurl(), live.url("two.html"), "wvurl follows the page")

check.eq(wvback(), 1, "wvback")
live.page_done("back")
check.eq(live.text("name"), "one", "after wvback")
check.eq(wvforward(), 1, "wvforward")
live.page_done("forward")
check.eq(live.text("name"), "two", "after wvforward")
check.eq(wvforward(), -1, "wvforward at the end of the history")

check.eq(wvhome(live.url("one.html")), 1, "wvhome")
live.page_done("home")
check.eq(live.text("name"), "one", "after wvhome")
wvnavigate(live.url("two.html"))
live.page_done("two again")
check.eq(wvhome(), 1, "wvhome without its argument")
live.page_done("home again")
check.eq(live.text("name"), "one", "home is the last home")

-- A script changes the live page, not the document, until a refresh.
check.eq(wvexecutescript("document.getElementById('note').textContent = 'after'"), 1,
         "wvexecutescript")
lantern.pump(300)
check.eq(live.text("note"), "before", "the document before wvrefreshdom")
check.eq(wvrefreshdom(), 0, "wvrefreshdom")
check.eq(lantern.text(window), "Nav", "progress right after wvrefreshdom")
live.page_done("refresh")
check.eq(live.text("note"), "after", "the document after wvrefreshdom")

-- A reload brings back the page from its file.
check.eq(wvreload(), 1, "wvreload")
live.page_done("reload")
check.eq(live.text("note"), "before", "after wvreload")

-- A click inside the page is a navigation like any other.
wvexecutescript("setTimeout(function () { document.getElementById('next').click(); }, 0)")
live.page_done("the link")
check.eq(live.text("name"), "two", "after the click")

check.eq(wvnavigatestr(""), -1, "wvnavigatestr of nothing")
check.eq(wvnavigatestr("<p id='name'>from a string</p>"), 0, "wvnavigatestr")
live.page_done("string")
check.eq(live.text("name"), "from a string", "after wvnavigatestr")

-- A page that asks to be printed does not stop the loop with a dialog.
wvnavigatestr("<p id='name'>printed</p><script>window.print()</script>")
live.page_done("a page that prints")
check.eq(live.text("name"), "printed", "after a print request")

-- A load that fails still ends in NavComplete, over what is on show.
wvnavigate(live.url("missing.html"))
live.page_done("a missing file")

-- A load stopped before it begins still ends in NavComplete.
wvnavigate(live.url("one.html"))
check.eq(wvstop(), 1, "wvstop")
live.page_done("the stopped load")

check.eq(wvopendev(), 1, "wvopendev")
check.eq(wvstatusbar(1), 1, "wvstatusbar")
check.eq(wvcontextmenu(0), 1, "wvcontextmenu off")
check.eq(wvcontextmenu(1), 1, "wvcontextmenu on")
lantern.pump(200)

-- A second browser in the same window takes over.
check.eq(wvcreate(window, live.url("two.html"), window), 0, "second wvcreate")
live.page_done("the second browser")
check.eq(live.text("name"), "two", "the second browser's page")
check.eq(wvurl(), live.url("two.html"), "wvurl of the second browser")
print("browser commands: all passed")
