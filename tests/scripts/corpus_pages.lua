-- Real pages end to end: parse each, then check that the commands agree with
-- one another on what the page holds, with arrays of thousands of handles.
-- The folder comes from QRL_CORPUS or the first argument; without it the
-- test is skipped (exit status 77).
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

local folder = os.getenv("QRL_CORPUS")
if not folder or folder == "" then folder = arg[1] end
local pages = {"small.html", "api.html", "book.html"}

local function read(path)
  local file = io.open(path, "rb")
  if not file then return nil end
  local bytes = file:read("a")
  file:close()
  return bytes
end

if not folder or not read(folder .. "/" .. pages[1]) then
  print("corpus_pages: no corpus at " .. tostring(folder) .. "; skipped")
  os.exit(77)
end

for _, name in ipairs(pages) do
  local markup = read(folder .. "/" .. name)
  check.truthy(markup, name .. " is readable")
  check.eq(wvparse(markup), 0, name .. ": wvparse")

  -- A star pattern and an attribute search without a pattern both take
  -- every a element, whether it bears an address or not.
  local anchors = wvgetelementsbytagname(0, "a")
  check.eq(#wvgetelementsbyattribute(0, "a", "href"), #anchors, name .. ": every a by attribute")
  check.eq(#wvgetlinksbyhref(0, "*"), #anchors, name .. ": every a by address")

  -- The handles of one search come out consecutive and ascending.
  for i = 2, #anchors do
    check.eq(anchors[i], anchors[i - 1] + 1, name .. ": consecutive handles")
  end

  -- Walking up from each link ends at the root, named by a handle with an
  -- empty tag name, in a bounded number of steps.
  wvclear()
  local walked = 0
  for i, link in ipairs(wvgetelementsbytagname(0, "a")) do
    if i % 25 == 1 then
      local node, steps = link, 0
      while true do
        local parent = wvgetparent(node)
        if parent == -1 then break end
        node, steps = parent, steps + 1
        check.truthy(steps < 10000, name .. ": the walk up ends")
      end
      check.eq(wvgettagname(node), "", name .. ": the walk ends at the root")
      walked = walked + 1
    end
  end

  -- The whole text of the page, and each top-level element's markup, are
  -- texts; the document's markup holds every top-level element's markup.
  check.eq(type(wvgetinnertext(0)), "string", name .. ": text of the page")
  local whole = wvgetouterhtml(0)
  local html = wvgetelementsbytagname(0, "html")[1]
  check.truthy(html and whole:find(wvgetouterhtml(html), 1, true), name .. ": html in the page")
  print(string.format("corpus_pages: %s: %d links, %d walks", name, #anchors, walked))
end
check.eq(lantern.faults(), {}, "no contract faults")
print("corpus_pages: ok")
