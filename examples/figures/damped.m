% A damped oscillation between the curves that bound it.
x = linspace(0, 10, 500);
plot(x, exp(-x/3).*cos(4*x), 'b', x, exp(-x/3), 'k--', x, -exp(-x/3), 'k--');
title('Damped oscillation');
xlabel('time in s');
ylabel('displacement in mm');
