-- What the live browser tests share: the pages beside this file, a window
-- with a browser in it, and waits that fail the test when a page never comes.
local here = arg[0]:match("^(.*)/[^/]*$")
package.path = here .. "/../../scripts/?.lua;" .. package.path
if here:sub(1, 1) ~= "/" then here = os.getenv("PWD") .. "/" .. here end
local live = {check = require("check")}

function live.url(name)
  return "file://" .. here .. "/pages/" .. name
end

-- "Nav" comes at once or when the load begins, then "NavComplete" within
-- `seconds` (30 unless given): a load that hangs fails here.
function live.page_done(what, seconds)
  lantern.wait(live.window, "Nav", 10000)
  if not lantern.wait(live.window, "NavComplete", (seconds or 30) * 1000) then
    error("no NavComplete for " .. what .. "; the window says " .. tostring(lantern.text(live.window)), 2)
  end
end

-- A browser on `page` in a new window that also takes the progress texts.
function live.open(page)
  live.window = lantern.window{width = 800, height = 600, title = "live test"}
  live.check.eq(wvcreate(live.window, live.url(page), live.window), 0, "wvcreate")
  live.page_done("the first page")
  return live.window
end

function live.text(id)
  local handle = wvgetelementbyid(0, id)
  return handle ~= -1 and wvgetinnertext(handle) or nil
end

return live
