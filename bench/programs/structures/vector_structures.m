for turns = 1:5
  p.x = 1;
  p.y = 2;
  q.x = 0.5;
  q.y = -0.25;
  for k = 1:25000
    p = plus_of(p, scaled(q, 0.01));
    q = plus_of(q, scaled(p, -0.01));
  end
end
disp(int2str(1e6 * (p.x + q.y)))
function r = plus_of(a, b)
r.x = a.x + b.x;
r.y = a.y + b.y;
end
function r = scaled(a, f)
r.x = a.x * f;
r.y = a.y * f;
end
