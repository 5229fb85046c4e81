s = '';
for k = 1:30000
  s = strcat(s, 'xyz');
end
disp(int2str(length(s)))
