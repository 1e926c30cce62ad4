-- The lines that wvexecutescript writes; the test compares standard output
-- with execute_script.expected byte for byte.
package.path = arg[0]:match("^(.*)/[^/]*$") .. "/?.lua;" .. package.path
local live = require("live_support")

live.open("one.html")
for _, script in ipairs({"1 + 1", "'a\"b\\\\c'", "({list: [1, 'x', true]})",
                         "'caf\\u00e9 \\ud83d\\ude00'", "", "throw new Error('broken')"}) do
  print("run: " .. script)
  wvexecutescript(script)
  lantern.pump(300)
end
