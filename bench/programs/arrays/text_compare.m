
t = repmat('banana republic ', 1, 62500);
for k = 1:2000
  z = t == 'a';
end
disp(num2str(sum(z), 12))
