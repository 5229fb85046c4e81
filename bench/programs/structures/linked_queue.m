head = 1;
tail = 0;
queue = zeros(1, 100);
s = 0;
for k = 1:100000
  tail = tail + 1;
  queue(mod(tail - 1, 100) + 1) = k;
  if tail - head >= 50
    s = s + queue(mod(head - 1, 100) + 1);
    head = head + 1;
  end
end
disp(int2str(s))
