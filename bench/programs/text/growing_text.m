s = '';
for k = 1:60000
  c = 'x';
  s = [s, c];
end
disp(int2str(length(s)))
