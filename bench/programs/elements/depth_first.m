for turns = 1:2
  n = 3000;
  first = zeros(1, n);
  next = zeros(1, 3 * n);
  to = zeros(1, 3 * n);
  m = 0;
  for k = 1:n
    for j = 1:3
      m = m + 1;
      to(m) = mod(k * 7 + j * 13, n) + 1;
      next(m) = first(k);
      first(k) = m;
    end
  end
  total = 0;
  for turn = 1:15
    seen = zeros(1, n) > 0;
    stack = zeros(1, 3 * n + 1);
    top = 1;
    stack(1) = turn;
    seen(turn) = true;
    while top > 0
      at = stack(top);
      top = top - 1;
      total = total + mod(at, 5);
      e = first(at);
      while e > 0
        if ~seen(to(e))
          seen(to(e)) = true;
          top = top + 1;
          stack(top) = to(e);
        end
        e = next(e);
      end
    end
  end
end
disp(int2str(total))