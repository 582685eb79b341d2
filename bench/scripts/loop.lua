local sum = 0
for i = 0, 2999999 do
  sum = sum + i % 7 * 3
  sum = sum ~ i
end
print(sum)
