for k = 1:20
  z = randn(1, 1000000);
end
disp(num2str(round(mean(z)), 12))
