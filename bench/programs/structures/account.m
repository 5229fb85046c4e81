for turns = 1:13
  a.owner = 'Ada';
  a.balance = 100;
  a.log.count = 0;
  a.log.last = 0;
  for k = 1:30000
    a = deposit(a, mod(k, 7));
    if a.balance > 1000
      a = withdraw(a, 900);
    end
  end
end
disp(int2str(a.balance + a.log.count + a.log.last))
function a = deposit(a, x)
a.balance = a.balance + x;
a.log.count = a.log.count + 1;
a.log.last = x;
end
function a = withdraw(a, x)
a.balance = a.balance - x;
a.log.count = a.log.count + 1;
end
