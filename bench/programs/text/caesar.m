for turns = 1:9
  text = 'Attack at dawn, retreat at dusk; the password is swordfish.';
  n = 0;
  for turn = 1:600
    out = text;
    for k = 1:numel(text)
      c = double(text(k));
      if c >= 97 && c <= 122
        c = mod(c - 97 + turn, 26) + 97;
      elseif c >= 65 && c <= 90
        c = mod(c - 65 + turn, 26) + 65;
      end
      out(k) = char(c);
    end
    n = n + out(3);
  end
end
disp(int2str(n))