A = reshape(mod((1:200000) * 7919, 10007) / 10007, 1000, 200);
csvwrite('saved.csv', A)
