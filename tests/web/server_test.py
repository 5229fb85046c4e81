#!/usr/bin/env python3
"""The web server as a browser, and as an attacker, meets it: server_test.py KELO"""
import base64, json, os, re, signal, socket, struct, subprocess, sys, tempfile, time

LONGEST = 64 << 20


class Http:
    """One request on a connection of its own; `socket` stays open for what follows an upgrade."""

    def __init__(self, port, head, body=b''):
        self.socket = socket.create_connection(('127.0.0.1', port), 10)
        self.socket.sendall(head.replace('\n', '\r\n').encode() + body)
        self.bytes = b''
        while b'\r\n\r\n' not in self.bytes:
            self.bytes += self.more()
        text, self.rest = self.bytes.split(b'\r\n\r\n', 1)
        lines = text.decode().split('\r\n')
        self.status = int(lines[0].split()[1])
        self.headers = {name.lower(): value for name, value in (line.split(': ', 1) for line in lines[1:])}

    def more(self):
        piece = self.socket.recv(1 << 16)
        if not piece:
            raise EOFError
        return piece


class Window:
    """A web socket."""

    def __init__(self, server):
        self.http = server.upgrade()
        assert self.http.status == 101, self.http.status
        self.bytes, self.others, self.next = self.http.rest, [], 1

    def frame(self, first, payload):
        size = len(payload)
        length = struct.pack('>B', 128 | size) if size < 126 else struct.pack('>BQ', 255, size)
        self.http.socket.sendall(struct.pack('>B', first) + length + bytes(4) + payload)

    def take(self, size):
        while len(self.bytes) < size:
            self.bytes += self.http.more()
        piece, self.bytes = self.bytes[:size], self.bytes[size:]
        return piece

    def receive(self):
        """The next message, or the code of the farewell."""
        while True:
            first, length = self.take(2)
            if length > 125:
                length = struct.unpack('>H' if length == 126 else '>Q', self.take(2 if length == 126 else 8))[0]
            payload = self.take(length)
            if first & 15 == 8:
                return struct.unpack('>H', payload[:2])[0]
            if first & 15 == 1:
                return json.loads(payload)

    def send(self, method, **params):
        self.next += 1
        self.frame(0x81, json.dumps({'jsonrpc': '2.0', 'id': self.next, 'method': method, 'params': params}).encode())
        return self.next

    def wait(self, wanted):
        """The first message, of those that came and that come, that is wanted."""
        for k, message in enumerate(self.others):
            if wanted(message):
                return self.others.pop(k)
        while True:
            message = self.receive()
            if wanted(message):
                return message
            self.others.append(message)

    def answer(self, id):
        return self.wait(lambda message: message.get('id') == id)

    def ask(self, method, **params):
        return self.answer(self.send(method, **params))['result']

    def notified(self, method, **params):
        return self.wait(lambda m: m.get('method') == method and params.items() <= m['params'].items())['params']


class Server:
    def __init__(self, program, folder=None, *options):
        self.folder = folder or tempfile.TemporaryDirectory()
        place = self.folder.name
        open(os.path.join(place, 'mine.txt'), 'w').write('mine')
        self.process = subprocess.Popen(
            [program, 'serve', '--no-open', *options, '--workdir', place, '--state', place + '/state',
             '--documents', place + '/documents'], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        address = self.process.stdout.readline().strip()
        found = re.fullmatch(r'http://127\.0\.0\.1:(\d+)/#([\w-]{43})', address)
        assert found, address
        self.port, self.token, self.cookie = int(found[1]), found[2], None
        self.host = f'127.0.0.1:{self.port}'

    def get(self, target, host=None, more=''):
        return Http(self.port, f'GET {target} HTTP/1.1\nHost: {host or self.host}\n{more}\n')

    def post(self, path, body, kind='application/json', origin=None, cookie=''):
        body = body.encode()
        return Http(self.port, f'POST {path} HTTP/1.1\nHost: {self.host}\nOrigin: {origin or "http://" + self.host}\n'
                    f'Cookie: {cookie}\nContent-Type: {kind}\nContent-Length: {len(body)}\n\n', body)

    def post_token(self, body, **more):
        return self.post('/token', body, **more)

    def admits(self, cookie):
        return self.post('/admission', '{}', cookie=cookie).status == 204

    def upgrade(self, origin=None, cookie=None):
        return self.get('/session', more=f'Origin: {origin or "http://" + self.host}\n'
                        f'Cookie: {self.cookie if cookie is None else cookie}\nConnection: Upgrade\nUpgrade: websocket\n'
                        f'Sec-WebSocket-Version: 13\nSec-WebSocket-Key: {base64.b64encode(os.urandom(16)).decode()}\n')


def test_requests(server):
    page = server.get('/')
    for name in ('content-security-policy', 'x-content-type-options', 'referrer-policy', 'cross-origin-opener-policy',
                 'cross-origin-embedder-policy', 'cross-origin-resource-policy', 'x-frame-options'):
        assert name in page.headers, name
    assert "frame-ancestors 'none'" in page.headers['content-security-policy']
    assert 'unsafe-inline' not in page.headers['content-security-policy']
    assert server.get('/', host=f'evil.test:{server.port}').status == 403
    assert Http(server.port, 'GET / HTTP/1.1\n\n').status == 403
    assert Http(server.port, f'GET / HTTP/1.1\nHost: {server.host}\nHost: evil.test\n\n').status == 403
    for target in ('/mine.txt', '/../mine.txt', '/assets/../../mine.txt', '/%2e%2e/mine.txt', '//etc/passwd',
                   '/assets', '/index.html.br/', '/index.html%00.js'):
        assert server.get(target).status == 404, target
    assert Http(server.port, f'PUT / HTTP/1.1\nHost: {server.host}\n\n').status == 405
    assert server.get('/', more=f'X: {"x" * 20000}\n').status == 413
    assert server.post_token('x' * 5000).status == 413
    assert server.get('/session', more=f'Origin: http://{server.host}\n').status == 401


def test_app(server):
    """Only where the app is built."""
    page = server.get('/', more='Accept-Encoding: gzip, br\n')
    if page.status == 404:
        return print('the app is not built: its files were not looked at')
    assert page.headers['content-type'] == 'text/html; charset=utf-8' and page.headers['cache-control'] == 'no-cache'
    assert page.headers['content-encoding'] == 'br'
    assert server.get('/', more=f'If-None-Match: {page.headers["etag"]}\n').status == 304
    head = Http(server.port, f'HEAD / HTTP/1.1\nHost: {server.host}\nConnection: close\n\n')
    assert int(head.headers['content-length']) > 0 and head.rest == b'' and head.socket.recv(1) == b''
    plain = server.get('/')
    while len(plain.rest) < int(plain.headers['content-length']):
        plain.rest += plain.more()
    frame = server.get('/frame/help.html')
    policy = frame.headers['content-security-policy']
    assert 'sandbox allow-scripts;' in policy and "frame-ancestors 'self'" in policy, policy
    assert f'script-src \'self\' http://{server.host}/frame/;' in policy, policy
    assert frame.headers['access-control-allow-origin'] == '*' and 'access-control-allow-origin' not in page.headers
    script = re.search(r'src="(/assets/[^"]+\.js)"', plain.rest.decode())[1]
    asset = server.get(script)
    assert 'immutable' in asset.headers['cache-control'] and asset.headers['content-type'].startswith('text/javascript')


def test_token(server):
    assert server.post_token('{}').status == 400
    assert server.post_token('[').status == 400
    wrong = server.post_token(json.dumps({'token': 'x' * 43}))
    assert wrong.status == 401, (wrong.status, wrong.bytes)
    assert server.post_token(json.dumps({'token': server.token}), origin='http://evil.test').status == 403
    assert server.post_token(json.dumps({'token': server.token}), kind='text/plain').status == 415
    good = server.post_token(json.dumps({'token': server.token}))
    assert good.status == 204
    server.cookie, *attributes = good.headers['set-cookie'].split('; ')
    assert 'HttpOnly' in attributes and 'SameSite=Strict' in attributes and server.token not in server.cookie
    assert server.upgrade(cookie='').status == 401
    assert server.upgrade(origin='http://evil.test').status == 403


def test_windows(server):
    one, other = Window(server), Window(server)
    assert one.ask('session/open')['protocol'] == 1
    run = one.send('console/run', text='x = 1:3')
    assert 'x = ' in other.notified('console/item', varName='x')['text']
    assert one.answer(run)['result']['status'] == 'done'
    assert not [m for m in other.others if 'id' in m]

    one.send('console/run', text='y = 0; while true, y = y + 1; end')
    other.notified('run/state', status='running')
    one.http.socket.close()  # as a phone that is locked
    back = Window(server)
    assert back.ask('session/open')['runState'] == 'running'
    back.ask('run/stop')
    other.notified('run/state', status='idle')
    assert any(item['varName'] == 'x' for item in back.ask('console/items')['items'])

    back.frame(0x01, b'"' + b'x' * LONGEST)
    back.frame(0x80, b'"')
    assert back.wait(lambda message: 'error' in message)['error']['code'] in (-32700, -32600)
    assert back.ask('console/isComplete', text='x')['complete'] is True
    back.frame(0x82, b'binary')
    while not isinstance(message := back.receive(), int):
        pass
    assert message == 1003, message
    return other


def test_end(server, window):
    window.send('console/run', text='while true, end')
    window.notified('run/state', status='running')
    server.process.send_signal(signal.SIGINT)
    window.notified('run/state', status='idle')
    assert server.process.poll() is None
    time.sleep(2.1)
    server.process.send_signal(signal.SIGINT)
    while not isinstance(message := window.receive(), int):
        pass
    assert message == 1001, message
    assert server.process.wait(10) == 0
    assert server.token not in server.process.stderr.read()


def test_next_start(program, server):
    """A page that was let in comes back to the server of the next start, until a new token is asked for."""
    kept = os.path.join(server.folder.name, 'state', 'web-keys.json')
    assert os.stat(kept).st_mode & 0o777 == 0o600
    for options, rights, isKept in (((), 0o600, True), (('--new-token',), 0o600, False), ((), 0o644, False)):
        os.chmod(kept, rights)
        old, server = server, Server(program, server.folder, *options)
        server.cookie = old.cookie
        try:
            assert server.admits(old.cookie) == isKept and (server.token == old.token) == isKept
            assert server.upgrade().status == (101 if isKept else 401)
            if rights == 0o600:
                assert server.port == old.port
            server.cookie = server.post_token(json.dumps({'token': server.token})).headers['set-cookie'].split('; ')[0]
            assert server.admits(server.cookie) and not server.admits(server.cookie + 'x')
        finally:
            server.process.kill()
            server.process.wait()


def test_tries(server):
    statuses = [server.post_token(json.dumps({'token': 'x' * 43})).status for _ in range(12)]
    assert statuses[-1] == 429, statuses
    assert server.post_token(json.dumps({'token': server.token})).status == 429


server = Server(sys.argv[1])
try:
    test_requests(server)
    test_app(server)
    test_token(server)
    window = test_windows(server)
    test_tries(server)
    test_end(server, window)
    test_next_start(sys.argv[1], server)
finally:
    server.process.kill()
