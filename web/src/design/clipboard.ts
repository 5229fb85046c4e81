/// Copying and handing files over: by the share sheet where there is one, by a download elsewhere.

export async function copyText(text: string): Promise<boolean> {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    return copyBySelection(text); // a page that was not fetched safely has no clipboard of its own
  }
}

function copyBySelection(text: string): boolean {
  const area = document.createElement('textarea');
  area.value = text;
  area.className = 'visually-hidden';
  document.body.append(area);
  area.select();
  const done = document.execCommand('copy');
  area.remove();
  return done;
}

export function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
  return Uint8Array.from(atob(base64), (unit) => unit.charCodeAt(0));
}

/// Offers a file to the person. On a touch device the share sheet comes first.
export async function handOver(name: string, type: string, content: BlobPart): Promise<void> {
  const file = new File([content], name, { type });
  if (matchMedia('(pointer: coarse)').matches && navigator.canShare?.({ files: [file] })) {
    try {
      await navigator.share({ files: [file], title: name });
      return;
    } catch (error) {
      if ((error as Error).name === 'AbortError') return;
    }
  }
  const link = document.createElement('a');
  link.href = URL.createObjectURL(file);
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}
