-- lantern --headless doc_examples.lua DOC.md LANTERN [SKIPPED]: runs every Lua example
-- of the functions reference as a script of its own from the reference's
-- folder (on this run's display, which the children inherit), and checks that
-- every function of the module has a section with an example, in table order.
-- SKIPPED names sections, comma-separated, whose examples the browser of this
-- run can't carry out; they are listed as skipped.
package.path = arg[0]:match("^(.-)[^/\\]*$") .. "../scripts/?.lua;" .. package.path
local check = require("check")
local quoted = check.quote

local doc_path, lantern_path = arg[1], arg[2]
local skipped = {}
for title in (arg[3] or ""):gmatch("[^,]+") do skipped[title] = true end
-- The examples run from the reference's folder: lantern by an absolute path.
local function absolute(path) return path:match("^[/\\]") or path:match("^%a:[/\\]") end
if not absolute(lantern_path) then lantern_path = os.getenv("PWD") .. "/" .. lantern_path end
local doc_dir = doc_path:match("^(.*)[/\\][^/\\]*$") or "."

-- The examples make file URLs as "file://" .. PWD .. "/pages/...". A shell
-- sets PWD; cmd.exe does not, so there it is set to the folder's URL form,
-- "/C:/folder", which gives "file:///C:/folder/pages/...".
local function example_command(script)
  if check.windows then
    local url_folder = "/" .. doc_dir:gsub("\\", "/")
    return "cd /d " .. quoted(doc_dir) .. " && set " .. quoted("PWD=" .. url_folder) .. " && " ..
           quoted(lantern_path) .. " " .. quoted(script) .. " 2>&1"
  end
  return "cd " .. quoted(doc_dir) .. " && PWD=\"$(pwd)\" " .. quoted(lantern_path) .. " " ..
         quoted(script) .. " 2>&1"
end

-- Each heading with the examples under it, and the function sections' names.
local sections, documented, code = {{title = "(top)", examples = {}}}, {}, nil
for line in assert(io.open(doc_path, "rb")):lines() do
  local section = sections[#sections]
  if code and line == "```" then
    section.examples[#section.examples + 1], code = table.concat(code, "\n") .. "\n", nil
  elseif code then
    code[#code + 1] = line
  elseif line == "```lua" then
    code = {}
  elseif line:match("^##+ ") then
    local title = line:gsub("^#+ ", "")
    sections[#sections + 1] = {title = title, examples = {}}
    if title:match("^wv%w+$") then documented[#documented + 1] = title:lower() end
  end
end
assert(not code, "an example is not closed")

-- The module's functions in the order of its table, from `lantern --list`.
local listing, index = assert(check.popen(quoted(lantern_path) .. " --list")), 0
for line in listing:lines() do
  local name = line:match("^%s*%d+%s+function%s+(%S+)")
  if name then
    index = index + 1
    assert(documented[index] == name, string.format("function %d is %s, the reference has %s there",
                                                    index - 1, name, tostring(documented[index])))
  end
end
assert(listing:close(), "lantern --list failed")
assert(#documented == index, "the reference documents functions that the module lacks")

local failed, count = {}, 0
for _, section in ipairs(sections) do
  local needs_example = section.title:match("^wv%w+$")
  assert(#section.examples > 0 or not needs_example, section.title .. " has no example")
  if skipped[section.title] then print("skip " .. section.title) end
  for i, example in ipairs(skipped[section.title] and {} or section.examples) do
    count = count + 1
    local script = check.scratch_name()
    assert(io.open(script, "wb")):write(example):close()
    local run = check.popen(example_command(script))
    local output = run:read("a")
    local ok = run:close() and not output:find("lantern: ", 1, true)
    os.remove(script)
    local name = section.title .. (#section.examples > 1 and " #" .. i or "")
    print(string.format("%-4s %s", ok and "ok" or "FAIL", name))
    if not ok then
      failed[#failed + 1] = name
      io.write(output:gsub("[^\n]+", "     | %0"), "\n")
    end
  end
end
print(string.format("%d examples, %d failed", count, #failed))
if #failed > 0 then error("failing examples: " .. table.concat(failed, ", "), 0) end
