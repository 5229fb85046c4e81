% Two oscillations at right angles.
t = linspace(0, 2*pi, 2000);
plot(sin(5*t), sin(4*t + pi/4), 'm', 'LineWidth', 1.5);
title('Lissajous curve 5 : 4');
xlabel('sin 5t');
ylabel('sin(4t + π/4)');
