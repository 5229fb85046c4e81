/// A session with something in it to look at.

import type { FakeSession } from '../fake/engine';
import { exampleModel } from '../fake/drawing';

export const kWave = `% A wave packet and its envelope.
function y = wave(x, k)
    envelope = exp(-(x.^2));
    if numel(x) > 1000
        disp('a long one')
    end
    y = envelope .* cos(k*x);
end
`;

export function fillSession({ state }: FakeSession): void {
  state.files.set('data', null);
  state.files.set('wave.m', kWave);
  state.files.set('projectile.m', 'v = 20;\ny = 2*nosuch\n');
  state.files.set('readings.csv', '1,2,3\n4,5,6\n');
  state.files.set('notes.txt', 'Ask about the second run.\n');
  state.model = exampleModel('plot');
  state.history = ['A = magic(4)'];
  const items: [string, string, string, object?][] = [
    ['inputText', '', 'A = [2 1; 1 3]; b = [3; 5];\nA \\ b'],
    ['doubleArray', 'ans', 'ans = \n 0.8000\n 1.4000'],
    ['inputText', '', 'for k = 1:3\n    s(k) = sum(1 ./ (1:k)); % harmonic\nend\ns'],
    ['doubleArray', 's', 's = \n 1.0000   1.5000   1.8333'],
    ['inputText', '', 'projectile'],
    [
      'error',
      '',
      'Error at Line 2(7) of projectile.m. Variable or function named "nosuch" not found.\n    y = 2*nosuch\n          ^',
      { file: 'projectile.m', line: 2, column: 7 },
    ],
    ['inputText', '', 'inv([1 2; 2 4])'],
    [
      'error',
      '',
      'Warning at Line 1(1) of the console. The matrix is close to singular.',
      { file: null, line: 1, column: 1, warning: true },
    ],
    ['doubleArray', 'ans', 'ans = \n  Inf   Inf\n  Inf   Inf'],
    ['inputText', '', 'A = magic(4)'],
    ['doubleArray', 'A', 'A = \n 16    2    3   13\n  5   11   10    8\n  9    7    6   12\n  4   14   15    1'],
  ];
  items.forEach(([contentType, varName, text, message], index) =>
    state.items.push({ index, contentType, varName, text, message }),
  );
  const variable = (name: string, kind: string, size: number[], preview: string) => ({
    name,
    class: kind,
    size,
    bytes: 8 * size.reduce((a, b) => a * b),
    preview,
  });
  state.variables = [
    variable('A', 'double', [4, 4], '16 2 3 13; 5 11 10 8; …'),
    variable('ans', 'double', [2, 2], 'Inf Inf; Inf Inf'),
    variable('b', 'double', [2, 1], '3; 5'),
    variable('k', 'double', [1, 1], '3'),
    variable('name', 'char', [1, 11], "'wave packet'"),
    variable('s', 'double', [1, 3], '1.0000 1.5000 1.8333'),
    variable('x', 'double', [1, 400], '-3.0000 -2.9850 -2.9699 …'),
  ];
}
