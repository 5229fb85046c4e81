% A short tour of the language. Run it: scripts/run examples/tour.m

% A statement without a semicolon shows its value.
x = 3 * 4 + 1
v = [1 4 9 16]

% Operators on arrays work element by element, or as matrices.
roots_of_v = sqrt(v)
A = [2 1; 1 3];
b = [3; 5];
solution = A \ b

% Indexing starts at 1. "end" is the last position.
v(end)
v(v > 3)

% Text is an array of characters.
greeting = ['Hello, ' 'world'];
disp(greeting)
disp(greeting(end:-1:1))

% Structures hold named values.
point.name = 'P';
point.at = [3 4];
distance = norm(point.at)

% Functions can be values. This one keeps k as it was when it was made.
k = 10;
scaled = @(t) k * t;
scaled(2)

% Loops and branches end with "end" on a line of its own.
total = 0;
for n = 1:10
  if mod(n, 2) == 0
    total = total + n;
  end
end
total

% A script may bring its own functions; they stand at its end.
area = circle_area(2)

function a = circle_area(r)
a = pi * r^2;
end
