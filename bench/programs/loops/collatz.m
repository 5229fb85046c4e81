longest = 0;
for n = 1:6000
  m = n;
  steps = 0;
  while m ~= 1
    if mod(m, 2) == 0
      m = m / 2;
    else
      m = 3 * m + 1;
    end
    steps = steps + 1;
  end
  if steps > longest
    longest = steps;
    best = n;
  end
end
disp(int2str(best * 1000 + longest))
