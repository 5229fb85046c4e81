for turns = 1:6
  y = [1; 0; 0.5];
  h = 0.001;
  for k = 1:3000
    k1 = lorenz(y);
    k2 = lorenz(y + h / 2 * k1);
    k3 = lorenz(y + h / 2 * k2);
    k4 = lorenz(y + h * k3);
    y = y + h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
  end
end
disp(int2str(1e6 * y(1)))
function d = lorenz(y)
d = zeros(3, 1);
d(1) = 10 * (y(2) - y(1));
d(2) = y(1) * (28 - y(3)) - y(2);
d(3) = y(1) * y(2) - 8 / 3 * y(3);
end
