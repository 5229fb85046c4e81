for turns = 1:16
  n = 0;
  for k = 1:8000
    if is_prime(k)
      n = n + k;
    end
  end
end
disp(int2str(n))
function p = is_prime(k)
p = true;
if k < 2
  p = false;
  return
end
d = 2;
while d * d <= k
  if mod(k, d) == 0
    p = false;
    break
  end
  d = d + 1;
end
end
