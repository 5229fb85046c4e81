A = reshape(mod((1:60000) .^ 2 * 7919, 10007) / 10007, 300, 200);
for k = 1:30
  B = pinv(A);
end
disp(num2str(sum(sum(abs(B))), 12))
