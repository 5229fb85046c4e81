/// The colours that the settings of a line offer, and their coded form: base64 of a JSON text with
/// the role, by which each theme finds its own value, and the channels of the light theme.

import { text as t } from '../../texts/texts';
import { base64, fromBase64 } from './base64';

export interface LineColor {
  name: string;
  role: string;
  rgba: [number, number, number, number];
  tone: string;
}

const hex = (code: number): [number, number, number, number] => [
  ((code >> 16) & 255) / 255,
  ((code >> 8) & 255) / 255,
  (code & 255) / 255,
  1,
];

export const kLineColors: LineColor[] = [
  { name: t.figure.colors.orange, role: 'system orange', rgba: hex(0xc66a00), tone: 'orange' },
  { name: t.figure.colors.red, role: 'system red', rgba: hex(0xd1343f), tone: 'red' },
  { name: t.figure.colors.black, role: 'black', rgba: hex(0), tone: 'black' },
  { name: t.figure.colors.purple, role: 'system purple', rgba: hex(0x8449c8), tone: 'purple' },
  { name: t.figure.colors.yellow, role: 'system yellow', rgba: hex(0xa68400), tone: 'yellow' },
  { name: t.figure.colors.blue, role: 'system blue', rgba: hex(0x1f6fd6), tone: 'blue' },
  { name: t.figure.colors.green, role: 'system green', rgba: hex(0x23863c), tone: 'green' },
  { name: t.figure.colors.cyan, role: 'system teal', rgba: hex(0x0d8591), tone: 'teal' },
  { name: t.figure.colors.magenta, role: 'system pink', rgba: hex(0xd0388c), tone: 'pink' },
  { name: t.figure.colors.white, role: 'white', rgba: hex(0xffffff), tone: 'white' },
  { name: t.figure.colors.clear, role: 'clear', rgba: [0, 0, 0, 0], tone: 'clear' },
];

export const codedColor = ({ role, rgba }: LineColor): string => base64(JSON.stringify({ role, rgba }));

/// The offered colour that the coded form holds; null for another one.
export function colorOf(coded: string): LineColor | null {
  try {
    const { role, rgba } = JSON.parse(fromBase64(coded));
    return (
      kLineColors.find((color) => (role ? color.role === role : color.rgba.every((value, k) => value === rgba[k]))) ??
      null
    );
  } catch {
    return null;
  }
}
