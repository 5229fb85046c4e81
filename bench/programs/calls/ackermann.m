disp(int2str(ack(2, 400)))

function y = ack(m, n)
if m == 0
  y = n + 1;
elseif n == 0
  y = ack(m - 1, 1);
else
  y = ack(m - 1, ack(m, n - 1));
end
end
