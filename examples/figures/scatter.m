% Three clouds of points, each with its own size.
rng(7);
x = randn(1, 60);
y = randn(1, 60);
scatter(x, y, 0.7, 'filled');
hold('on');
scatter(x(1:40)*0.7 + 3, y(1:40) + 2, 1.3, 'filled', 'r');
scatter(x(1:20) + 1, y(1:20)*0.6 - 3.5, 2, 'filled', 'g');
legend('small', 'middle', 'large');
title('Scatter with sizes');
