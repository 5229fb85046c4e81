% Limits and ticks by hand.
x = linspace(-2*pi, 2*pi, 600);
plot(x, sin(x)./x, 'LineWidth', 1.5);
hold('on');
plot(x, cos(x), ':');
xlim([-2*pi, 2*pi]);
xticks(-2*pi:pi:2*pi);
ylim([-1.25, 1.25]);
yticks(-1:0.5:1);
legend('sin(x)/x', 'cos(x)');
title('Limits and ticks by hand');
