for turns = 1:24
  x = mod((1:500) * 31, 97);
  s = 0;
  for k = 1:60
    s = s + fold(@larger, x, 0) + fold(@summed, x, 0);
  end
end
disp(int2str(s))
function r = fold(f, x, r)
for k = 1:numel(x)
  r = f(r, x(k));
end
end
function r = larger(a, b)
r = a;
if b > a
  r = b;
end
end
function r = summed(a, b)
r = a + b;
end
