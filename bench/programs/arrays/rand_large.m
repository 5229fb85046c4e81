for k = 1:60
  z = rand(1, 1000000);
end
disp(num2str(round(10 * mean(z)), 12))
