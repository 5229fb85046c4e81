for turns = 1:5
  r_ = permute_all([1 2 3 4 5 6 7 8], 1, 8);
end
disp(int2str(r_))
function n = permute_all(a, k, m)
n = 0;
if k == m
  n = mod(a(1) * 3 + a(m) * 7, 11);
  return
end
for i = k:m
  t = a(k);
  a(k) = a(i);
  a(i) = t;
  n = n + permute_all(a, k + 1, m);
  t = a(k);
  a(k) = a(i);
  a(i) = t;
end
end
