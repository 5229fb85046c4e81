s = '';
for k = 1:20000
  s = strcat(s, 'xyz');
end
disp(int2str(length(s)))
