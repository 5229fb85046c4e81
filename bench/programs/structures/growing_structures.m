for turns = 1:14
  s = 0;
  for turn = 1:20
    people = struct('id', 0, 'age', 0);
    for k = 1:1000
      people(k).id = k;
      people(k).age = mod(k * 37, 90);
    end
    for k = 1:numel(people)
      p = people(k);
      if p.age > 30
        s = s + p.id;
      end
    end
  end
end
disp(int2str(s))