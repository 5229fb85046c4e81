/// A component that is drawn again only when one of its properties differs.

import { Component, type ComponentChild, h } from 'preact';

export function memo<P extends object>(render: (props: P) => ComponentChild) {
  const Inner = render;
  return class extends Component<P> {
    override shouldComponentUpdate(next: Readonly<P>) {
      return (Object.keys(next) as (keyof P)[]).some((key) => next[key] !== (this.props as P)[key]);
    }
    override render() {
      return h(Inner as never, this.props as never);
    }
  };
}
