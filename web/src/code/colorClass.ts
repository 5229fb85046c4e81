/// The style classes of the engine's colour roles.

import type { Span } from '../engine/core/protocol';

const kClasses: Record<string, string> = {
  'system blue': 'tok-blue',
  'system orange': 'tok-orange',
  'system purple': 'tok-purple',
  'system green': 'tok-green',
  'system teal': 'tok-teal',
  'tertiary label': 'tok-comment',
  link: 'tok-link',
};
export const kColorClasses = Object.values(kClasses);

/// The class of a colour role: roles of comments and links are known by their first words.
export function classOf(role: string): string | null {
  if (kClasses[role]) return kClasses[role]!;
  if (role.startsWith('tertiary')) return 'tok-comment';
  return role.startsWith('link') ? 'tok-link' : null;
}

/// A text cut at its spans: pieces in order, with the class of each or null.
export function coloredPieces(text: string, spans: Span[]): { text: string; name: string | null }[] {
  const pieces: { text: string; name: string | null }[] = [];
  let at = 0;
  for (const { start, length, color } of spans) {
    const name = classOf(color);
    if (!name || start < at) continue;
    if (start > at) pieces.push({ text: text.slice(at, start), name: null });
    pieces.push({ text: text.slice(start, start + length), name });
    at = start + length;
  }
  pieces.push({ text: text.slice(at), name: null });
  return pieces;
}
