-- Small assertions for lantern's script tests. Each failure raises an error
-- that names the caller's line, so lantern exits non-zero and says where.
local check = {}

-- A value written out with its keys sorted; integers and floats differ.
local function show(value)
  if type(value) == "string" then return string.format("%q", value) end
  if math.type(value) == "float" then return value .. "f" end
  if type(value) ~= "table" then return tostring(value) end
  local parts = {}
  for key, item in pairs(value) do parts[#parts + 1] = "[" .. show(key) .. "]=" .. show(item) end
  table.sort(parts)
  return "{" .. table.concat(parts, ", ") .. "}"
end

function check.eq(actual, expected, what)
  if show(actual) ~= show(expected) then
    error(string.format("%s: expected %s, got %s", what, show(expected), show(actual)), 2)
  end
end

function check.truthy(value, what)
  if not value then error(what .. " does not hold", 2) end
end

-- Demands that f(...) raises a Lua error containing `text` (plain text).
function check.raises(text, f, ...)
  local ok, message = pcall(f, ...)
  if ok or not tostring(message):find(text, 1, true) then
    error("expected an error containing " .. show(text) .. ", got " .. show(ok or message), 2)
  end
end

-- Running lantern from a script. On Windows io.popen hands the command to
-- cmd.exe, which knows double quotes only and drops the outermost pair of a
-- command line that holds several.
check.windows = package.config:sub(1, 1) == "\\"

function check.quote(text)
  if check.windows then return '"' .. text:gsub('"', '\\"') .. '"' end
  return "'" .. text:gsub("'", "'\\''") .. "'"
end

function check.popen(command)
  return io.popen(check.windows and '"' .. command .. '"' or command)
end

-- A new file name in the temporary folder; os.tmpname names the root of the
-- current drive on Windows.
function check.scratch_name()
  local folder = check.windows and os.getenv("TEMP")
  if not folder then return os.tmpname() end
  return string.format("%s\\lantern-%d-%d.tmp", folder, os.time(), math.random(1 << 30))
end

return check
