counts = zeros(1, 5);
for k = 1:400000
  r = k - 5 * floor(k / 5);
  if r == 0
    counts(1) = counts(1) + 1;
  elseif r == 1
    counts(2) = counts(2) + k;
  elseif r == 2
    counts(3) = counts(3) - k;
  elseif r == 3
    counts(4) = counts(4) + 2;
  else
    counts(5) = counts(5) + 3;
  end
end
disp(int2str(counts(1) + 3 * counts(2) + 5 * counts(3) + counts(4) + counts(5)))
