import { expect, test } from 'vitest';
import { assignment, parseTable, writtenOut } from './core/valueTable';

test('reads what the console shows: plain, scaled, in blocks of columns, complex', () => {
  expect(parseTable('A = \n 1   2\n 3   4', 2, 2)).toEqual({
    scale: '',
    rows: [
      ['1', '2'],
      ['3', '4'],
    ],
  });
  expect(parseTable('x = \n1e3 *\n 1.0000   2.0000', 1, 2)).toEqual({ scale: '1e3', rows: [['1.0000', '2.0000']] });
  expect(parseTable('x = \nColumns 1 to 2\n 1 2\n 4 5\nColumn 3\n 3\n 6', 2, 3)?.rows).toEqual([
    ['1', '2', '3'],
    ['4', '5', '6'],
  ]);
  expect(parseTable('z = \n 1.0 + 2.0i   3.0 - 1.0i', 1, 2)?.rows).toEqual([['1.0+2.0i', '3.0-1.0i']]);
});

test('gives nothing for a text that is no table of that size', () => {
  for (const [text, rows, columns] of [
    ['A = \n 1 2\n 3', 2, 2],
    ['A(:,:,1) = \n 1 2', 1, 1],
    ['', 2, 2],
  ] as const) {
    expect(parseTable(text, rows, columns)).toBeNull();
  }
});

test('an element is set by a command that counts from 1', () =>
  expect(assignment('A', 0, 2, '7')).toBe('A(1, 3) = 7;'));

test('an edited element is written with its factor', () => {
  const shown = [['1.5', '1e3'], ['0', '1e3'], ['1.5', ''], ['1.0+2.0i', '1e-3']] as const;
  expect(shown.map(([cell, scale]) => writtenOut(cell, scale))).toEqual(['1.5*1e3', '0', '1.5', '(1.0+2.0i)*1e-3']);
});
