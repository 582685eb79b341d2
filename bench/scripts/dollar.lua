local i, sum = 0, 0
while i < 1000000 do
  sum = sum + i % 7
  i = i + 1
end
print(sum)
