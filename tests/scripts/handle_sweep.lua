-- Every document command with every handle a script can hold: nothing may
-- crash (under the sanitizers too), and a handle that names no entry acts as
-- -1 does. The exact results are the handler tests' business.
package.path = arg[0]:match("^(.-)[^/\\]*$") .. "?.lua;" .. package.path
local check = require("check")

-- Each command with the arguments that follow the handle.
local commands = {
  {"wvsetinnertext", "text"}, {"wvgetelementbyid", "x"}, {"wvgetelementsbyclass", "x"},
  {"wvgetelementsbyclass", "x", "p", 1, 1}, {"wvgetattribute", "id"}, {"wvgetattributes"},
  {"wvgetclasses"}, {"wvgetelementsbytagname", "p"},
  {"wvgetelementsbyattribute", "a", "href", "*", 1}, {"wvgetinnertext"}, {"wvgetinnerhtml"},
  {"wvgetouterhtml"}, {"wvgetlinksbyhref", "*"}, {"wvgetlinksbytext", "*", 0},
  {"wvgetimagesbysrc", "*"}, {"wvgetparent"}, {"wvgetsiblingnext"}, {"wvgetsiblingprev"},
  {"wvgettagname"}, {"wvgetchildren"}, {"wvgetchildren", "p"},
}

local function run(command, handle) return _ENV[command[1]](handle, table.unpack(command, 2)) end

wvparse('<div id="d" class="x"><p id="q" class="x">a<a href="/l">l</a></p>' ..
        '<img src="i.png"> tail</div>')

-- Each call starts from a table of known size: last + 1 names no entry.
local function fresh_table()
  wvclear()
  return #wvgetelementsbyclass(0, "")
end
for _, command in ipairs(commands) do
  local last = fresh_table()
  local none, what = run(command, -1), table.concat(command, ",") .. " on "
  for _, handle in ipairs({-2147483648, -2, last + 1, 2147483647}) do
    fresh_table()
    check.eq(run(command, handle), none, what .. handle)
  end
  for handle = 0, last do
    fresh_table()
    check.truthy(run(command, handle) ~= nil, what .. handle .. " gives a result")
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
