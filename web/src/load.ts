import type { WhyData } from './data';
import { decode } from './decode';
import { readReport, readTracks, readWhy } from './readReport';
import { Report } from './report';
import { DataProblem } from './shape';
import { decodeTracks, evenFrames, frameTimes, type Track } from './tracks';

export interface LoadedReport {
  report: Report;
  problems: string[];
  loadWhy: () => Promise<WhyData>;
}

// Reads the data that the page carries. Without tracks the page shows the events all the same.
export async function load(): Promise<LoadedReport> {
  const [data, tracks] = await Promise.all([decode(carried('report-data')).then(readReport), unpackTracks()]);
  const problems: string[] = [];
  let decoded: Track[] = [];
  let frames: Float64Array | undefined;
  try {
    if ('problem' in tracks) {
      throw new DataProblem(tracks.problem);
    }
    const read = readTracks(tracks.value, data.actors.length);
    decoded = decodeTracks(read);
    frames = frameTimes(read);
  } catch (error) {
    problems.push(`The tracks cannot be shown: ${wordsOf(error)}.`);
  }
  const report = new Report(data, decoded, frames ?? evenFrames(data.clock));
  const loadWhy = async (): Promise<WhyData> =>
    readWhy(await decode(carried('report-why')), report.count, data.models.length);
  return { report, problems, loadWhy };
}

async function unpackTracks(): Promise<{ value: unknown } | { problem: string }> {
  try {
    return { value: await decode(carried('report-tracks')) };
  } catch (error) {
    return { problem: wordsOf(error) };
  }
}

function carried(id: string): string {
  const place = document.getElementById(id);
  if (!place) {
    throw new DataProblem(`the page carries no ${id}`);
  }
  return place.textContent ?? '';
}

export function wordsOf(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}
