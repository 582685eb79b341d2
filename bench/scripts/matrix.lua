local a, b, c = {}, {}, {}
for i = 0, 119 do
  a[i], b[i], c[i] = {}, {}, {}
  for j = 0, 119 do
    a[i][j] = i + j + 0.0
    b[i][j] = i - j + 0.0
  end
end
for i = 0, 119 do
  for j = 0, 119 do
    local sum = 0.0
    for k = 0, 119 do sum = sum + a[i][k] * b[k][j] end
    c[i][j] = sum
  end
end
print(math.floor(c[17][42]))
