-- lantern as a program: exit statuses, where errors point, the listing,
-- scripts from standard input, and the order of what it writes.
-- Arguments: the lantern binary and the test module.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

local lantern_path, module = arg[1], arg[2]
local scratch = os.tmpname()

local function write(path, text)
  local file = assert(io.open(path, "w"))
  file:write(text)
  file:close()
end

-- Runs lantern and demands the exit status and each fragment of the output.
local function expect(words, status, fragments, input)
  local command = "'" .. lantern_path .. "' " .. words .. " 2>&1"
  if input then
    write(scratch, input)
    command = command .. " < '" .. scratch .. "'"
  end
  local pipe = assert(io.popen(command))
  local output = pipe:read("a")
  local _, _, got_status = pipe:close()
  check.eq(got_status, status, "exit status of lantern " .. words .. "\n" .. output)
  for _, fragment in ipairs(fragments) do
    check.truthy(output:find(fragment, 1, true),
                 "output of lantern " .. words .. " holds " .. fragment .. ":\n" .. output)
  end
  return output
end

local with_module = "--module '" .. module .. "' "

expect("--help", 0, {"usage: lantern"})
expect("", 2, {"no script given", "usage: lantern"})
expect(with_module .. "--list", 0,
       {"version: 7", "description: fake module", "echo", "int [text] [wide]", "@answer", "42"})
expect(with_module .. "-e 'error(\"boom\")'", 1, {"(command line):1: boom", "traceback"})
expect(with_module .. "-e 'print(arg[0], arg[1], arg[2], ...)' one two", 0,
       {"-e\tone\ttwo\tone\ttwo"})
expect(with_module .. "-", 0, {"42"}, "print(answer)\n")
expect(with_module .. "--host-version 1010 -e 'makemap(\"a1\")'", 0,
       {"warning: the module broke the host contract", "version 1010"})

-- A script file: the error names the file and the line.
write(scratch, "local x = 1\n\nwvnothere(x)\n")
expect(with_module .. "'" .. scratch .. "'", 1, {scratch .. ":3:"})
expect(with_module .. "'" .. scratch .. ".missing'", 1, {"cannot open"})
expect("--module '" .. scratch .. "' -e 1", 1, {"cannot load the module " .. scratch})

-- What the script printed comes out before the error that follows it.
local output = expect(with_module .. "-e 'io.write(\"first \") report(\"second\")'", 1,
                      {"first", "(command line):1: second"})
check.truthy(output:find("first", 1, true) < output:find("second", 1, true), "output order")

os.remove(scratch)
print("lantern_cli: ok")
