s = 0;
for k = 1:500000
  [q, r] = divide(k, 7);
  s = s + q - r;
end
disp(int2str(s))

function [q, r] = divide(a, b)
q = floor(a / b);
r = a - b * q;
end
