s = 0;
for k = 1:60000
  s = s + outer(k);
end
disp(int2str(s))

function y = outer(x)
y = middle(x) + 1;
end
function y = middle(x)
y = inner(x, 2) * 2;
end
function y = inner(x, c)
y = x - c;
end
