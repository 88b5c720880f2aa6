-- A counting loop that adds its variable to a total.
local n = 5000000
local total = 0
for i = 1, n do
    total = total + i
end
print("for_sum " .. tostring(total))
