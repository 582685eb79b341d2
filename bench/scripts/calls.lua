local function mix(a, b, c, d) return a + b * 2 - c + (d & 7) end
local sum = 0
for i = 0, 499999 do sum = sum + mix(i, 3, sum & 255, i) end
print(sum & 65535)
