/// The on-screen keyboard. A press acts when the finger lifts or, for characters, when another
/// finger comes down, so that fast typing loses nothing; delete repeats while it is held; a swipe on
/// the space key moves the caret; a long press offers a key's alternatives.

import { useEffect, useRef } from 'preact/hooks';
import { useSignal } from '@preact/signals';
import type { App } from '../shell/core/app';
import { useApp } from '../shell/context';
import type { Key } from '../engine/core/protocol';
import { Icon, isIcon } from '../design/icons';
import { IconButton, keepFocus } from '../design/widgets';
import { text as t } from '../texts/texts';

const kFunctionKeys = new Set(['shift', 'enter', 'deleteBackward', 'numKeyboard', 'abc']);
const kLongPress = 420;
const kRepeatDelay = 400;
const kRepeatEvery = 70;
const kDoubleTap = 300;
const kCaretStep = 9;

export default function KeyboardView() {
  const app = useApp();
  const { keyboard } = app;
  const tick = () => {
    navigator.vibrate?.(6);
  };
  return (
    <div
      class="keyboard"
      role="group"
      aria-label={t.keyboard.name}
      onPointerDown={keepFocus}
      onContextMenu={(event) => event.preventDefault()}
    >
      <div class="keyboard-bar">
        <IconButton
          icon="phone"
          label={t.keyboard.toSystem}
          keepFocus
          onClick={() => toSystemKeyboard(app)}
        />
        <IconButton
          icon="hide"
          label={t.keyboard.hide}
          keepFocus
          onClick={() => (document.activeElement as HTMLElement | null)?.blur()}
        />
      </div>
      {keyboard.rows.value.map((row, k) => (
        <div class="key-row" key={`${keyboard.type.value}-${k}`}>
          {row.map((key) => (
            <KeyButton item={key} key={key.id} tick={tick} />
          ))}
        </div>
      ))}
    </div>
  );
}

function toSystemKeyboard({ preferences, dialogs }: App): void {
  const { keyboard } = preferences.value.value;
  preferences.set({ keyboard: 'system' });
  dialogs.say(t.keyboard.systemNow, t.keyboard.toOwn, () => preferences.set({ keyboard }));
}

function KeyButton({ item, tick }: { item: Key; tick(): void }) {
  const { keyboard } = useApp();
  const pressed = useSignal(false);
  const choices = useSignal<number | null>(null);
  const state = useRef({ timer: 0, startX: 0, swiped: 0, handled: false, lastTap: 0 }).current;
  const stop = () => {
    clearTimeout(state.timer);
    clearInterval(state.timer);
  };
  useEffect(() => stop, []);

  const down = (event: PointerEvent) => {
    const element = event.currentTarget as HTMLElement;
    element.setPointerCapture(event.pointerId);
    tick();
    pressed.value = true;
    Object.assign(state, { startX: event.clientX, swiped: 0, handled: false });
    stop();
    if (item.id === 'deleteBackward') {
      state.handled = true;
      void keyboard.press(item.id);
      state.timer = window.setTimeout(() => {
        state.timer = window.setInterval(() => void keyboard.press(item.id), kRepeatEvery);
      }, kRepeatDelay);
    } else if (item.longPress?.length) {
      state.timer = window.setTimeout(() => {
        choices.value = 0;
        tick();
      }, kLongPress);
    }
  };
  const move = (event: PointerEvent) => {
    if (!pressed.value) return;
    const dx = event.clientX - state.startX;
    if (choices.value !== null) {
      choices.value = Math.max(0, Math.min(item.longPress!.length - 1, Math.round(dx / 40)));
    } else if (item.id === 'space') {
      const steps = Math.trunc(dx / kCaretStep);
      if (steps !== state.swiped) {
        keyboard.target.value?.moveCaret(steps - state.swiped);
        state.swiped = steps;
        state.handled = true;
      }
    }
  };
  const up = (event: PointerEvent) => {
    stop();
    if (!pressed.value) return;
    pressed.value = false;
    const chosen = choices.value;
    choices.value = null;
    if (event.type === 'pointercancel' || state.handled) return;
    if (chosen !== null) {
      keyboard.pick(item.longPress![chosen]!);
      return;
    }
    const double = item.id === 'shift' && event.timeStamp - state.lastTap < kDoubleTap;
    state.lastTap = event.timeStamp;
    void keyboard.press(item.id, double ? 'double' : 'single');
  };
  const capital = keyboard.type.value === 'alphaCap';
  const name = t.keyboard.keys[item.id] ?? item.text ?? item.char ?? item.id;
  return (
    <button
      type="button"
      tabIndex={-1}
      aria-label={name}
      data-key={item.id}
      style={{ flexGrow: item.widthUnit }}
      class={`key${kFunctionKeys.has(item.id) ? ' function' : ''}${pressed.value ? ' pressed' : ''}${item.id === 'shift' && capital ? ' lit' : ''}`}
      onPointerDown={down}
      onPointerMove={move}
      onPointerUp={up}
      onPointerCancel={up}
      onClick={(event) => {
        if (event.detail === 0) void keyboard.press(item.id);
      }}
    >
      <span class="cap">
        <KeyFace item={item} pressed={pressed.value} locked={keyboard.capLocked.value} capital={capital} />
      </span>
      {pressed.value && item.char && choices.value === null && item.id !== 'space' && (
        <span class="balloon" aria-hidden="true">
          {item.text ?? item.char}
        </span>
      )}
      {choices.value !== null && (
        <span class="alternatives" aria-hidden="true">
          {item.longPress!.map((choice, k) => (
            <i class={k === choices.value ? 'on' : ''} key={choice}>
              {choice}
            </i>
          ))}
        </span>
      )}
    </button>
  );
}

function KeyFace({
  item,
  pressed,
  locked,
  capital,
}: {
  item: Key;
  pressed: boolean;
  locked: boolean;
  capital: boolean;
}) {
  const image = item.id === 'shift' && capital ? 'shift.fill' : item.image;
  if (image && isIcon(image.replace('.left.fill', '.left'))) {
    return (
      <>
        <Icon name={image.replace('.left.fill', '.left') as 'shift'} />
        {item.id === 'shift' && locked && <i class="lock" />}
        {pressed && item.id === 'deleteBackward' && <i class="fill" />}
      </>
    );
  }
  return <>{item.text ?? item.char ?? item.id}</>;
}
