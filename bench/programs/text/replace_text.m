for turns = 1:15
  text = 'one fish two fish red fish blue fish';
  n = 0;
  for k = 1:1200
    t = replaced(text, 'fish', 'bird');
    n = n + numel(t) + t(5);
  end
end
disp(int2str(n))
function r = replaced(t, old, new)
r = '';
k = 1;
m = numel(old);
while k <= numel(t)
  if k + m - 1 <= numel(t)
    same = strcmp(t(k:k + m - 1), old);
  else
    same = false;
  end
  if same
    r = [r, new];
    k = k + m;
  else
    r = [r, t(k)];
    k = k + 1;
  end
end
end
