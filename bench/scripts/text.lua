local parts = {}
for i = 1, 80000 do parts[#parts + 1] = "word " end
print(#table.concat(parts))
