n = 200000;
prime = true(1, n);
prime(1) = false;
for k = 2:sqrt(n)
  if prime(k)
    m = k * k;
    while m <= n
      prime(m) = false;
      m = m + k;
    end
  end
end
disp(int2str(sum(prime)))
