/// The token of the printed address stands in its fragment, which no server log sees. It is
/// exchanged once for a cookie and taken out of the address bar.

export async function exchangeToken(): Promise<void> {
  const token = location.hash.slice(1);
  if (!/^[\w-]{16,}$/.test(token)) return;
  history.replaceState(null, '', location.pathname + location.search);
  await fetch('/token', {
    method: 'POST',
    credentials: 'same-origin',
    headers: { 'Content-Type': 'application/json' },
    body: JSON.stringify({ token }),
  }).catch(() => {}); // without the server there is no session either, and that is shown
}

export function sessionAddress(): string {
  return `${location.protocol === 'https:' ? 'wss' : 'ws'}://${location.host}/session`;
}
