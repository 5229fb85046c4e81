function y = bench_twice(x, c)
y = 2 * x + c;
end
