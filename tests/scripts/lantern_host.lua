-- lantern's side of calls, against the small test module: arguments, results,
-- reports, named values and the breaches of the host contract it notices.
package.path = arg[0]:match("^(.-)[^/\\]*$") .. "?.lua;" .. package.path
local check = require("check")

check.eq(answer, 42, "a constant is a plain integer under its name without @")

-- Counts are judged before the module is called: had silent(1) reached it,
-- its missing result would show in lantern.faults().
check.raises("silent takes 0 arguments, got 1", silent, 1)
check.raises("echo takes 1 to 3 arguments, got 0", echo, nil, nil)
check.raises("bad argument #1 to 'echo' (integer expected, got string)", echo, "1")
check.raises("bad argument #1 to 'echo' (number has no integer representation)", echo, 1.5)
check.raises("bad argument #1 to 'echo' (integer out of the 32-bit range)", echo, 2147483648)
check.raises("bad argument #1 to 'echo' (integer out of the 32-bit range)", echo, -2147483649)
check.raises("bad argument #2 to 'echo' (string expected, got number)", echo, 1, 2)
check.raises("bad argument #3 to 'echo' (string expected, got table)", echo, 1, "", {})
check.raises("bad argument #2 to 'echo' (string expected, got nil)", echo, 1, nil, "w")
local ok, message = pcall(function() echo() end)
check.truthy(not ok and message:find("lantern_host.lua:%d+: echo takes"), "error names the line")

check.eq(echo(5, nil, nil), 5, "trailing nils are no arguments")
check.eq({echo(-2147483648), echo(2147483647), echo(7.0)}, {-2147483648, 2147483647, 7},
         "integers at the ends of the range, and a float with an integer value")
check.eq(echo(1, "bytes \xff\xfe as they are"), "bytes \xff\xfe as they are", "narrow bytes")
check.eq(echo(1, "a\0b"), "a", "a text ends at its first zero byte")
check.eq(echo(1, "", "caf\u{e9} \u{1F600}"), "caf\u{e9} \u{1F600}", "wide round trip")
check.eq(echo(1, "", "bad \xff"), "bad \u{FFFD}", "malformed UTF-8 becomes U+FFFD")

-- Arrays are sequences; maps are tables whose pairs() follow the stored order.
check.eq(makelist(3), {0, 1, 2}, "array")
local map = makemap("z1a2m3a4")
local in_order = {}
for key, value in pairs(map) do in_order[#in_order + 1] = key .. value end
check.eq(in_order, {"z1", "a4", "m3"}, "map order")
check.eq(lantern.keys(map), {"z", "a", "m"}, "lantern.keys")
check.eq(lantern.keys(makemap("")), {}, "empty map")
check.raises("not a map result", lantern.keys, {})

-- A failing service's report becomes a catchable error.
lantern.failservices{arrhandler = {at = 1, status = -2}}
check.raises("DllArrHandler -2", makelist, 3)
lantern.failservices()
check.eq(makelist(1), {0}, "services work again")

-- A named value sets a global, or calls the global function of that name;
-- the function may call the module while the outer call is still running.
check.eq(setname("Fresh", "first"), {1, 2}, "setname result")
check.eq(Fresh, "first", "named value as a global")
local heard = {}
function Listener(value) heard[#heard + 1] = value .. ":" .. #makelist(4) end
check.eq(setname("Listener", "v"), {1, 2}, "outer array after a nested call")
check.eq(coroutine.wrap(setname)("Listener", "co"), {1, 2}, "a module call from a coroutine")
check.eq(heard, {"v:4", "co:4"}, "named value as a call, also from a coroutine")
function Listener() error("listener failed") end
check.raises("in the named value 'Listener'", setname, "Listener", "v")

-- The script's arguments as a stand-alone Lua interpreter gives them.
check.eq({arg[1], select("#", ...), lantern.hostversion}, {"first-arg", 2, 1011}, "arguments")

-- A call that delivers nothing, or twice, breaks the contract; none before did.
silent()
check.eq(twice(), 2, "the last delivery counts")
check.eq(#lantern.faults(), 2, "missing and repeated deliveries")
print("lantern_host: ok")
