local ages, count, total = {}, 0, 0
for i = 0, 99999 do ages["key" .. i] = tostring(i) count = count + 1 end
for i = 0, 99999 do total = total + tonumber(ages["key" .. i]) % 10 end
print(count .. " " .. math.tointeger(total))
