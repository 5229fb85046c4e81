disp(int2str(place(1, zeros(1, 8), 8)))

function count = place(row, columns, n)
count = 0;
if row > n
  count = 1;
  return
end
for c = 1:n
  ok = true;
  for r = 1:row - 1
    if columns(r) == c || abs(columns(r) - c) == row - r
      ok = false;
      break
    end
  end
  if ok
    columns(row) = c;
    count = count + place(row + 1, columns, n);
  end
end
end
