-- The real module's rows as a script meets them: what each kind of result
-- becomes in Lua, optional arguments, and the errors a script can get. What
-- the commands find is the handler tests' business.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

check.eq(wvparse('<div id="d" class="x  y" title="caf\xC3\xA9">a<b class="x">&amp;</b></div>'), 0,
         "wvparse gives an integer")
local div = wvgetelementbyid(0, "d")
check.eq(div, 1, "a handle is an integer")
check.eq(wvgetelementbyid(0, "missing"), -1, "no element is -1")
check.eq(wvgetattribute(div, "title"), "caf\xC3\xA9", "text comes back as its bytes")
check.eq(wvgetinnertext(-1), -1, "a text command without an element gives an integer")
check.eq(wvurl(), "", "a wide text result without a browser")

-- Arrays are sequences of handles that other commands take back.
local found = wvgetelementsbyclass(0, "x")
check.eq(#found, 2, "two elements of class x")
check.eq(wvgettagname(found[2]), "b", "a handle out of an array")
check.eq(wvgetclasses(div), {"x", "y"}, "an array of texts")
check.eq(wvgetelementsbytagname(-1, "b"), {}, "an empty array is an empty table")
-- With a count of 1 the same row gives one handle instead of an array.
check.eq(wvgettagname(wvgetelementsbyclass(0, "x", "", 1, 2)), "b", "count 1")
check.eq(wvgetelementsbyclass(0, "x", "", 1, 9), -1, "count 1 beyond the list")

-- Maps are tables whose pairs() follow the module's (sorted) order.
local attributes = wvgetattributes(div)
check.eq(attributes, {class = "x  y", id = "d", title = "caf\xC3\xA9"}, "attributes")
check.eq(check.pairs_in_order(attributes), {"class=x  y", "id=d", "title=caf\xC3\xA9"}, "order")
check.eq(wvgetattributes(-1), {}, "attributes of -1: an empty map")

-- Calls that break a row never reach the module.
check.raises("wvgetinnertext takes 1 to 2 arguments, got 0", wvgetinnertext)
check.raises("wvclear takes 0 arguments, got 1", wvclear, 1)
check.raises("bad argument #1 to 'wvparse' (string expected, got number)", wvparse, 5)
check.raises("bad argument #1 to 'wvgettagname' (integer expected, got string)", wvgettagname, "1")
check.raises("bad argument #1 to 'wvnavigatestr' (string expected, got table)", wvnavigatestr, {})

-- Host services that fail: the module reports, the script gets an error.
lantern.failservices{arrhandler = {at = 1, status = -2}}
check.raises("DllArrHandler -2", wvgetelementsbyclass, 0, "x")
lantern.failservices{mapcreate = 5}
check.raises("DllMapServices 5", wvgetattributes, div)
lantern.failservices()
check.eq(#wvgetelementsbyclass(0, "x"), 2, "services work again")

check.eq(lantern.faults(), {}, "no contract faults")
print("document_commands: ok")
