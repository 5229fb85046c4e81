% Foxes and hares: a simulation of two populations that live off each other.
%
% The equations of Lotka and Volterra, carried forward by the classical method of Runge and Kutta. What stays the same
% along an exact solution tells how good the computed one is.

model.birth = 1.1;
model.hunt = 0.4;
model.death = 0.4;
model.feed = 0.1;

state = [10; 10];
step = 0.05;
steps = 800;

rate = @(t, y) [model.birth * y(1) - model.hunt * y(1) * y(2); model.feed * y(1) * y(2) - model.death * y(2)];

history = zeros(2, steps + 1);
history(:, 1) = state;
for k = 1:steps
  state = runge_kutta(rate, (k - 1) * step, state, step);
  history(:, k + 1) = state;
end

hares = history(1, :);
foxes = history(2, :);
moments = step * (0:steps);

disp(['most hares: ' num2str(max(hares), 4) ', fewest: ' num2str(min(hares), 3)])
disp(['most foxes: ' num2str(max(foxes), 4) ', fewest: ' num2str(min(foxes), 3)])

peaks = find_peaks(hares);
disp(['hare peaks: ' num2str(numel(peaks))])
periods = diff(moments(peaks));
disp(['mean period: ' num2str(mean(periods), 4)])

drift = invariant(model, hares, foxes);
spread = max(drift) - min(drift);
if spread < 1e-4
  disp('the invariant holds')
else
  disp(['the invariant drifts by ' num2str(spread)])
end

% Where the two populations would rest.
rest = [model.death / model.feed, model.birth / model.hunt]

function y = runge_kutta(f, t, y, h)
k1 = f(t, y);
k2 = f(t + h / 2, y + h / 2 * k1);
k3 = f(t + h / 2, y + h / 2 * k2);
k4 = f(t + h, y + h * k3);
y = y + h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
end

% Positions where a value is above both its neighbours.
function at = find_peaks(y)
n = numel(y);
inner = y(2:n - 1);
at = find((inner > y(1:n - 2)) & (inner > y(3:n))) + 1;
end

function v = invariant(m, x, y)
v = m.feed * x - m.death * log(x) + m.hunt * y - m.birth * log(y);
end
