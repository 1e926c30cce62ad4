-- lantern --trace FILE: what a short script on a live page left in FILE, and
-- a trace file that can't be opened, which only costs a line on stderr.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")
local check = live.check

local first = 0
while arg[first - 1] do first = first - 1 end
local run = io.popen("'" .. arg[first] .. "' --trace /dev/null/trace -e 'print(wvparse(\"<p>\"))' 2>&1")
local output = run:read("a")
check.truthy(run:close() and output:find("\n0\n$"), "a run without its trace file:\n" .. output)
check.truthy(output:find("cannot open the trace file /dev/null/trace", 1, true), "the line about it")

live.open("one.html")
check.eq(wvgetinnertext(wvgetelementbyid(0, "name")), "one", "the heading")
wvgetelementsbytagname(0, "p")
wvgetattributes(wvgetelementbyid(0, "next"))
wvgetelementbyid(0, string.rep("x", 100))
wvexecutescript("1 + 1")
lantern.pump(500)

-- lantern named the file in QRLANTERN_TRACE. Runs append to it: this one's
-- lines follow the last start line.
local trace = io.open(os.getenv("QRLANTERN_TRACE")):read("a")
local from = 1
for start in trace:gmatch("()[%d.]+ trace start") do from = start end
trace = "\n" .. trace:sub(from)
local url = live.url("one.html"):gsub("%p", "%%%0")
for _, line in ipairs({
  'call wvCreate%(%d+, "file://[^\n]*, %d+%) %-> int 0 in [%d.]+ ms\n',
  'nav start url="' .. url .. '"\n',
  'nav done url="' .. url .. '"\n',
  'capture navigation bytes=%d+ elements=9 in [%d.]+ ms\n',
  'notify window=%d+ text="NavComplete"\n',
  'call wvGetElementById%(0, "name"%) %-> int 1 in ',
  'call wvGetInnerText%(1%) %-> text "one" in ',
  'call wvGetElementsByTagName%(0, "p"%) %-> array%[2%] in ',
  'call wvGetAttributes%(4%) %-> map%[2%] in ',
  'call wvGetElementById%(0, "' .. string.rep("x", 80) .. '"%.%.%.%(100 bytes%)%) %-> int %-1 in ',
  'script ok result="2" for="1 %+ 1"\n',
}) do
  check.truthy(trace:find("\n[%d.]+ " .. line), "a line like " .. line .. " in the trace:" .. trace)
end
print("trace: all passed")
