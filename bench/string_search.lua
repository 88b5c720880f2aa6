-- Builds a long text piece by piece, then searches it for many short keys.
local pieces = 8000
local text = ";"
for i = 1, pieces do
    text = text .. tostring((i * 7919) % 10007) .. ";"
end
local searches = 5000
local found = 0
local positions = 0
for k = 1, searches do
    local at = string.find(text, ";" .. tostring(k * 3) .. ";", 1, true)
    if at ~= nil then
        found = found + 1
        positions = positions + at
    end
end
print("string_search " .. tostring(#text) .. " " .. tostring(found) .. " " .. tostring(positions))
