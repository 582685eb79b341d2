local function ackermann(m, n)
  local result
  if m == 0 then result = n + 1
  elseif n == 0 then result = ackermann(m - 1, 1)
  else result = ackermann(m - 1, ackermann(m, n - 1))
  end
  return result
end
print(ackermann(2, 300))
