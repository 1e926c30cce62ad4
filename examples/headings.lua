-- Prints the outline of an HTML file: every heading in document order,
-- indented by its level.
--
--   lantern examples/headings.lua [PAGE.html]
local page = arg[1] or arg[0]:match("^(.-)[^/\\]*$") .. "pages/sample.html"

-- Texts come back as the page holds them: squeeze the white space and decode
-- the few entities that headings tend to use.
local function clean(text)
  local entities = {amp = "&", lt = "<", gt = ">", quot = '"', apos = "'", nbsp = " "}
  text = text:gsub("&(%a+);", function(name) return entities[name] end)
  return (text:gsub("%s+", " "):gsub("^ ", ""):gsub(" $", ""))
end

local file = assert(io.open(page, "rb"))
wvparse(file:read("a"))
file:close()

-- An empty class list matches every node below the root, in document order.
for _, node in ipairs(wvgetelementsbyclass(0, "")) do
  local level = wvgettagname(node):lower():match("^h([1-6])$")
  if level then
    print(string.rep("  ", tonumber(level) - 1) .. clean(wvgetinnertext(node)))
  end
end
