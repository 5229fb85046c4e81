% A saddle and a plane through it, inside limits set by hand.
v = linspace(-2, 2, 17);
[x, y] = meshgrid(v, v);
surf(x, y, x.^2 - y.^2);
hold('on');
surf(x, y, 0.4*x + 0.2*y);
zlim([-3, 3]);
zticks(-3:1.5:3);
title('A saddle and a plane');
xlabel('x');
ylabel('y');
zlabel('z');
