/// A component whose code is fetched when it is first shown.

import { type ComponentType, h } from 'preact';
import { useEffect, useState } from 'preact/hooks';

export function lazy<P extends object>(load: () => Promise<{ default: ComponentType<P> }>) {
  let component: ComponentType<P> | null = null;
  return (props: P) => {
    const [failed, setFailed] = useState<unknown>(null);
    const [, setReady] = useState(component !== null);
    useEffect(() => {
      if (component) return;
      load().then((module) => {
        component = module.default;
        setReady(true);
      }, setFailed);
    }, []);
    if (failed) throw failed;
    return component ? h(component, props) : h('div', { class: 'loading', 'aria-busy': 'true' });
  };
}
