-- Lists the links of an HTML file: text, address and title.
--
--   lantern examples/links.lua [PAGE.html [PATTERN]]
--
-- PATTERN picks links by address: "https://*" starts so, "*.lua" ends so,
-- "*lua*" contains "lua", text without a star must match whole. The default
-- "*" takes every link.
local page = arg[1] or arg[0]:match("^(.-)[^/\\]*$") .. "pages/sample.html"
local pattern = arg[2] or "*"

local function clean(text)
  local entities = {amp = "&", lt = "<", gt = ">", quot = '"', apos = "'", nbsp = " "}
  text = text:gsub("&(%a+);", function(name) return entities[name] end)
  return (text:gsub("%s+", " "):gsub("^ ", ""):gsub(" $", ""))
end

local file = assert(io.open(page, "rb"))
wvparse(file:read("a"))
file:close()

for _, link in ipairs(wvgetlinksbyhref(0, pattern)) do
  -- All attributes at once, as a table from name to value.
  local attributes = wvgetattributes(link)
  local line = clean(wvgetinnertext(link)) .. " -> " .. (attributes.href or "")
  if attributes.title then line = line .. "  (" .. clean(attributes.title) .. ")" end
  print(line)
end
