-- Run with --host-version 1010: a host this old has no maps, so the module
-- must not ask for one and the attribute map arrives as nothing.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

check.eq(lantern.hostversion, 1010, "host version")
wvparse('<p id="a" class="c">x</p>')
local p = wvgetelementbyid(0, "a")
check.eq(wvgetattributes(p), nil, "attributes of an element")
check.eq(wvgetattributes(-1), nil, "attributes of -1")
check.eq(wvgetclasses(p), {"c"}, "arrays still work")
check.eq(lantern.faults(), {}, "no map service was asked for")
print("old_host: ok")
