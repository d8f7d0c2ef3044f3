import { element } from './dom';

// Offers a text as a file of that name; characters that file systems refuse are left out.
export function download(name: string, type: string, text: string): void {
  const url = URL.createObjectURL(new Blob([text], { type: `${type};charset=utf-8` }));
  const safe = name.replace(/[\u0000-\u001f<>:"/\\|?*]/g, '_').slice(-120);
  const link = element('a', { attributes: { href: url, download: safe } });
  link.click();
  window.setTimeout(() => URL.revokeObjectURL(url), 10_000);
}
