text = '';
for k = 1:200
  text = [text, 'the quick brown fox jumps over the lazy dog '];
end
vowels = 0;
for k = 1:length(text)
  c = text(k);
  if c == 'a' | c == 'e' | c == 'i' | c == 'o' | c == 'u'
    vowels = vowels + 1;
  end
end
for turn = 1:60
  for k = 1:length(text)
    if text(k) == 'o'
      vowels = vowels + 1;
    end
  end
end
disp(int2str(vowels))
