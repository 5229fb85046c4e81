for turns = 1:9
  s = 0;
  for a = 1:300
    for b = 1:40
      [g, x, y] = bezout(a, b);
      s = s + g + x * 2 + y;
    end
  end
end
disp(int2str(s))
function [g, x, y] = bezout(a, b)
if b == 0
  g = a;
  x = 1;
  y = 0;
else
  [g, u, v] = bezout(b, mod(a, b));
  x = v;
  y = u - floor(a / b) * v;
end
end
