capacity = 1000;
best = zeros(1, capacity + 1);
for item = 1:80
  w = mod(item * 37, 91) + 5;
  v = mod(item * 53, 97) + 1;
  for c = capacity:-1:w
    t = best(c - w + 1) + v;
    if t > best(c + 1)
      best(c + 1) = t;
    end
  end
end
disp(int2str(best(end)))
