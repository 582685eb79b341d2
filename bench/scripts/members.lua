local p = {x = 0, y = 0}
local q = p
for i = 0, 999999 do
  p.x = p.x + 1
  q.y = q.y + p.x % 3
end
print(p.x .. " " .. q.y)
