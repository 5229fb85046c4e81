a = 'intention of the industrious programmer who works at night';
b = 'execution by the illustrious grammarian that walks at dawn';
total = 0;
for turn = 1:8
  m = length(a);
  n = length(b);
  d = zeros(m + 1, n + 1);
  for i = 0:m
    d(i + 1, 1) = i;
  end
  for j = 0:n
    d(1, j + 1) = j;
  end
  for i = 1:m
    for j = 1:n
      cost = 1;
      if a(i) == b(j)
        cost = 0;
      end
      best = d(i, j) + cost;
      if d(i, j + 1) + 1 < best
        best = d(i, j + 1) + 1;
      end
      if d(i + 1, j) + 1 < best
        best = d(i + 1, j) + 1;
      end
      d(i + 1, j + 1) = best;
    end
  end
  total = total + d(end, end);
end
disp(int2str(total))
