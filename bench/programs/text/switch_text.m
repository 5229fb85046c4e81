n = 0;
word = 'stop';
for k = 1:500000
  switch word
    case 'go'
      n = n + 1;
      word = 'wait';
    case 'wait'
      n = n + 2;
      word = 'stop';
    case 'stop'
      n = n + 3;
      word = 'go';
    otherwise
      n = n + 100;
  end
end
disp(int2str(n))
