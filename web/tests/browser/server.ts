/// Serves dist/ as the real server does, with its policy, and the engine in memory.

import { createServer, type Server } from 'node:http';
import { readFile } from 'node:fs/promises';
import { extname, join, normalize } from 'node:path';
import { WebSocketServer, type WebSocket } from 'ws';
import { FakeSession } from '../fake/engine';

export const kPolicy =
  "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; img-src 'self' data: blob:; " +
  "font-src 'self'; connect-src 'self'; worker-src 'self'; manifest-src 'self'; frame-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'self'";

/// The headers of the help pages' frame.
const frameHeaders = (host: string) => ({
  'Content-Security-Policy':
    `sandbox allow-scripts; default-src 'none'; script-src http://${host}/frame/; style-src http://${host}/frame/; ` +
    `font-src http://${host}/frame/; img-src data:; frame-ancestors 'self'; base-uri 'none'; form-action 'none'`,
  'Cross-Origin-Resource-Policy': 'cross-origin',
  'Access-Control-Allow-Origin': '*',
});

const kTypes: Record<string, string> = {
  '.html': 'text/html; charset=utf-8',
  '.js': 'text/javascript',
  '.css': 'text/css',
  '.svg': 'image/svg+xml',
  '.png': 'image/png',
  '.woff2': 'font/woff2',
  '.json': 'application/json',
  '.webmanifest': 'application/manifest+json',
  '.txt': 'text/plain; charset=utf-8',
};

export interface TestServer {
  address: string;
  session: FakeSession;
  server: Server;
  /// From now on the app's files are those of another version, named so.
  renew(version: string): void;
  drop(): void;
  close(): void;
}

const ofVersion = (worker: Buffer, name: string) =>
  String(worker).replace(/const version = '\w+'/, `const version = '${name}'`);

export async function serve(dist: string): Promise<TestServer> {
  const session = new FakeSession();
  const sockets = new Set<WebSocket>();
  let version = '';
  const server = createServer((request, response) => {
    const path = normalize(new URL(request.url ?? '/', 'http://x').pathname);
    if (path === '/admission') return void response.writeHead(204).end(); // every page is let in
    const file = join(dist, path === '/' ? 'index.html' : path);
    readFile(file).then(
      (content) => {
        response
          .writeHead(200, {
            'Content-Type': kTypes[extname(file)] ?? 'application/octet-stream',
            'Content-Security-Policy': kPolicy,
            'X-Content-Type-Options': 'nosniff',
            'Referrer-Policy': 'no-referrer',
            'Cross-Origin-Embedder-Policy': 'require-corp',
            'Cross-Origin-Resource-Policy': 'same-origin',
            ...(path.startsWith('/frame/') ? frameHeaders(request.headers.host!) : {}),
          })
          .end(version && path === '/worker.js' ? ofVersion(content, version) : content);
      },
      () => response.writeHead(404).end(),
    );
  });
  new WebSocketServer({ server, path: '/session', maxPayload: 64 << 20 }).on('connection', (socket) => {
    sockets.add(socket);
    socket.on('close', () => sockets.delete(socket));
    const send = (text: string) => socket.send(text);
    const leave = session.join(send);
    socket.on('message', (data) => void session.receive(String(data), send));
    socket.on('close', leave);
  });
  await new Promise<void>((resolve) => server.listen(0, '127.0.0.1', resolve));
  const { port } = server.address() as { port: number };
  return {
    address: `http://127.0.0.1:${port}/`,
    session,
    server,
    renew: (name) => {
      version = name;
    },
    drop: () => {
      sockets.forEach((socket) => socket.terminate());
      server.closeAllConnections(); // one that is kept alive would still be answered
    },
    close: () => {
      sockets.forEach((socket) => socket.terminate());
      server.close();
      server.closeAllConnections();
    },
  };
}
