-- What the live browser tests share: the pages beside this file, a window
-- with a browser in it, and waits that fail the test when a page never comes.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/../../scripts/?.lua;" .. package.path
local check = require("check")

local live = {check = check}

local here = arg[0]:match("^(.*)/[^/]*$")
if here:sub(1, 1) ~= "/" then here = os.getenv("PWD") .. "/" .. here end
live.pages = here .. "/pages"

function live.url(name)
  return "file://" .. live.pages .. "/" .. name
end

-- A browser on `page` in a new window that also takes the progress texts.
function live.open(page)
  live.window = lantern.window{width = 800, height = 600, title = "live test"}
  check.eq(wvcreate(live.window, live.url(page), live.window), 0, "wvcreate")
  live.page_done("the first page")
  return live.window
end

-- For a command that loads a page: "Nav" comes at once or when the load
-- begins, "NavComplete" once the page is the current document.
function live.page_done(what)
  lantern.wait(live.window, "Nav", 10000)
  if not lantern.wait(live.window, "NavComplete", 30000) then
    error("no NavComplete for " .. what .. "; the window says " .. tostring(lantern.text(live.window)), 2)
  end
end

function live.text(id)
  local handle = wvgetelementbyid(0, id)
  if handle == -1 then return nil end
  return wvgetinnertext(handle)
end

return live
