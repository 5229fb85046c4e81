/// The token of the printed address stands in its fragment, which no server log sees. It is
/// exchanged once for a cookie and taken out of the address bar.

export async function exchangeToken(): Promise<void> {
  const token = location.hash.slice(1);
  if (!/^[\w-]{16,}$/.test(token)) return;
  history.replaceState(null, '', location.pathname + location.search);
  await post('/token', { token }).catch(() => {}); // without the server there is no session either, and that is shown
}

/// Whether there is a server that does not let this page in. A web socket does not tell why it failed.
export async function isRefused(): Promise<boolean> {
  return post('/admission', {}).then(
    ({ status }) => status === 401,
    () => false,
  );
}

function post(path: string, content: object): Promise<Response> {
  return fetch(path, {
    method: 'POST',
    credentials: 'same-origin',
    headers: { 'Content-Type': 'application/json' },
    body: JSON.stringify(content),
  });
}

export function sessionAddress(): string {
  return `${location.protocol === 'https:' ? 'wss' : 'ws'}://${location.host}/session`;
}
