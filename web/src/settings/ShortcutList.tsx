import { useEffect, useRef } from 'preact/hooks';
import { shortcutsShown } from '../shell/shortcuts';
import { keysText } from '../design/keys';
import { IconButton } from '../design/widgets';
import { text as t } from '../texts/texts';

/// The list of keys under "?".
export default function ShortcutList() {
  const ref = useRef<HTMLDialogElement>(null);
  const close = () => {
    shortcutsShown.value = false;
  };
  useEffect(() => {
    ref.current?.showModal();
  }, []);
  return (
    <dialog class="dialog shortcut-list" ref={ref} onClose={close} aria-labelledby="shortcuts-title">
      <div class="settings-head">
        <h2 id="shortcuts-title">{t.shortcuts.title}</h2>
        <IconButton icon="close" label={t.dialogs.close} onClick={close} />
      </div>
      <div class="shortcut-groups">
        {t.shortcuts.groups.map((group) => (
          <section key={group.name}>
            <h3>{group.name}</h3>
            <dl>
              {group.rows.map(([keys, does]) => [
                <dt>
                  <kbd>{keysText(keys!)}</kbd>
                </dt>,
                <dd>{does}</dd>,
              ])}
            </dl>
          </section>
        ))}
      </div>
    </dialog>
  );
}
