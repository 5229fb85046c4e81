/// The colours that the settings of a line offer, and their coded form: base64 of a JSON text with
/// the role, by which each theme finds its own value, and the channels of the light theme.

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
  { name: 'Orange', role: 'system orange', rgba: hex(0xc66a00), tone: 'orange' },
  { name: 'Red', role: 'system red', rgba: hex(0xd1343f), tone: 'red' },
  { name: 'Black', role: 'black', rgba: hex(0), tone: 'black' },
  { name: 'Purple', role: 'system purple', rgba: hex(0x8449c8), tone: 'purple' },
  { name: 'Yellow', role: 'system yellow', rgba: hex(0xa68400), tone: 'yellow' },
  { name: 'Blue', role: 'system blue', rgba: hex(0x1f6fd6), tone: 'blue' },
  { name: 'Green', role: 'system green', rgba: hex(0x23863c), tone: 'green' },
  { name: 'Cyan', role: 'system teal', rgba: hex(0x0d8591), tone: 'teal' },
  { name: 'Magenta', role: 'system pink', rgba: hex(0xd0388c), tone: 'pink' },
  { name: 'White', role: 'white', rgba: hex(0xffffff), tone: 'white' },
  { name: 'Clear', role: 'clear', rgba: [0, 0, 0, 0], tone: 'clear' },
];

const kDigits = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/';

function base64(text: string): string {
  let out = '';
  for (let k = 0; k < text.length; k += 3) {
    const [a, b, c] = [0, 1, 2].map((j) => text.charCodeAt(k + j) || 0) as [number, number, number];
    const bits = (a << 16) | (b << 8) | c;
    const left = text.length - k;
    out +=
      kDigits[bits >> 18]! +
      kDigits[(bits >> 12) & 63]! +
      (left > 1 ? kDigits[(bits >> 6) & 63]! : '=') +
      (left > 2 ? kDigits[bits & 63]! : '=');
  }
  return out;
}

function fromBase64(text: string): string {
  const digits = [...text.replace(/=+$/, '')].map((digit) => kDigits.indexOf(digit));
  let out = '';
  for (let k = 0; k + 1 < digits.length; k += 4) {
    const bits = (digits[k]! << 18) | (digits[k + 1]! << 12) | ((digits[k + 2] ?? 0) << 6) | (digits[k + 3] ?? 0);
    const count = Math.min(3, digits.length - k - 1);
    for (let j = 0; j < count; j++) out += String.fromCharCode((bits >> (16 - 8 * j)) & 255);
  }
  return out;
}

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
