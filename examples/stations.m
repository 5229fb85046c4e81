% Data from a file: weather stations, and what altitude does to temperature.
%
% stations.csv holds one station a line: number, mean temperature in degrees, days of sun, altitude in metres. Names of data
% files are relative to the work directory, here the folder above.

data = csvread('examples/stations.csv');
[rows, columns] = size(data);
disp([num2str(rows) ' stations, ' num2str(columns) ' columns'])

temperature = data(:, 2);
sun = data(:, 3);
altitude = data(:, 4);

disp(['mean temperature: ' num2str(mean(temperature), 4)])
disp(['median altitude: ' num2str(median(altitude))])
disp(['standard deviation of sun: ' num2str(std(sun), 4)])

% The straight line that fits best, by least squares.
fit = straight_line(altitude, temperature);
disp(['degrees per 100 m: ' num2str(100 * fit.slope, 3)])
disp(['at sea level: ' num2str(fit.offset, 4)])
disp(['largest residual: ' num2str(max(abs(fit.residuals)), 3)])
disp(['explained: ' num2str(fit.explained, 4)])

% The stations from warm to cold.
[sorted, order] = sort(temperature, 'descend');
disp('warmest three')
disp(data(order(1:3), [1 2]))

% Stations by height, in three classes.
limits = [0 600 800 2000];
for k = 1:3
  inside = (altitude >= limits(k)) & (altitude < limits(k + 1));
  label = [num2str(limits(k)) ' m to ' num2str(limits(k + 1)) ' m: '];
  disp([label num2str(sum(inside)) ' stations, mean ' num2str(mean(temperature(inside)), 3)])
end

function f = straight_line(x, y)
A = [ones(numel(x), 1) x];
c = A \ y;
f.offset = c(1);
f.slope = c(2);
f.residuals = y - A * c;
about = y - mean(y);
f.explained = 1 - (f.residuals' * f.residuals) / (about' * about);
end
