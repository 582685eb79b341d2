local list, map, length = {}, {}, 0
for i = 0, 99999 do list[#list + 1] = "entry" end
for i = 1, 100000 do length = length + #list[i] end
for i = 0, 49999 do
  local key = "k" .. i % 1000
  map[key] = "value"
  if map[key] ~= nil then length = length + 1 end
end
local count = 0
for _ in pairs(map) do count = count + 1 end
print(length .. " " .. count)
