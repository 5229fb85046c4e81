s.data = zeros(1, 1000);
for turn = 1:600
  for k = 1:1000
    s.data(k) = s.data(k) + k;
  end
end
disp(int2str(sum(s.data)))
