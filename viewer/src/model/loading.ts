import type { StoredChannel } from "../format/dataset.ts";
import { storedPoints } from "../format/dataset.ts";
import { decodeSamples, realValue, validPoints } from "./channel.ts";
import { applyOperator } from "./operators.ts";

const samplesAtATime = 1 << 17; // which take a few milliseconds, so that the page answers in between

/** The corrected real values of a line; empty where more points are said to be valid than a line has. */
function valuesOf(channel: StoredChannel, line: number, stored: Int32Array, operator: number): Float64Array {
    const valid = validPoints(channel, line);
    const raw = applyOperator(operator, stored.subarray(0, valid > channel.points ? 0 : valid));
    return Float64Array.from(raw, (sample) => realValue(sample, channel.axes[2]));
}

/**
 * All samples in a grid of lines by points, as corrected real values; NaN where there is none. `goOn` is told the share
 * that is done, after each part, and ends the work by false: the grid is undefined then.
 */
export async function loadGrid(
    file: Blob,
    channel: StoredChannel,
    operator: number,
    goOn: (share: number) => boolean,
): Promise<Float64Array<ArrayBuffer> | undefined> {
    const { lines, points } = channel;
    const grid = new Float64Array(lines * points); // filled line by line: all at once is a stall
    const linesAtATime = Math.max(1, Math.floor(samplesAtATime / Math.max(1, points)));
    let begin = channel.begin;
    for (let first = 0; first < lines; first += linesAtATime) {
        const part = Array.from({ length: Math.min(linesAtATime, lines - first) }, (_, k) => first + k);
        const size = part.reduce((sum, k) => sum + storedPoints(channel, k), 0) * (channel.bits / 8);
        const raw = decodeSamples(await file.slice(begin, begin + size).arrayBuffer(), channel.bits);
        begin += size;
        let at = 0;
        for (const k of part) {
            const next = at + storedPoints(channel, k);
            const values = valuesOf(channel, k, raw.subarray(at, next), operator);
            grid.set(values, k * points);
            grid.fill(Number.NaN, k * points + values.length, (k + 1) * points);
            at = next;
        }
        if (!goOn((first + part.length) / lines)) {
            return undefined;
        }
    }
    return grid;
}

/** Where the bytes of each of some lines begin. */
function beginsOf(channel: StoredChannel, wanted: readonly number[]): number[] {
    const begins: number[] = [];
    let at = channel.begin;
    for (let k = 0, next = 0; next < wanted.length; ++k) {
        if (k === wanted[next]) {
            begins.push(at);
            ++next;
        }
        at += storedPoints(channel, k) * (channel.bits / 8);
    }
    return begins;
}

/** At most `most` times `most` samples, evenly spread, as real values: as much as a small picture shows. */
export async function loadFew(
    file: Blob,
    channel: StoredChannel,
    most: number,
): Promise<{ grid: Float64Array; points: number; lines: number }> {
    const lines = Math.min(most, channel.lines);
    const points = Math.min(most, channel.points);
    const wanted = Array.from({ length: lines }, (_, k) => Math.floor((k * channel.lines) / lines));
    const begins = beginsOf(channel, wanted);
    const grid = new Float64Array(lines * points).fill(Number.NaN);
    for (const [row, line] of wanted.entries()) {
        const begin = begins[row] ?? 0;
        const size = storedPoints(channel, line) * (channel.bits / 8);
        const raw = decodeSamples(await file.slice(begin, begin + size).arrayBuffer(), channel.bits);
        const values = valuesOf(channel, line, raw, 0);
        for (let x = 0; x < points; ++x) {
            grid[row * points + x] = values[Math.floor((x * channel.points) / points)] ?? Number.NaN;
        }
    }
    return { grid, points, lines };
}
