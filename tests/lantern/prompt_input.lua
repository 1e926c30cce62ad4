wvparse()
for i = 1, 2 do
  print("line", i)
end
wvparse("<p>six</p>") + 6
