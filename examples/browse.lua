-- A live browser in a window: open a bundled page, read it, follow a link,
-- go back, change the page with a script, and read the change.
--
--   lantern examples/browse.lua
--
-- Without a display lantern runs its own virtual one, so this works on a
-- server too. The browser tells the script how far a page has come through
-- the text of a window: "Nav" while it loads, "NavComplete" once the page
-- has been read into the document that the wv... functions search.

local here = arg[0]:match("^(.*)/[^/]*$") or "."
if here:sub(1, 1) ~= "/" then here = os.getenv("PWD") .. "/" .. here end

local function file_url(path)
  return "file://" .. path
end

local window = lantern.window{width = 1024, height = 768, title = "qrLantern browse"}

-- A command that loads a page sets "Nav" at once (wvnavigate) or when the
-- load begins (wvback, a link); either way the page is ready at "NavComplete".
local function wait_for_page(what)
  lantern.wait(window, "Nav", 10000)
  if not lantern.wait(window, "NavComplete", 30000) then
    error("the page did not arrive: " .. what)
  end
end

local function text_of_id(id)
  local handle = wvgetelementbyid(0, id)
  if handle == -1 then return nil end
  return wvgetinnertext(handle)
end

-- The browser opens the first page itself; its window gets the progress.
wvcreate(window, file_url(here .. "/browse/index.html"), window)
wait_for_page("the harbour page")

print("Page:    " .. wvurl())
print("Heading: " .. text_of_id("title"))
print("Status:  " .. text_of_id("status"))
for _, place in ipairs(wvgetelementsbyclass(0, "place")) do
  print("  place: " .. wvgetinnertext(place))
end

-- Follow the link: its address is relative to the page.
local link = wvgetelementbyid(0, "tides-link")
local target = wvurl():match("^(.*/)") .. wvgetattribute(link, "href")
print("Following the link to " .. target)
wvnavigate(target)
wait_for_page("the tides page")
print("Heading: " .. text_of_id("title"))
for _, row in ipairs(wvgetelementsbytagname(0, "tr")) do
  local cells = {}
  for _, cell in ipairs(wvgetchildren(row)) do
    cells[#cells + 1] = wvgetinnertext(cell)
  end
  print("  " .. table.concat(cells, " | "))
end

print("Going back: " .. wvback())
wait_for_page("the harbour page again")
print("Heading: " .. text_of_id("title") .. " (" .. wvurl() .. ")")

-- A script changes the live page; the document read earlier stays as it was
-- until it is refreshed.
wvexecutescript("document.getElementById('status').textContent = 'The tide is coming in.'; 'done'")
lantern.pump(200)
print("Status before the refresh: " .. text_of_id("status"))
wvrefreshdom()
wait_for_page("the refreshed document")
print("Status after the refresh:  " .. text_of_id("status"))
