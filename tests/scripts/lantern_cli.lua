-- lantern as a program: exit statuses, where errors point, the listing,
-- scripts from standard input, and the order of what it writes.
-- Arguments: the lantern binary and the test module.
package.path = arg[0]:match("^(.-)[^/\\]*$") .. "?.lua;" .. package.path
local check = require("check")

local lantern_path, module = arg[1], arg[2]

-- Runs lantern and demands the exit status and each fragment of the output.
local function expect(words, status, fragments)
  local pipe = assert(check.popen(check.quote(lantern_path) .. " " .. words .. " 2>&1"))
  local output = pipe:read("a")
  local _, _, got_status = pipe:close()
  check.eq(got_status, status, "exit status of lantern " .. words .. "\n" .. output)
  for _, fragment in ipairs(fragments) do
    check.truthy(output:find(fragment, 1, true),
                 "output of lantern " .. words .. " holds " .. fragment .. ":\n" .. output)
  end
  return output
end

local q = check.quote
local with_module = "--module " .. q(module) .. " "

expect("--list --help", 0, {"usage: lantern"})  -- the help wins over a listing
expect("", 2, {"no script given", "usage: lantern"})
expect(with_module .. "--list", 0,
       {"version: 7", "description: fake module", "echo", "int [text] [wide]", "@answer", "42"})
-- What the script printed comes out before the error that follows it.
local output = expect(with_module .. "-e " .. q('io.write("first ") error("boom")'), 1,
                      {"first", "(command line):1: boom", "traceback"})
check.truthy(output:find("first", 1, true) < output:find("boom", 1, true), "output order")
expect(with_module .. "-e " .. q("print(arg[0], arg[1], arg[2], ...)") .. " one two", 0,
       {"-e\tone\ttwo\tone\ttwo"})
expect(with_module .. "--host-version 1010 -e " .. q('makemap("a1")'), 0,
       {"warning: the module broke the host contract", "version 1010"})

-- Scripts from a file and from standard input; an error names the file and line.
local scratch = check.scratch_name()
assert(io.open(scratch, "w")):write("print(answer)\n\nwvnothere(x)\n"):close()
expect(with_module .. "- < " .. q(scratch), 1, {"42", "stdin:3:"})
expect(with_module .. q(scratch), 1, {"42", scratch .. ":3:"})
expect(with_module .. q(scratch .. ".missing"), 1, {"cannot open"})
expect("--module " .. q(scratch) .. " -e 1", 1, {"cannot load the module " .. scratch})
os.remove(scratch)
print("lantern_cli: ok")
