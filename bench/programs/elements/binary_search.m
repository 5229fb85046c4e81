x = (1:2000) * 3;
found = 0;
for k = 1:60000
  key = mod(k * 7919, 6000);
  lo = 1;
  hi = 2000;
  while lo < hi
    mid = floor((lo + hi) / 2);
    if x(mid) < key
      lo = mid + 1;
    else
      hi = mid;
    end
  end
  if x(lo) == key
    found = found + 1;
  end
end
disp(int2str(found))
