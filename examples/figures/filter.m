% The impulse response of a low-pass filter: a sinc under a Hamming window.
n = -20:20;
h = sin(0.3*pi*n)./(pi*n);
h(21) = 0.3;
h = h.*(0.54 + 0.46*cos(pi*n/20));
stem(n, h, 'filled');
title('Low-pass filter, 41 taps');
xlabel('n');
ylabel('h(n)');
