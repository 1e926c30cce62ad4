-- Every document command with every kind of handle, before any document was
-- loaded and after: nothing may crash, and a handle that names no entry acts
-- as -1 does for that command.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

local INT_MIN, INT_MAX = -2147483648, 2147483647

-- Each command with the arguments that follow the handle.
local commands = {
  {wvsetinnertext, "wvsetinnertext", "text"},
  {wvgetelementbyid, "wvgetelementbyid", "x"},
  {wvgetelementsbyclass, "wvgetelementsbyclass", "x"},
  {wvgetelementsbyclass, "wvgetelementsbyclass/filtered", "x", "p", 1, 1},
  {wvgetattribute, "wvgetattribute", "id"},
  {wvgetattributes, "wvgetattributes"},
  {wvgetclasses, "wvgetclasses"},
  {wvgetelementsbytagname, "wvgetelementsbytagname", "p"},
  {wvgetelementsbyattribute, "wvgetelementsbyattribute", "a", "href", "*", 1},
  {wvgetinnertext, "wvgetinnertext"},
  {wvgetinnerhtml, "wvgetinnerhtml"},
  {wvgetouterhtml, "wvgetouterhtml"},
  {wvgetlinksbyhref, "wvgetlinksbyhref", "*"},
  {wvgetlinksbytext, "wvgetlinksbytext", "*", 0},
  {wvgetimagesbysrc, "wvgetimagesbysrc", "*"},
  {wvgetparent, "wvgetparent"},
  {wvgetsiblingnext, "wvgetsiblingnext"},
  {wvgetsiblingprev, "wvgetsiblingprev"},
  {wvgettagname, "wvgettagname"},
  {wvgetchildren, "wvgetchildren"},
  {wvgetchildren, "wvgetchildren/filtered", "p"},
}

local function run(command, handle)
  return command[1](handle, table.unpack(command, 3))
end

-- Before any load there is no element at all: every handle, 0 included,
-- acts as -1 does.
for _, command in ipairs(commands) do
  local none = run(command, -1)
  for _, handle in ipairs({INT_MIN, -2, 0, 1, 2, INT_MAX}) do
    check.eq(run(command, handle), none, command[2] .. "(" .. handle .. ") before a load")
  end
end
check.eq(wvclear(), 0, "wvclear before a load")
check.eq(wvgetinnertext(0), -1, "still no document after wvclear")

wvparse('<div id="d" class="x"><p id="q" class="x">a<a href="/l">l</a></p>' ..
        '<img src="i.png"> tail</div>')

-- After a load: each call starts from a table of known size, so that
-- last + 1 names no entry when the command runs.
local function fresh_table()
  wvclear()
  return #wvgetelementsbyclass(0, "")
end
for _, command in ipairs(commands) do
  fresh_table()
  local none = run(command, -1)
  for _, handle in ipairs({INT_MIN, -2}) do
    fresh_table()
    check.eq(run(command, handle), none, command[2] .. "(" .. handle .. ")")
  end
  for _, beyond in ipairs({1, INT_MAX}) do
    local last = fresh_table()
    local handle = beyond == 1 and last + 1 or beyond
    check.eq(run(command, handle), none, command[2] .. "(" .. handle .. ")")
  end
  for _, pick in ipairs({"root", "first", "last"}) do
    local last = fresh_table()
    local handle = ({root = 0, first = 1, last = last})[pick]
    local result = run(command, handle)
    check.truthy(({number = true, string = true, table = true})[type(result)],
                 command[2] .. "(" .. pick .. ") gives a result")
  end
end

-- A second load makes every old handle stale; none of them may crash.
local last = fresh_table()
wvparse("<p>new</p>")
for _, command in ipairs(commands) do
  for handle = 1, last + 1 do run(command, handle) end
end

check.eq(lantern.faults(), {}, "no contract faults")
print("handle_sweep: ok")
