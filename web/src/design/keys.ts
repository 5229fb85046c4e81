/// The names of keys as they stand on this device's keyboard.

const isApple = /^(Mac|iP)/.test(navigator.platform);

export const keysText = (keys: string) => (isApple ? keys.replace('Ctrl', '⌘') : keys);
