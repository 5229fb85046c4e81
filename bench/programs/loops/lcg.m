x = 12345;
s = 0;
for k = 1:300000
  x = mod(1103515245 * x + 12345, 2147483648);
  if x > 1073741824
    s = s + 1;
  end
end
disp(int2str(s))
