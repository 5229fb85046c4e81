/// The canvas of the current figure: it paints the display list and turns fingers, mouse, wheel and
/// keys into gestures. One finger on a plot scrolls the page past it unless the figure has the panel
/// for itself; here it always has.

import { useEffect, useRef } from 'preact/hooks';
import { useSignalEffect } from '@preact/signals';
import type { App } from '../shell/core/app';
import { useSize } from '../design/widgets';
import { theme } from '../shell/device';
import { text as t } from '../texts/texts';
import { Fingers, wheelGesture } from './core/gestures';
import { short } from './core/model';
import { paintDrawing, paintTurned } from './painter';

const kTapDistance = 8;
const kTapTime = 350;
const kKeyStep = 40;
/// A wheel that has stood still for so long has ended its turn.
const kWheelTime = 180;

export function FigureCanvas({ app, describedBy }: { app: App; describedBy: string }) {
  const { figure } = app;
  const canvas = useRef<HTMLCanvasElement>(null);
  const size = useRef({ width: 0, height: 0 });
  const setView = (width: number, height: number) => {
    size.current = { width, height };
    if (width && height) figure.setView({ width, height, theme: theme.value });
  };
  const frame = useSize(setView);
  useSignalEffect(() => {
    theme.value;
    setView(size.current.width, size.current.height);
  });

  useSignalEffect(() => {
    const drawing = figure.drawing.value;
    figure.turns.value;
    const element = canvas.current;
    if (!drawing || !element) return;
    const paint = () => {
      const scale = devicePixelRatio || 1;
      const width = Math.round(drawing.width * scale);
      const height = Math.round(drawing.height * scale);
      if (element.width !== width || element.height !== height) {
        element.width = width;
        element.height = height;
        element.style.width = `${drawing.width}px`;
        element.style.height = `${drawing.height}px`;
      }
      const context = element.getContext('2d')!;
      const font = getComputedStyle(document.documentElement).getPropertyValue('--sans');
      if (figure.turned) paintTurned(context, drawing, figure.turned, { font, scale });
      else paintDrawing(context, drawing, { font, scale });
    };
    const request = requestAnimationFrame(paint);
    return () => cancelAnimationFrame(request);
  });

  usePointer(canvas, app);
  const tip = figure.tip.value;
  return (
    <div class="figure-frame" ref={frame}>
      <canvas
        ref={canvas}
        tabIndex={0}
        role="img"
        aria-label={t.figure.canvas}
        aria-describedby={describedBy}
        aria-roledescription={t.figure.canvas}
        onKeyDown={(event) => onKey(event, app, size.current)}
      />
      {tip && <Tip x={tip.px} y={tip.py} text={t.figure.tip(short(tip.x), short(tip.y))} size={size.current} />}
      <span class="visually-hidden" role="status">
        {tip ? t.figure.tip(short(tip.x), short(tip.y)) : ''}
      </span>
    </div>
  );
}

function Tip({ x, y, text, size }: { x: number; y: number; text: string; size: { width: number; height: number } }) {
  const side = x > size.width / 2 ? ' left' : '';
  const below = y < 48 ? ' below' : '';
  return (
    <div class={`figure-tip${side}${below}`} style={{ transform: `translate(${x}px, ${y}px)` }} aria-hidden="true">
      <i />
      <span>{text}</span>
    </div>
  );
}

function onKey(event: KeyboardEvent, app: App, { width, height }: { width: number; height: number }): void {
  const { figure } = app;
  const surface = figure.kind.value === 'surface';
  const arrow = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] }[event.key];
  if (arrow && (event.shiftKey || surface)) {
    figure.gesture({ kind: surface ? 'rotate' : 'pan', dx: arrow[0]! * kKeyStep, dy: arrow[1]! * kKeyStep });
  } else if (arrow) {
    const tip = figure.tip.value;
    const [x, y] = tip ? [tip.px + arrow[0]! * 6, tip.py + arrow[1]! * 6] : [width / 2, height / 2];
    void figure.tipAt(x!, y!);
  } else if (event.key === '+' || event.key === '=')
    figure.gesture(wheelGesture(surface ? 'surface' : 'plot', { x: width / 2, y: height / 2 }, -80));
  else if (event.key === '-')
    figure.gesture(wheelGesture(surface ? 'surface' : 'plot', { x: width / 2, y: height / 2 }, 80));
  else if (event.key === '0') figure.gesture({ kind: 'reset' });
  else if (event.key === 'Escape') figure.hideTip();
  else return;
  event.preventDefault();
}

function usePointer(canvas: { current: HTMLCanvasElement | null }, app: App): void {
  useEffect(() => {
    const element = canvas.current;
    if (!element) return;
    const { figure } = app;
    const kind = () => (figure.kind.value === 'surface' ? 'surface' : 'plot');
    const fingers = new Fingers(kind);
    const at = (event: MouseEvent) => ({ x: event.offsetX, y: event.offsetY });
    let began = { x: 0, y: 0, time: 0 };
    let moved = false;
    let lastTap = 0;
    let wheelEnd = 0;

    const down = (event: PointerEvent) => {
      element.setPointerCapture(event.pointerId);
      fingers.down(event.pointerId, at(event));
      if (fingers.count === 1) {
        began = { ...at(event), time: event.timeStamp };
        moved = false;
        void figure.grab();
      } else moved = true;
    };
    const move = (event: PointerEvent) => {
      const place = at(event);
      if (!fingers.count) {
        if (event.pointerType === 'mouse' && kind() === 'plot') void figure.tipAt(place.x, place.y);
        return;
      }
      if (!moved && Math.hypot(place.x - began.x, place.y - began.y) < kTapDistance) return;
      moved = true;
      for (const gesture of fingers.move(event.pointerId, place)) figure.gesture(gesture);
    };
    const up = (event: PointerEvent) => {
      fingers.up(event.pointerId);
      if (!fingers.count) figure.release();
      if (moved || event.type === 'pointercancel') return;
      const double = event.timeStamp - lastTap < kTapTime;
      lastTap = double ? 0 : event.timeStamp;
      if (double) figure.gesture({ kind: 'reset' });
      else if (kind() === 'plot') void figure.tipAt(began.x, began.y);
    };
    const leave = (event: PointerEvent) => {
      if (event.pointerType === 'mouse' && !fingers.count) figure.hideTip();
    };
    const wheel = (event: WheelEvent) => {
      event.preventDefault();
      void figure.grab();
      clearTimeout(wheelEnd);
      wheelEnd = window.setTimeout(() => {
        if (!fingers.count) figure.release();
      }, kWheelTime);
      figure.gesture(wheelGesture(kind(), at(event), event.deltaY * (event.deltaMode === 1 ? 18 : 1)));
    };
    element.addEventListener('pointerdown', down);
    element.addEventListener('pointermove', move);
    element.addEventListener('pointerup', up);
    element.addEventListener('pointercancel', up);
    element.addEventListener('pointerleave', leave);
    element.addEventListener('wheel', wheel, { passive: false });
  }, []);
}
