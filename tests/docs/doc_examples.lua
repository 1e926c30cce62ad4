-- Runs every Lua example of the functions reference through lantern, each as
-- a script of its own from the reference's folder, and checks that the
-- reference has a section with an example for every function of the module,
-- in the order of the module's table.
--
--   lantern --headless doc_examples.lua DOC.md LANTERN
--
-- The examples share this run's display: lantern started a private one when
-- there was none, and the child processes inherit it.
local doc_path, lantern_path = arg[1], arg[2]
assert(doc_path and lantern_path, "usage: doc_examples.lua DOC.md LANTERN")
-- The examples run from the reference's folder, so lantern is named by a
-- path that holds from there.
if lantern_path:sub(1, 1) ~= "/" then lantern_path = os.getenv("PWD") .. "/" .. lantern_path end
local doc_dir = doc_path:match("^(.*)/[^/]*$") or "."

local function quoted(text)
  return "'" .. text:gsub("'", "'\\''") .. "'"
end

-- The sections of the reference: each heading with the examples under it.
local function read_sections(path)
  local sections, current = {}, {title = "(top)", examples = {}}
  sections[1] = current
  local file = assert(io.open(path, "rb"))
  local in_code, code = false, nil
  for line in file:lines() do
    if in_code then
      if line == "```" then
        current.examples[#current.examples + 1] = table.concat(code, "\n") .. "\n"
        in_code = false
      else
        code[#code + 1] = line
      end
    elseif line == "```lua" then
      in_code, code = true, {}
    elseif line:match("^##+ ") then
      current = {title = line:gsub("^#+ ", ""), examples = {}}
      sections[#sections + 1] = current
    end
  end
  file:close()
  assert(not in_code, "an example is not closed")
  return sections
end

-- The module's functions in the order of its table, from `lantern --list`.
local function module_functions()
  local listing = assert(io.popen(quoted(lantern_path) .. " --list"))
  local names = {}
  for line in listing:lines() do
    local name = line:match("^%s*%d+%s+function%s+(%S+)")
    if name then names[#names + 1] = name end
  end
  assert(listing:close(), "lantern --list failed")
  return names
end

local function check_coverage(sections)
  local documented = {}
  for _, section in ipairs(sections) do
    if section.title:match("^wv%w+$") then
      documented[#documented + 1] = section.title:lower()
      assert(#section.examples > 0, section.title .. " has no example")
    end
  end
  local names = module_functions()
  assert(#names == 35, "the module lists " .. #names .. " functions")
  for i, name in ipairs(names) do
    assert(documented[i] == name, string.format("function %d is %s, the reference has %s there",
                                                i - 1, name, tostring(documented[i])))
  end
  assert(#documented == #names, "the reference documents functions that the module lacks")
end

local function run_example(code)
  local script = os.tmpname()
  local file = assert(io.open(script, "wb"))
  file:write(code)
  file:close()
  local command = "cd " .. quoted(doc_dir) .. " && PWD=\"$(pwd)\" " .. quoted(lantern_path) .. " "
                  .. quoted(script) .. " 2>&1"
  local output = io.popen(command)
  local text = output:read("a")
  local ok = output:close()
  os.remove(script)
  return ok and not text:find("lantern: ", 1, true), text
end

local sections = read_sections(doc_path)
check_coverage(sections)
local failed, count = {}, 0
for _, section in ipairs(sections) do
  for i, code in ipairs(section.examples) do
    count = count + 1
    local started = os.time()
    local ok, output = run_example(code)
    local name = section.title .. (#section.examples > 1 and " #" .. i or "")
    print(string.format("%-4s %s (%d s)", ok and "ok" or "FAIL", name, os.time() - started))
    if not ok then
      failed[#failed + 1] = name
      io.write(output:gsub("[^\n]+", "     | %0"), "\n")
    end
  end
end
print(string.format("%d examples, %d failed", count, #failed))
if #failed > 0 then error("failing examples: " .. table.concat(failed, ", "), 0) end
