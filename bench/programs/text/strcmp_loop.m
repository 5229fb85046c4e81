word = 'gamma';
n = 0;
for k = 1:400000
  if strcmp(word, 'alpha')
    n = n + 1;
  elseif strcmp(word, 'beta')
    n = n + 2;
  elseif strcmp(word, 'gamma')
    n = n + 3;
  end
end
disp(int2str(n))
