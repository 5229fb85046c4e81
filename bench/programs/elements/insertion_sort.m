n = 1200;
x = zeros(n, 1);
v = 3;
for k = 1:n
  v = mod(v * 211 + 17, 2003);
  x(k) = v;
end
for i = 2:n
  key = x(i);
  j = i - 1;
  go = true;
  while go
    if j < 1
      go = false;
    elseif x(j) <= key
      go = false;
    else
      x(j + 1) = x(j);
      j = j - 1;
    end
  end
  x(j + 1) = key;
end
disp(int2str(sum(x .* (1:n)')))
