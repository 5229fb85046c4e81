/// The keyboard's layouts and presses as the protocol tells them.

import type { Key, KeyboardType, KeyPress } from '../../src/engine/core/protocol';

const kWords: Record<string, Partial<Key>> = {
  deleteBackward: { image: 'delete.left', widthUnit: 3 },
  enter: { text: 'return', widthUnit: 4 },
  shift: { image: 'shift', widthUnit: 3 },
  numKeyboard: { text: '123', widthUnit: 3 },
  abc: { text: 'ABC', widthUnit: 3 },
  space: { text: 'space', char: ' ', widthUnit: 6 },
};
const key = (id: string): Key => ({
  id,
  widthUnit: 2,
  ...(kWords[id] ?? { text: id, char: id }),
  ...(id === 'e' ? { longPress: ['exp(', 'eps'] } : {}),
});
const rows = (...texts: string[]) => texts.map((text) => text.split(' ').map(key));

export const keyboardLayouts: Record<KeyboardType, Key[][]> = {
  alpha: rows(
    'q w e r t y u i o p deleteBackward',
    'a s d f g h j k l enter',
    'shift z x c v b n m , ;',
    'numKeyboard [ ( space ) ] : =',
  ),
  alphaCap: rows(
    'Q W E R T Y U I O P deleteBackward',
    'A S D F G H J K L enter',
    'shift Z X C V B N M , ; =',
    'numKeyboard [ ( space ) ] : =',
  ),
  symbol: rows(
    '1 2 3 4 5 6 7 8 9 0 deleteBackward',
    '^ \\ - + * . < > ~ enter',
    "/ ! _ @ ' % | & ? , ;",
    'abc [ ( space ) ] : =',
  ),
};

export function pressKey(params: {
  keyboardType: KeyboardType;
  capLocked: boolean;
  key: string;
  tap: string;
}): KeyPress {
  const { keyboardType, capLocked, key: id, tap } = params;
  if (id === 'shift') {
    return tap === 'double'
      ? { keyboardType: 'alphaCap', capLocked: true }
      : { keyboardType: keyboardType === 'alpha' ? 'alphaCap' : 'alpha', capLocked: false };
  }
  if (id === 'numKeyboard') return { keyboardType: 'symbol', capLocked: false };
  if (id === 'abc') return { keyboardType: 'alpha', capLocked: false };
  if (id === 'deleteBackward' || id === 'enter') return { keyboardType, capLocked, action: id };
  return {
    keyboardType: keyboardType === 'alphaCap' && !capLocked ? 'alpha' : keyboardType,
    capLocked,
    insert: id === 'space' ? ' ' : id,
  };
}
