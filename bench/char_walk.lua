-- Counts a letter in a long text, walking it one character at a time.
local length = 1000000
local letters = {}
for i = 1, 59 do
    letters[i] = string.char(97 + (i * 7) % 26)
end
local line = table.concat(letters) .. "\n"
local text = string.sub(string.rep(line, length // #line + 1), 1, length)
local count = 0
for i = 1, #text do
    if string.sub(text, i, i) == "e" then
        count = count + 1
    end
end
print("char_walk " .. #text .. " " .. count)
