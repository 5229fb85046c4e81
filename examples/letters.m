% Text as data: counting letters, breaking a cipher, and looking for palindromes.

message = 'it was a bright cold day in april and the clocks were striking thirteen';
shift = 11;
secret = rotate(message, shift);
disp(secret)

% The letter e is the commonest in English text, so the commonest letter of the secret tells the shift.
counts = letter_counts(secret);
[most, at] = max(counts);
disp(['commonest letter: ' char(96 + at) ', ' num2str(most) ' times'])

best = break_cipher(secret);
disp(['shift found: ' num2str(best)])
disp(rotate(secret, -best))

words = 'level noon kayak banana rotor';
start = 1;
found = 0;
for k = 1:numel(words) + 1
  at_end = k > numel(words);
  if at_end
    word = words(start:k - 1);
  elseif words(k) == ' '
    word = words(start:k - 1);
  else
    word = '';
  end
  if ~isempty(word)
    if is_palindrome(word)
      found = found + 1;
      disp([upper(word) ' is a palindrome'])
    end
    start = k + 1;
  end
end
disp([num2str(found) ' palindromes'])

% Letters move along the alphabet, everything else stays.
function r = rotate(text, by)
codes = double(text);
isLower = (codes >= 97) & (codes <= 122);
codes(isLower) = mod(codes(isLower) - 97 + by, 26) + 97;
r = char(codes);
end

function n = letter_counts(text)
n = zeros(1, 26);
codes = double(text) - 96;
for c = codes
  if (c >= 1) & (c <= 26)
    n(c) = n(c) + 1;
  end
end
end

% The shift whose letters look most like English: the sum of expected frequencies is greatest.
function best = break_cipher(text)
english = [8.2 1.5 2.8 4.3 12.7 2.2 2.0 6.1 7.0 0.2 0.8 4.0 2.4 6.7 7.5 1.9 0.1 6.0 6.3 9.1 2.8 1.0 2.4 0.2 2.0 0.1];
counts = letter_counts(text);
score = zeros(1, 26);
for s = 0:25
  moved = counts(mod((0:25) + s, 26) + 1);
  score(s + 1) = moved * english';
end
[highest, at] = max(score);
best = at - 1;
end

function yes = is_palindrome(word)
yes = strcmp(word, word(end:-1:1));
end
