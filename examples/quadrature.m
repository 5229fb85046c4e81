% Three ways to the integral of a function, and how fast their errors shrink.
%
% The trapezoidal rule, Simpson's rule and Romberg's extrapolation are tried on the integral of exp(-x^2) from 0 to 2,
% whose value is known through the error function.

f = @(x) exp(-(x.^2));  % with its parentheses: a leading minus binds tighter than a power
a = 0;
b = 2;
exact = sqrt(pi) / 2 * erf(b);

disp('panels     trapezoid       Simpson')
panels = [4 8 16 32 64];
for n = panels
  t = trapezoid(f, a, b, n) - exact;
  s = simpson(f, a, b, n) - exact;
  disp([num2str(n) '   ' num2str(t) '   ' num2str(s)])
end

[value, table] = romberg(f, a, b, 6);
disp('Romberg')
disp(value)
disp(['error: ' num2str(abs(value - exact))])
disp(['estimates: ' num2str(numel(table(table ~= 0)))])

% The order of a rule, from the errors with n and 2n panels: it should be close to 2 and to 4.
order_t = observed_order(@(n) trapezoid(f, a, b, n), exact, 16);
order_s = observed_order(@(n) simpson(f, a, b, n), exact, 16);
disp(['order of the trapezoidal rule: ' num2str(round(order_t))])
disp(['order of the Simpson rule: ' num2str(round(order_s))])

function q = trapezoid(f, a, b, n)
x = linspace(a, b, n + 1);
y = f(x);
h = (b - a) / n;
q = h * (sum(y) - (y(1) + y(end)) / 2);
end

function q = simpson(f, a, b, n)
x = linspace(a, b, n + 1);
y = f(x);
h = (b - a) / n;
odd = sum(y(2:2:n));
even = sum(y(3:2:n - 1));
q = h / 3 * (y(1) + 4 * odd + 2 * even + y(n + 1));
end

% Richardson's extrapolation of the trapezoidal rule: row k halves the step, column m removes one more power of it.
function [q, r] = romberg(f, a, b, levels)
r = zeros(levels, levels);
h = b - a;
r(1, 1) = h * (f(a) + f(b)) / 2;
for k = 2:levels
  h = h / 2;
  middle = a + h * (1:2:2^(k - 1) - 1);
  r(k, 1) = r(k - 1, 1) / 2 + h * sum(f(middle));
  for m = 2:k
    factor = 4^(m - 1);
    r(k, m) = (factor * r(k, m - 1) - r(k - 1, m - 1)) / (factor - 1);
  end
end
q = r(levels, levels);
end

function p = observed_order(rule, exact, n)
coarse = abs(rule(n) - exact);
fine = abs(rule(2 * n) - exact);
p = log2(coarse / fine);
end
