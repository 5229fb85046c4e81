A = csvread('numbers.csv');
disp(sum(sum(A)))
