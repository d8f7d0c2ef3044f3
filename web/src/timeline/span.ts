// The part of time that is in view.
export interface Span {
  from: number;
  to: number;
}

const kLeast = 50;

// Keeps a span inside the recording, with a little room at both ends, and no shorter than makes sense.
export function limited(span: Span, end: number): Span {
  const room = end * 0.03 + 1;
  const length = Math.min(Math.max(span.to - span.from, kLeast), end + 2 * room);
  const middle = (span.from + span.to) / 2;
  const from = Math.min(Math.max(middle - length / 2, -room), end + room - length);
  return { from, to: from + length };
}

export function whole(end: number): Span {
  return limited({ from: -end, to: 2 * end }, end);
}

// The time at `at` stays where it is.
export function zoomedSpan(span: Span, factor: number, at: number, end: number): Span {
  return limited({ from: at - (at - span.from) / factor, to: at + (span.to - at) / factor }, end);
}

export function pannedSpan(span: Span, by: number, end: number): Span {
  return limited({ from: span.from + by, to: span.to + by }, end);
}

// Moves a span no more than needed to show the given times.
export function showing(span: Span, from: number, to: number, end: number): Span {
  const length = span.to - span.from;
  const margin = length * 0.08;
  if (to - from > length - 2 * margin) {
    const room = (to - from) * 0.15;
    return limited({ from: from - room, to: to + room }, end);
  }
  if (from < span.from + margin) {
    return pannedSpan(span, from - margin - span.from, end);
  }
  return to > span.to - margin ? pannedSpan(span, to + margin - span.to, end) : span;
}
