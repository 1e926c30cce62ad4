-- Small assertions for lantern's script tests. Each failure raises an error
-- that names the caller's line, so lantern exits non-zero and says where.
local check = {}

local function show(value, seen)
  if type(value) == "string" then return string.format("%q", value) end
  if type(value) ~= "table" then return tostring(value) end
  seen = seen or {}
  if seen[value] then return "<cycle>" end
  seen[value] = true
  local parts = {}
  for key, item in pairs(value) do
    parts[#parts + 1] = "[" .. show(key, seen) .. "]=" .. show(item, seen)
  end
  table.sort(parts)
  return "{" .. table.concat(parts, ", ") .. "}"
end

local function same(a, b)
  if type(a) ~= "table" or type(b) ~= "table" then
    return a == b and math.type(a) == math.type(b)
  end
  for key, item in pairs(a) do
    if not same(item, b[key]) then return false end
  end
  for key in pairs(b) do
    if a[key] == nil then return false end
  end
  return true
end

-- Deep equality; integers and floats are told apart.
function check.eq(actual, expected, what)
  if not same(actual, expected) then
    error(string.format("%s: expected %s, got %s", what or "value", show(expected), show(actual)),
          2)
  end
end

function check.truthy(value, what)
  if not value then error((what or "condition") .. " does not hold", 2) end
end

-- Calls f(...) and demands a Lua error whose text contains `pattern` (a plain
-- text, not a Lua pattern). Gives the error text.
function check.raises(pattern, f, ...)
  local ok, message = pcall(f, ...)
  if ok then error("expected an error containing " .. show(pattern), 2) end
  message = tostring(message)
  if not message:find(pattern, 1, true) then
    error("expected an error containing " .. show(pattern) .. ", got " .. show(message), 2)
  end
  return message
end

-- The keys of a map result in the order the module stored them.
function check.pairs_in_order(map)
  local seen = {}
  for key, value in pairs(map) do seen[#seen + 1] = key .. "=" .. value end
  return seen
end

return check
