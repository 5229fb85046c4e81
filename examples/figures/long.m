% A million points: the picture is as small as that of a thousand.
rng(3);
n = 1e6;
t = linspace(0, 1, n);
plot(t, cumsum(randn(1, n))/sqrt(n) + 0.01*randn(1, n));
title('A random walk of a million steps');
xlabel('time');
ylabel('place');
