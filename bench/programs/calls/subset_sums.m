for turns = 1:29
  x = [3 34 4 12 5 2 7 8 11 13 17 19 23 29 31 37];
  r_ = count_subsets(x, 1, 60);
end
disp(int2str(r_))
function n = count_subsets(x, k, rest)
if rest == 0
  n = 1;
elseif k > numel(x) || rest < 0
  n = 0;
else
  n = count_subsets(x, k + 1, rest) + count_subsets(x, k + 1, rest - x(k));
end
end
