for turns = 1:23
  words = 'the cat sat on the mat and the dog sat on the log while a cow ate the hay ';
  total = 0;
  for turn = 1:300
    c = struct();
    w = '';
    for k = 1:numel(words)
      if words(k) == ' '
        if isfield(c, w)
          c.(w) = c.(w) + 1;
        else
          c.(w) = 1;
        end
        w = '';
      else
        w = [w, words(k)];
      end
    end
    total = total + c.the * 10 + c.sat;
  end
end
disp(int2str(total))