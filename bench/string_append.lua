-- Builds a long text one character at a time, then a report one line of 60
-- characters at a time.
local length = 1000000
local chars = {}
for i = 1, length do
    chars[i] = string.char(97 + i % 26)
end
local text = table.concat(chars)
local letters = {}
for i = 1, 59 do
    letters[i] = string.char(65 + i % 26)
end
local line = table.concat(letters) .. "\n"
local lines = {}
local size = 0
while size < length do
    lines[#lines + 1] = line
    size = size + #line
end
local report = table.concat(lines)
print("string_append " .. #text .. " " .. #report .. " " .. string.sub(text, -3))
