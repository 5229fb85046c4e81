disp(int2str(hanoi(18, 1, 3, 2)))

function n = hanoi(k, from, to, via)
if k == 0
  n = 0;
else
  n = hanoi(k - 1, from, via, to) + 1 + hanoi(k - 1, via, to, from);
end
end
