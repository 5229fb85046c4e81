disp(1)
