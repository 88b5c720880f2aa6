-- A conditional loop with arithmetic and a branch on every round.
local n = 3000000
local i = 0
local acc = 0
while i < n do
    i = i + 1
    if i % 3 == 0 then
        acc = acc + i * 2
    else
        acc = acc - 1
    end
end
print("while_arith " .. tostring(acc))
