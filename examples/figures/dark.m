% All colours of the cycle; the gallery draws it with --theme dark.
x = linspace(0, 2*pi, 200);
plot(x, sin(x), x, sin(x - 0.4), x, sin(x - 0.8), x, sin(x - 1.2), x, sin(x - 1.6), x, sin(x - 2), x, sin(x - 2.4), x, sin(x - 2.8));
legend('0.0', '0.4', '0.8', '1.2', '1.6', '2.0', '2.4', '2.8');
title('Eight phases');
xlabel('angle');
