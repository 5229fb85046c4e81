s.a.b.c = 0;
s.a.d = 1;
for k = 1:150000
  s.a.b.c = s.a.b.c + s.a.d;
end
disp(int2str(s.a.b.c))
