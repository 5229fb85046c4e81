/// The examples that come with the app, brought into the work directory when it is new.

import type { App } from '../shell/core/app';
import { text as t } from '../texts/texts';

export async function addExamples(app: App): Promise<void> {
  await app.dialogs.guard(async () => {
    const answer = await fetch('/examples.json');
    if (!answer.ok) return;
    const examples = (await answer.json()) as Record<string, string>;
    for (const [name, text] of Object.entries(examples)) {
      await app.session.request('files/import', { folder: '', name, text });
    }
    await app.files.enter('');
    if (!app.tour.step.value) app.dialogs.say(t.tour.copied);
  });
}
