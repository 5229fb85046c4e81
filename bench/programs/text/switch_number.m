n = 0;
for k = 1:200000
  switch mod(k, 4)
    case 0
      n = n + 1;
    case 1
      n = n + 2;
    case 2
      n = n + 3;
    otherwise
      n = n - 1;
  end
end
disp(int2str(n))
