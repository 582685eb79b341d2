local s = ""
for i = 1, 2000 do s = s .. "some words " end
print(#s)
