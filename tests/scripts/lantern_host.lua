-- lantern's side of calls, against the small test module: how arguments are
-- checked and passed, how results, reports and named values reach a script.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

-- Constants are plain integers under their names without "@".
check.eq(answer, 42, "constant")
check.eq(type(echo), "function", "function global")

-- Counts and types are judged before the module is called, and the message
-- names the function, what it allows and the script's line. (Had silent(1)
-- reached the module, its missing result would show in lantern.faults().)
local function refused(message, f, ...) return {message, f, table.pack(...)} end
local refusals = {
  refused("echo takes 1 to 3 arguments, got 0", echo),
  refused("echo takes 1 to 3 arguments, got 0", echo, nil, nil),
  refused("echo takes 1 to 3 arguments, got 4", echo, 1, "a", "b", 4),
  refused("silent takes 0 arguments, got 1", silent, 1),
  refused("bad argument #1 to 'echo' (integer expected, got string)", echo, "1"),
  refused("bad argument #1 to 'echo' (number has no integer representation)", echo, 1.5),
  refused("bad argument #1 to 'echo' (integer out of the 32-bit range)", echo, 2147483648),
  refused("bad argument #1 to 'echo' (integer out of the 32-bit range)", echo, -2147483649),
  refused("bad argument #2 to 'echo' (string expected, got number)", echo, 1, 2),
  refused("bad argument #3 to 'echo' (string expected, got table)", echo, 1, "", {}),
  refused("bad argument #2 to 'echo' (string expected, got nil)", echo, 1, nil, "w"),
}
for _, case in ipairs(refusals) do
  check.raises(case[1], case[2], table.unpack(case[3], 1, case[3].n))
end
check.eq(echo(5, nil, nil), 5, "trailing nils are no arguments")
local ok, message = pcall(function() echo() end)
check.truthy(not ok and message:find("lantern_host.lua:%d+: echo takes"), "error names the line")

-- Integers pass whole, floats with an integer value too; texts pass as bytes;
-- wide texts go out as UTF-16 and come back as UTF-8.
check.eq(echo(-2147483648), -2147483648, "smallest integer")
check.eq(echo(2147483647), 2147483647, "largest integer")
check.eq(echo(7.0), 7, "float with an integer value")
check.eq(echo(1, ""), "", "empty text")
check.eq(echo(1, "bytes \xff\xfe as they are"), "bytes \xff\xfe as they are", "narrow bytes")
check.eq(echo(1, "a\0b"), "a", "a text ends at its first zero byte")
check.eq(echo(1, "", "caf\u{e9} \u{1F600}"), "caf\u{e9} \u{1F600}", "wide round trip")
check.eq(echo(1, "", ""), "", "empty wide text")
check.eq(echo(1, "", "bad \xff"), "bad \u{FFFD}", "malformed UTF-8 becomes U+FFFD")

-- Arrays are sequences; maps are tables whose pairs() follow the stored order.
check.eq(makelist(3), {0, 1, 2}, "integer array")
check.eq(makelist(0), {}, "empty array")
check.eq(makelist(2, "t"), {"t0", "t1"}, "text array")
local map = makemap("zeta=1;alpha=2;mid=3;alpha=4")
check.eq(map, {zeta = "1", alpha = "4", mid = "3"}, "map contents")
check.eq(check.pairs_in_order(map), {"zeta=1", "alpha=4", "mid=3"}, "map order")
check.eq(lantern.keys(map), {"zeta", "alpha", "mid"}, "lantern.keys")
check.eq(check.pairs_in_order(makemap("")), {}, "empty map")
check.raises("not a map result", lantern.keys, {})

-- A report becomes a Lua error after the call, catchable with pcall.
check.raises("lantern_host.lua", function() report("went wrong") end)
check.raises("went wrong", function() report("went wrong") end)

-- Failing services: the module's reports arrive as errors.
lantern.failservices{arrayservices = 7}
check.raises("DllArrayServices 7", makelist, 2)
lantern.failservices{arrhandler = {at = 1, status = -2}}
check.raises("DllArrHandler -2", makelist, 3)
lantern.failservices{mapstore = {at = 0, status = 9}}
check.raises("DllMapServices 9", makemap, "a=1")
lantern.failservices()
check.eq(makelist(1), {0}, "services work again")

-- A named value sets a global, or calls the global function of that name;
-- the function may call the module while the outer call is still running.
check.eq(setname("Fresh", "first"), {1, 2}, "setname result")
check.eq(Fresh, "first", "named value as a global")
local heard = {}
function Listener(value) heard[#heard + 1] = value .. ":" .. #makelist(4) end
check.eq(setname("Listener", "v"), {1, 2}, "outer array after a nested call")
check.eq(heard, {"v:4"}, "named value as a call")
local in_coroutine = coroutine.wrap(function()
  setname("Listener", "co")
  return "finished"
end)
check.eq(in_coroutine(), "finished", "a module call from a coroutine")
check.eq(heard, {"v:4", "co:4"}, "named value during a call from a coroutine")
function Listener() error("listener failed") end
check.raises("in the named value 'Listener'", setname, "Listener", "v")

-- The script's arguments, as a stand-alone Lua interpreter gives them.
check.eq(arg[1], "first-arg", "arg[1]")
check.eq(select("#", ...), 2, "chunk arguments")
check.eq(lantern.hostversion, 1011, "default host version")
check.eq(lantern.faults(), {}, "no contract faults")
print("lantern_host: ok")
