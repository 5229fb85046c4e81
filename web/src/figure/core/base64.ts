/// Base64, without the help of a page.

const kDigits = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/';
const kValues = new Uint8Array(128);
[...kDigits].forEach((digit, value) => {
  kValues[digit.charCodeAt(0)] = value;
});

/// Of a text whose units are bytes.
export function base64(text: string): string {
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

export function fromBase64(text: string): string {
  return String.fromCharCode(...bytesFrom(text));
}

export function bytesFrom(text: string): Uint8Array {
  const length = Math.floor((text.replace(/=+$/, '').length * 6) / 8);
  const bytes = new Uint8Array(length);
  let bits = 0;
  for (let k = 0, at = 0; at < length; k++) {
    bits = (bits << 6) | kValues[text.charCodeAt(k)]!;
    if (k % 4 > 0) bytes[at++] = bits >> (6 - 2 * (k % 4));
  }
  return bytes;
}
