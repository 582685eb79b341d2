local sum = 0
for i = 0, 499999 do
  local case = i % 8
  if case == 0 then sum = sum + 1
  elseif case == 1 then sum = sum + 3
  elseif case == 2 then sum = sum ~ 5
  elseif case == 3 then sum = sum - 7
  elseif case == 4 then sum = sum + 11
  elseif case == 5 then sum = sum ~ 13
  elseif case == 6 then sum = sum + 17
  else sum = sum - 2
  end
end
print(sum)
