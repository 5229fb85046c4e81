% A signal and what a converter of three bits makes of it.
t = linspace(0, 1, 400);
s = sin(2*pi*t);
plot(t, s);
hold('on');
k = linspace(0, 1, 33);
stairs(k, round(3.5*sin(2*pi*k))/3.5, 'r');
legend('signal', 'converted');
title('Sampling with three bits');
xlabel('time in ms');
ylabel('level');
