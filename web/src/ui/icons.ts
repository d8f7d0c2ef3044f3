// Outlines in a box of 16 by 16, drawn in the colour of the text.
const kPaths = {
  play: 'M4.5 2.5v11l9-5.5z',
  pause: 'M4 2.5h3v11H4zM9 2.5h3v11H9z',
  back: 'M12.5 2.5v11L6 8zM3.5 2.5h2v11h-2z',
  forward: 'M3.5 2.5v11L10 8zM10.5 2.5h2v11h-2z',
  plus: 'M7.2 3h1.6v4.2H13v1.6H8.8V13H7.2V8.8H3V7.2h4.2z',
  minus: 'M3 7.2h10v1.6H3z',
  fit: 'M2.5 2.5h4V4H4v2.5H2.5zM9.5 2.5h4v4H12V4H9.5zM2.5 9.5H4V12h2.5v1.5h-4zM12 9.5h1.5v4h-4V12H12z',
  mirror: 'M5 2l3 3.5H5.8v5H8L5 14l-3-3.5h2.2v-5H2zM10 4h4v1.5h-4zM10 7.2h4v1.6h-4zM10 10.5h4V12h-4z',
} as const;

export type Icon = keyof typeof kPaths;

const kNamespace = 'http://www.w3.org/2000/svg';

export function icon(name: Icon): SVGSVGElement {
  const picture = document.createElementNS(kNamespace, 'svg');
  picture.setAttribute('viewBox', '0 0 16 16');
  picture.setAttribute('aria-hidden', 'true');
  picture.classList.add('icon');
  const path = document.createElementNS(kNamespace, 'path');
  path.setAttribute('d', kPaths[name]);
  picture.append(path);
  return picture;
}
