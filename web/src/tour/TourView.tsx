import { useEffect, useRef } from 'preact/hooks';
import { useApp } from '../shell/context';
import { addExamples } from '../files/examples';
import { IconButton } from '../design/widgets';
import { Icon, Rings } from '../design/icons';
import { text as t } from '../texts/texts';
import { kSteps } from './core/tour';

/// The card of the tour. It lies over the page and leaves the panel behind it to be seen.
export default function TourView() {
  const app = useApp();
  const { tour } = app;
  const step = tour.step.value!;
  const at = tour.index.value;
  const last = at === kSteps.length - 1;
  const next = useRef<HTMLButtonElement>(null);
  const [title, body] = t.tour.steps[step.id]!;
  useEffect(() => {
    next.current?.focus({ preventScroll: true });
  }, [at]);
  useEffect(() => {
    if (app.files.isEmptyRoot.value) void addExamples(app);
  }, []);
  return (
    <div
      class={`tour at-${step.panel}`}
      role="dialog"
      aria-modal="false"
      aria-label={t.tour.name}
      onKeyDown={(event) => {
        if (event.key === 'Escape') tour.end();
      }}
    >
      <div class="tour-head">
        {at === 0 ? (
          <Rings />
        ) : (
          <span class="tour-icon">
            <Icon name={step.panel} />
          </span>
        )}
        <IconButton icon="close" label={t.tour.leave} onClick={() => tour.end()} />
      </div>
      <h2>{title}</h2>
      <p>{body}</p>
      <div class="tour-foot">
        <span class="dots" role="img" aria-label={t.tour.progress(at + 1, kSteps.length)}>
          {kSteps.map((each, k) => (
            <i key={each.id} class={k === at ? 'on' : ''} />
          ))}
        </span>
        {at > 0 && (
          <button type="button" class="button" onClick={() => tour.back()}>
            {t.tour.back}
          </button>
        )}
        <button type="button" class="button primary" ref={next} onClick={() => tour.next()}>
          {last ? t.tour.done : t.tour.next}
        </button>
      </div>
    </div>
  );
}
