/// Small pieces that views share: icon buttons, menus, switches, segments, empty states.

import type { ComponentChildren } from 'preact';
import { useEffect, useLayoutEffect, useRef } from 'preact/hooks';
import { signal } from '@preact/signals';
import { Icon, type IconName, Rings } from './icons';
import { keysText } from './keys';

export function IconButton(props: {
  icon: IconName;
  label: string;
  onClick(event: MouseEvent): void;
  disabled?: boolean;
  on?: boolean;
  keepFocus?: boolean;
}) {
  return (
    <button
      type="button"
      class={`icon-button${props.on ? ' on' : ''}`}
      aria-label={props.label}
      title={props.label}
      aria-pressed={props.on}
      disabled={props.disabled}
      onClick={props.onClick}
      onPointerDown={props.keepFocus ? keepFocus : undefined}
    >
      <Icon name={props.icon} />
    </button>
  );
}

/// A press that leaves the focus, and with it the keyboard, where it is.
export function keepFocus(event: Event): void {
  event.preventDefault();
}

export interface MenuItem {
  label: string;
  icon?: IconName;
  danger?: boolean;
  disabled?: boolean;
  keys?: string;
  checked?: boolean;
  divided?: boolean;
  onPick(): void;
}
interface OpenMenu {
  items: MenuItem[];
  x: number;
  y: number;
  label: string;
  opener: Element | null;
}
const openMenu = signal<OpenMenu | null>(null);

/// Opens a menu at an element or at a point; on a phone it rises from the foot of the page.
export function showMenu(at: MouseEvent | { x: number; y: number }, label: string, items: MenuItem[]): void {
  let { x, y } = at;
  if ('currentTarget' in at && at.currentTarget instanceof Element && at.type !== 'contextmenu') {
    const box = at.currentTarget.getBoundingClientRect();
    x = box.right;
    y = box.bottom + 4;
  }
  openMenu.value = { items, x, y, label, opener: document.activeElement };
}

export function closeMenu(): void {
  const opener = openMenu.value?.opener;
  openMenu.value = null;
  if (opener instanceof HTMLElement) opener.focus({ preventScroll: true });
}

export function MenuHost() {
  const menu = openMenu.value;
  const ref = useRef<HTMLDivElement>(null);
  useLayoutEffect(() => {
    const element = ref.current;
    if (!menu || !element) return;
    const { width, height } = element.getBoundingClientRect();
    element.style.left = `${Math.max(8, Math.min(menu.x - (menu.x > width ? width : 0), innerWidth - width - 8))}px`;
    element.style.top = `${Math.max(8, Math.min(menu.y, innerHeight - height - 8))}px`;
    element.querySelector<HTMLElement>('button:not(:disabled)')?.focus({ preventScroll: true });
  }, [menu]);
  if (!menu) return null;
  const pick = (item: MenuItem) => {
    closeMenu();
    item.onPick();
  };
  return (
    <>
      <div
        class="menu-cover"
        onPointerDown={(event) => {
          event.preventDefault();
          closeMenu();
        }}
      />
      <div
        class="menu"
        role="menu"
        aria-label={menu.label}
        ref={ref}
        onKeyDown={(event) => moveInMenu(event, ref.current!)}
      >
        {menu.items.map((item) => [
          item.divided && <hr />,
          <button
            type="button"
            role={item.checked === undefined ? 'menuitem' : 'menuitemradio'}
            aria-checked={item.checked}
            class={item.danger ? 'danger' : undefined}
            disabled={item.disabled}
            onClick={() => pick(item)}
          >
            {item.checked !== undefined ? (
              item.checked ? (
                <Icon name="check" />
              ) : (
                <span class="icon" />
              )
            ) : (
              item.icon && <Icon name={item.icon} />
            )}
            <span>{item.label}</span>
            {item.keys && <kbd>{keysText(item.keys)}</kbd>}
          </button>,
        ])}
      </div>
    </>
  );
}

function moveInMenu(event: KeyboardEvent, menu: HTMLElement): void {
  if (event.key === 'Escape' || event.key === 'Tab') {
    event.preventDefault();
    closeMenu();
    return;
  }
  const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
  if (!step) return;
  event.preventDefault();
  const items = [...menu.querySelectorAll<HTMLElement>('button:not(:disabled)')];
  const at = items.indexOf(document.activeElement as HTMLElement);
  items[(at + step + items.length) % items.length]?.focus();
}

export function Switch(props: { label: string; checked: boolean; onChange(checked: boolean): void }) {
  return (
    <span class="switch">
      <input
        type="checkbox"
        role="switch"
        aria-label={props.label}
        checked={props.checked}
        onChange={(event) => props.onChange(event.currentTarget.checked)}
      />
    </span>
  );
}

let groups = 0;
export function Segments<T extends string | number>(props: {
  label: string;
  value: T;
  options: [T, string][];
  onChange(value: T): void;
}) {
  const name = useRef(`segments-${++groups}`).current;
  return (
    <div class="segments" role="radiogroup" aria-label={props.label}>
      {props.options.map(([value, label]) => (
        <label key={String(value)}>
          <input
            type="radio"
            name={name}
            checked={value === props.value}
            aria-label={label}
            onChange={() => props.onChange(value)}
          />
          <span aria-hidden="true">{label}</span>
        </label>
      ))}
    </div>
  );
}

export function Select<T extends string | number>(props: {
  label: string;
  value: T;
  options: [T, string][];
  onChange(value: T): void;
}) {
  return (
    <select
      class="field small"
      aria-label={props.label}
      value={String(props.value)}
      onChange={(event) => {
        const chosen = props.options.find(([value]) => String(value) === event.currentTarget.value);
        if (chosen) props.onChange(chosen[0]);
      }}
    >
      {props.options.map(([value, label]) => (
        <option key={String(value)} value={String(value)}>
          {label}
        </option>
      ))}
    </select>
  );
}

export function Empty(props: { title: string; text?: string; children?: ComponentChildren }) {
  return (
    <div class="empty">
      <Rings />
      <h3>{props.title}</h3>
      {props.text && <p>{props.text}</p>}
      {props.children}
    </div>
  );
}

/// Size of an element, told at each change.
export function useSize(onSize: (width: number, height: number) => void) {
  const ref = useRef<HTMLDivElement>(null);
  const handler = useRef(onSize);
  handler.current = onSize;
  useEffect(() => {
    const element = ref.current;
    if (!element) return;
    const observer = new ResizeObserver(() => handler.current(element.clientWidth, element.clientHeight));
    observer.observe(element);
    return () => observer.disconnect();
  }, []);
  return ref;
}
