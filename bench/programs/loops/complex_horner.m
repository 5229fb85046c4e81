z = complex(0.3, 0.4);
total = 0;
for k = 1:60000
  w = z + k / 60000;
  v = ((2 * w - 1) * w + 3) * w - complex(0, 1);
  total = total + real(v) - imag(v);
end
disp(int2str(1000 * total))
