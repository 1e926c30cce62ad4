-- Prints a table of an HTML file as aligned text columns.
--
--   lantern examples/table.lua [PAGE.html [N]]
--
-- N picks the N-th table of the page (default 1).
local page = arg[1] or arg[0]:match("^(.-)[^/\\]*$") .. "pages/sample.html"
local which = math.tointeger(tonumber(arg[2] or "1"))

local function clean(text)
  local entities = {amp = "&", lt = "<", gt = ">", quot = '"', apos = "'", nbsp = " "}
  text = text:gsub("&(%a+);", function(name) return entities[name] end)
  return (text:gsub("%s+", " "):gsub("^ ", ""):gsub(" $", ""))
end

local file = assert(io.open(page, "rb"))
wvparse(file:read("a"))
file:close()

local tables = wvgetelementsbytagname(0, "table")
local chosen = tables[which]
if not chosen then
  io.stderr:write(page .. " has " .. #tables .. " table(s)\n")
  os.exit(1)
end

-- The cells of each row, header and data cells alike; the children of a row
-- also hold the white space between the cells, as text nodes.
local rows, widths = {}, {}
for _, row in ipairs(wvgetelementsbytagname(chosen, "tr")) do
  local cells = {}
  for _, cell in ipairs(wvgetchildren(row)) do
    local tag = wvgettagname(cell):lower()
    if tag == "td" or tag == "th" then
      local text = clean(wvgetinnertext(cell))
      cells[#cells + 1] = text
      widths[#cells] = math.max(widths[#cells] or 0, utf8.len(text) or #text)
    end
  end
  rows[#rows + 1] = cells
end

for number, cells in ipairs(rows) do
  local padded = {}
  for column, text in ipairs(cells) do
    padded[column] = text .. string.rep(" ", widths[column] - (utf8.len(text) or #text))
  end
  print((table.concat(padded, " | "):gsub("%s+$", "")))
  if number == 1 then
    local rules = {}
    for column, width in ipairs(widths) do rules[column] = string.rep("-", width) end
    print(table.concat(rules, "-+-"))
  end
end
