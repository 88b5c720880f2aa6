-- Fills a table with pseudo-random keys, sorts it by the key and reads it
-- back in order; several rounds of a fresh table each. table.sort is not
-- stable, so equal keys fall back to the order they were added in.
local rounds = 100
local rows = 2000
local seed = 42
local checksum = 0
local table_
for round_ = 1, rounds do
    table_ = {}
    for i = 1, rows do
        seed = (seed * 16807) % 2147483647
        table_[i] = { key = seed % 100000, name = "row" .. tostring(i), added = i }
    end
    table.sort(table_, function(a, b)
        if a.key ~= b.key then
            return a.key < b.key
        end
        return a.added < b.added
    end)
    for r = 1, rows do
        checksum = checksum + r * (table_[r].key % 1000)
    end
end
print("table_sort " .. tostring(checksum) .. " " .. table_[1].name)
