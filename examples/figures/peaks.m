% A landscape of hills and hollows.
v = linspace(-3, 3, 41);
[x, y] = meshgrid(v, v);
z = 3*(1 - x).^2.*exp(-(x.^2 + (y + 1).^2)) - 10*(x/5 - x.^3 - y.^5).*exp(-(x.^2 + y.^2)) - exp(-((x + 1).^2 + y.^2))/3;
surf(x, y, z);
title('Peaks');
xlabel('x');
ylabel('y');
zlabel('height');
