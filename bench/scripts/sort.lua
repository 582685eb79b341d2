local words, n = {}, 12345
for i = 0, 99999 do
  n = (n * 75 + 74) % 65537
  words[#words + 1] = "word " .. n .. " " .. i
end
table.sort(words)
print(words[1] .. " " .. words[100000])
