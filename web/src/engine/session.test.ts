import { expect, test } from 'vitest';
import type { CarrierState, Engine } from './core/engine';
import { ConnectionLost, EngineError, Session } from './core/session';

class Wire implements Engine {
  sent: { id: number; method: string; params: unknown }[] = [];
  text!: (text: string) => void;
  state!: (state: CarrierState) => void;
  send(text: string) {
    this.sent.push(JSON.parse(text));
  }
  listen(text: (text: string) => void, state: (state: CarrierState) => void) {
    this.text = text;
    this.state = state;
  }
  open() {
    this.state('open');
  }
  retry() {}
  close() {}
  answer(at: number, body: object) {
    this.text(JSON.stringify({ jsonrpc: '2.0', id: this.sent[at]!.id, ...body }));
  }
}

function opened() {
  const wire = new Wire();
  const session = new Session(wire);
  session.open();
  return { wire, session };
}

test('answers find their requests in any order, and errors keep title and text', async () => {
  const { wire, session } = opened();
  const first = session.request('files/read', { path: 'a.m' });
  const second = session.request('figure/get', {});
  const third = session.request('docs/tree', {});
  wire.answer(1, { result: { kind: 'none', model: null, revision: 4 } });
  wire.answer(0, { error: { code: 1, message: 'Failed', data: { title: 'Failed', text: 'No such file' } } });
  wire.answer(2, { error: { code: -32602, message: 'path should be a text' } });
  expect(await second).toMatchObject({ revision: 4 });
  await expect(first).rejects.toMatchObject({ code: 1, title: 'Failed', text: 'No such file', isAlert: true });
  await expect(third).rejects.toSatisfy(
    (error: EngineError) => !error.isAlert && error.title === 'path should be a text',
  );
});

test('a lost connection rejects what waits, refuses what comes, and leaves no handler behind', async () => {
  const { wire, session } = opened();
  const waiting = session.request('console/items', {});
  wire.state('lost');
  await expect(waiting).rejects.toBeInstanceOf(ConnectionLost);
  await expect(session.request('console/items', {})).rejects.toBeInstanceOf(ConnectionLost);
  expect(wire.sent).toHaveLength(1);
  wire.state('open');
  wire.answer(0, { result: {} }); // the late answer of the old connection finds nobody
});

test('notifications reach every handler until it stops', () => {
  const { wire, session } = opened();
  const seen: string[] = [];
  const stop = session.on('console/prompt', ({ text }) => seen.push(`a ${text}`));
  session.on('console/prompt', ({ text }) => seen.push(`b ${text}`));
  const prompt = (text: string) =>
    wire.text(JSON.stringify({ jsonrpc: '2.0', method: 'console/prompt', params: { text } }));
  prompt('1');
  stop();
  prompt('2');
  expect(seen).toEqual(['a 1', 'b 1', 'b 2']);
});
