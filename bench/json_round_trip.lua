-- A nested list of (presentation, value) items written as JSON text and read
-- back, several rounds: records of a number, a name and a list of three
-- numbers. Lua has no JSON in its library: a small writer and reader here.

local function encode(value, out)
    local kind = type(value)
    if kind == "number" then
        out[#out + 1] = string.format("%d", value)
    elseif kind == "string" then
        out[#out + 1] = '"' .. value:gsub('[%c"\\]', function(c)
            return string.format("\\u%04x", c:byte())
        end) .. '"'
    elseif value[1] ~= nil or next(value) == nil then
        out[#out + 1] = "["
        for i, element in ipairs(value) do
            if i > 1 then
                out[#out + 1] = ","
            end
            encode(element, out)
        end
        out[#out + 1] = "]"
    else
        out[#out + 1] = '{"p":'
        encode(value.p, out)
        out[#out + 1] = ',"v":'
        encode(value.v, out)
        out[#out + 1] = "}"
    end
end

local decodeAt

local function skip(text, at)
    return text:find("[^ \t\r\n]", at) or #text + 1
end

local function decodeString(text, at)
    local parts = {}
    local i = at + 1
    while true do
        local stop = text:find('["\\]', i)
        parts[#parts + 1] = text:sub(i, stop - 1)
        if text:sub(stop, stop) == '"' then
            return table.concat(parts), stop + 1
        end
        parts[#parts + 1] = string.char(tonumber(text:sub(stop + 2, stop + 5), 16))
        i = stop + 6
    end
end

decodeAt = function(text, at)
    at = skip(text, at)
    local c = text:sub(at, at)
    if c == '"' then
        return decodeString(text, at)
    elseif c == "[" then
        local list = {}
        at = skip(text, at + 1)
        if text:sub(at, at) == "]" then
            return list, at + 1
        end
        while true do
            local element
            element, at = decodeAt(text, at)
            list[#list + 1] = element
            at = skip(text, at)
            local sep = text:sub(at, at)
            at = at + 1
            if sep == "]" then
                return list, at
            end
        end
    elseif c == "{" then
        local object = {}
        at = skip(text, at + 1)
        while true do
            local key
            key, at = decodeString(text, skip(text, at))
            at = skip(text, at) + 1 -- the colon
            object[key], at = decodeAt(text, at)
            at = skip(text, at)
            local sep = text:sub(at, at)
            at = at + 1
            if sep == "}" then
                return object, at
            end
        end
    else
        local stop = text:find("[^%-%d%.]", at) or #text + 1
        return math.tointeger(tonumber(text:sub(at, stop - 1))), stop
    end
end

local function item(presentation, value)
    return { p = presentation, v = value }
end

local function byPresentation(items, presentation)
    for _, entry in ipairs(items) do
        if entry.p == presentation then
            return entry.v
        end
    end
    return ""
end

local records = 2000
local rounds = 10
local checksum = 0
local back
for pass = 1, rounds do
    local outer = {}
    for i = 1, records do
        local record = {}
        record[#record + 1] = item("id", i)
        record[#record + 1] = item("name", "name" .. tostring(i))
        local parts = { item("", i % 7), item("", i % 11), item("", i % 13) }
        record[#record + 1] = item("parts", parts)
        outer[#outer + 1] = item("r" .. tostring(i), record)
    end
    local out = {}
    encode(outer, out)
    back = decodeAt(table.concat(out), 1)
    for i = 1, #back do
        local record = back[i].v
        local parts = byPresentation(record, "parts")
        checksum = checksum + byPresentation(record, "id") + #record[2].v + parts[1].v + parts[2].v + parts[3].v
    end
end
print("json_round_trip " .. tostring(#back) .. " " .. tostring(checksum))
