for turns = 1:9
  n = 0;
  for k = 1:3000
    r = roman_of(k);
    n = n + numel(r) + value_of(r);
  end
end
disp(int2str(n))
function r = roman_of(k)
values = [1000 900 500 400 100 90 50 40 10 9 5 4 1];
r = '';
i = 1;
while k > 0
  while k >= values(i)
    switch i
      case 1
        r = [r, 'M'];
      case 2
        r = [r, 'CM'];
      case 3
        r = [r, 'D'];
      case 4
        r = [r, 'CD'];
      case 5
        r = [r, 'C'];
      case 6
        r = [r, 'XC'];
      case 7
        r = [r, 'L'];
      case 8
        r = [r, 'XL'];
      case 9
        r = [r, 'X'];
      case 10
        r = [r, 'IX'];
      case 11
        r = [r, 'V'];
      case 12
        r = [r, 'IV'];
      case 13
        r = [r, 'I'];
    end
    k = k - values(i);
  end
  i = i + 1;
end
end
function v = value_of(r)
v = 0;
last = 0;
for k = numel(r):-1:1
  d = digit_of(r(k));
  if d < last
    v = v - d;
  else
    v = v + d;
    last = d;
  end
end
end
function d = digit_of(c)
switch c
  case 'M'
    d = 1000;
  case 'D'
    d = 500;
  case 'C'
    d = 100;
  case 'L'
    d = 50;
  case 'X'
    d = 10;
  case 'V'
    d = 5;
  otherwise
    d = 1;
end
end
