for turns = 1:16
  line = 'alpha,beta,gamma,delta,epsilon,zeta';
  n = 0;
  for k = 1:2500
    parts = split(line, ',');
    n = n + numel(parts) + numel(parts(3).t);
  end
end
disp(int2str(n))
function parts = split(t, d)
parts = struct('t', '');
n = 0;
from = 1;
for k = 1:numel(t)
  if t(k) == d
    n = n + 1;
    parts(n).t = t(from:k - 1);
    from = k + 1;
  end
end
parts(n + 1).t = t(from:end);
end
