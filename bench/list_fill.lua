-- Fills a list with numbers and their presentations, then reads it back.
local n = 300000
local values, presentations = {}, {}
for i = 1, n do
    values[#values + 1] = i * 3
    presentations[#presentations + 1] = "item" .. tostring(i)
end
local count = #values
local total = 0
local letters = 0
for i = 1, count do
    total = total + values[i]
    letters = letters + #presentations[i]
end
print("list_fill " .. tostring(count) .. " " .. tostring(total) .. " " .. tostring(letters))
