count = 0;
flag = true;
for k = 1:400000
  a = k > 1000;
  b = k < 300000;
  c = (a & b) | ~flag;
  if c && (a || b)
    count = count + 1;
  end
  flag = ~flag;
end
disp(int2str(count))
