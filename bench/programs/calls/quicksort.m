for turns = 1:16
  s = 0;
  for turn = 1:10
    x = mod((1:600) * (turn * 7919 + 13), 10007);
    x = quick(x, 1, numel(x));
    s = s + x(1) + x(300) * 2;
  end
end
disp(int2str(s))
function x = quick(x, lo, hi)
if lo >= hi
  return
end
p = x(floor((lo + hi) / 2));
i = lo;
j = hi;
while i <= j
  while x(i) < p
    i = i + 1;
  end
  while x(j) > p
    j = j - 1;
  end
  if i <= j
    t = x(i);
    x(i) = x(j);
    x(j) = t;
    i = i + 1;
    j = j - 1;
  end
end
x = quick(x, lo, j);
x = quick(x, i, hi);
end
