// Colours of types of actors and of alarm levels. Both lists are told apart by people who see few colours; types have
// shapes besides, levels differ in lightness.

export interface Palette {
  ink: string;
  muted: string;
  line: string;
  surface: string;
  sunken: string;
  accent: string;
  zone: string;
  zoneFill: string;
  wall: string;
  equipment: string;
  equipmentFill: string;
  types: string[];
  noAlarm: string;
  alarms: string[];
  onNoAlarm: string;
  onAlarms: string[];
}

export const kShapes = ['circle', 'square', 'triangle', 'diamond', 'hexagon'] as const;
export type Shape = (typeof kShapes)[number];

const kCount = { types: 8, alarms: 4 };

// Reads the colours of the theme in force from the style sheet, where they stand once.
export function readPalette(): Palette {
  const style = getComputedStyle(document.documentElement);
  const colour = (name: string): string => style.getPropertyValue(`--${name}`).trim();
  const row = (name: string, count: number): string[] =>
    Array.from({ length: count }, (_, i) => colour(`${name}-${i}`));
  return {
    ink: colour('ink'),
    muted: colour('muted'),
    line: colour('line'),
    surface: colour('surface'),
    sunken: colour('sunken'),
    accent: colour('accent'),
    zone: colour('zone'),
    zoneFill: colour('zone-fill'),
    wall: colour('wall'),
    equipment: colour('equipment'),
    equipmentFill: colour('equipment-fill'),
    types: row('type', kCount.types),
    noAlarm: colour('alarm-none'),
    alarms: row('alarm', kCount.alarms),
    onNoAlarm: colour('on-alarm-none'),
    onAlarms: row('on-alarm', kCount.alarms),
  };
}

export function typeStep(type: number): number {
  return Math.max(0, type) % kCount.types;
}

export function typeColour(palette: Palette, type: number): string {
  return palette.types[typeStep(type)] as string;
}

export function typeShape(type: number): Shape {
  return kShapes[Math.max(0, type) % kShapes.length] as Shape;
}

// Class of the level for the style sheet; levels beyond the colours share the last.
export function alarmStep(level: number): number {
  return Math.min(level, kCount.alarms - 1);
}

export function alarmColour(palette: Palette, level: number): string {
  return level < 0 ? palette.noAlarm : (palette.alarms[alarmStep(level)] as string);
}

// Of text on the colour of the level.
export function onAlarmColour(palette: Palette, level: number): string {
  return level < 0 ? palette.onNoAlarm : (palette.onAlarms[alarmStep(level)] as string);
}
