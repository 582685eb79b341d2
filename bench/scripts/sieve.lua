local composite, count = {}, 0
for i = 2, 1000000 do composite[i] = false end
for i = 2, 1000000 do
  if not composite[i] then
    count = count + 1
    if i <= 1000 then
      for j = i * i, 1000000, i do composite[j] = true end
    end
  end
end
print(count)
