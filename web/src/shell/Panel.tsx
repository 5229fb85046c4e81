import type { ComponentChildren } from 'preact';
import type { Panel as PanelName } from './core/layout';

/// The frame of a panel: a header with its title and actions, and the content below it.
export function Panel(props: {
  id: PanelName;
  title: ComponentChildren;
  aside?: ComponentChildren;
  actions?: ComponentChildren;
  children: ComponentChildren;
  label?: string;
}) {
  const name = props.label ?? (typeof props.title === 'string' ? props.title : props.id);
  return (
    <section class={`panel panel-${props.id}`} data-panel={props.id} aria-label={name}>
      <header class="panel-head">
        {typeof props.title === 'string' ? <h2>{props.title}</h2> : props.title}
        <div class="panel-aside">{props.aside}</div>
        <div class="panel-actions">{props.actions}</div>
      </header>
      <div class="panel-body">{props.children}</div>
    </section>
  );
}
