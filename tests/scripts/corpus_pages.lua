-- Real pages end to end: arrays of thousands of handles reach the script
-- whole and in order, and work in later calls. The folder comes from
-- QRL_CORPUS or the first argument; without it the test is skipped (77).
package.path = arg[0]:match("^(.-)[^/\\]*$") .. "?.lua;" .. package.path
local check = require("check")

local folder = os.getenv("QRL_CORPUS")
if not folder or folder == "" then folder = arg[1] end
local function read(name)
  local file = folder and io.open(folder .. "/" .. name, "rb")
  return file and file:read("a")
end
if not read("small.html") then
  print("corpus_pages: no corpus at " .. tostring(folder) .. "; skipped")
  os.exit(77)
end

for _, name in ipairs({"small.html", "api.html", "book.html"}) do
  check.eq(wvparse(read(name)), 0, name .. ": wvparse")
  -- A star pattern and an attribute search without a pattern both take
  -- every a element, whether it bears an address or not.
  local anchors = wvgetelementsbytagname(0, "a")
  check.eq(#wvgetelementsbyattribute(0, "a", "href"), #anchors, name .. ": every a by attribute")
  check.eq(#wvgetlinksbyhref(0, "*"), #anchors, name .. ": every a by address")
  for i = 2, #anchors do check.eq(anchors[i], anchors[i - 1] + 1, name .. ": handles in order") end
  check.eq(wvgettagname(anchors[#anchors]), "a", name .. ": the last handle in a later call")
  print(string.format("corpus_pages: %s: %d links", name, #anchors))
end
check.eq(lantern.faults(), {}, "no contract faults")
print("corpus_pages: ok")
