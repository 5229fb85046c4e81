/// What the app and the frame of a help page say to each other.

export type ToFrame =
  | { kind: 'look'; theme: string; motion: string; size: number }
  | { kind: 'page'; html: string; tryIt: string }
  | { kind: 'find'; text: string }
  | { kind: 'step'; by: number }
  | { kind: 'answer'; id: number; value: unknown };

export type FromFrame =
  | { kind: 'ready' }
  | { kind: 'ask'; id: number; what: 'picture' | 'colors'; text: string }
  | { kind: 'follow'; href: string }
  | { kind: 'run'; text: string }
  | { kind: 'found'; at: number; count: number }
  | { kind: 'key'; key: string; code: string; altKey: boolean; ctrlKey: boolean; metaKey: boolean; shiftKey: boolean };
