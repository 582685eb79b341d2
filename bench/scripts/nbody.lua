local bodies = {}
local function place(i, x, y, z, vx, vy, vz, mass)
  bodies[i] = {x = x, y = y, z = z, vx = vx, vy = vy, vz = vz, mass = mass}
end

local function root(square)
  local guess = square
  if guess < 1.0 then guess = 1.0 end
  for i = 0, 11 do guess = 0.5 * (guess + square / guess) end
  return guess
end

local function advance(step)
  for i = 0, 4 do
    for j = i + 1, 4 do
      local a, b = bodies[i], bodies[j]
      local dx = a.x - b.x
      local dy = a.y - b.y
      local dz = a.z - b.z
      local square = dx * dx + dy * dy + dz * dz
      local force = step / (square * root(square))
      a.vx = a.vx - dx * b.mass * force
      a.vy = a.vy - dy * b.mass * force
      a.vz = a.vz - dz * b.mass * force
      b.vx = b.vx + dx * a.mass * force
      b.vy = b.vy + dy * a.mass * force
      b.vz = b.vz + dz * a.mass * force
    end
  end
  for i = 0, 4 do
    local a = bodies[i]
    a.x = a.x + step * a.vx
    a.y = a.y + step * a.vy
    a.z = a.z + step * a.vz
  end
end

place(0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 39.0)
place(1, 4.8, -1.2, -0.1, 0.6, 2.8, -0.02, 0.04)
place(2, 8.3, 4.1, -0.4, -1.0, 1.8, 0.008, 0.01)
place(3, 12.8, -15.1, -0.2, 1.0, 0.8, -0.01, 0.002)
place(4, 15.3, -25.9, 0.2, 0.9, 0.6, -0.03, 0.002)
for turn = 0, 4999 do advance(0.01) end
print(string.format("%.9f %.9f", bodies[0].x, bodies[1].y))
