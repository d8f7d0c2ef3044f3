import { DataProblem } from './shape';

// Base64 of gzip of UTF-8 JSON.
export async function decode(coded: string): Promise<unknown> {
  if (typeof DecompressionStream === 'undefined') {
    throw new DataProblem('this browser is too old to unpack the data (it knows no DecompressionStream)');
  }
  const bytes = fromBase64(coded);
  let json: string;
  try {
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
    json = await new Response(stream).text();
  } catch {
    throw new DataProblem('the data cannot be unpacked; the file may be cut off');
  }
  try {
    return JSON.parse(json) as unknown;
  } catch {
    throw new DataProblem('the data is no JSON');
  }
}

function fromBase64(coded: string): Uint8Array<ArrayBuffer> {
  let binary: string;
  try {
    binary = atob(coded.trim());
  } catch {
    throw new DataProblem('the data is no Base64; the file may be cut off');
  }
  const bytes = new Uint8Array(binary.length);
  for (let i = 0; i < binary.length; i += 1) {
    bytes[i] = binary.charCodeAt(i);
  }
  return bytes;
}
