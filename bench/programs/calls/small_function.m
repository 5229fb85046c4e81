s = 0;
for k = 1:200000
  s = s + square(k) - k;
end
disp(int2str(s))

function y = square(x)
y = x * x;
end
