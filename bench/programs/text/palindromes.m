count = 0;
for k = 1:60000
  t = int2str(k);
  i = 1;
  j = length(t);
  same = true;
  while i < j
    if t(i) ~= t(j)
      same = false;
    end
    i = i + 1;
    j = j - 1;
  end
  if same
    count = count + 1;
  end
end
disp(int2str(count))
