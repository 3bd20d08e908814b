import type { StoredChannel } from "../format/dataset.ts";
import { storedPoints } from "../format/dataset.ts";
import { decodeSamples, validPoints, valuesOn } from "./channel.ts";
import { applyOperator } from "./operators.ts";

const samplesAtATime = 1 << 17; // which take a few milliseconds, so that the page answers in between

/** Fills a line with its corrected real values, and NaN where there is none: where more points are said to be valid than
 * a line has, there are none at all. */
function fillLine(line: Float64Array, channel: StoredChannel, number: number, stored: Int32Array, operator: number): void {
    const valid = validPoints(channel, number);
    const raw = applyOperator(operator, stored.subarray(0, valid > channel.points ? 0 : valid));
    const valueAt = valuesOn(channel.axes[2]);
    for (let x = 0; x < raw.length; ++x) {
        line[x] = valueAt(raw[x] as number);
    }
    line.fill(Number.NaN, raw.length);
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
            fillLine(grid.subarray(k * points, (k + 1) * points), channel, k, raw.subarray(at, next), operator);
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
    const grid = new Float64Array(lines * points);
    const whole = new Float64Array(channel.points);
    for (const [row, line] of wanted.entries()) {
        const begin = begins[row] ?? 0;
        const size = storedPoints(channel, line) * (channel.bits / 8);
        const raw = decodeSamples(await file.slice(begin, begin + size).arrayBuffer(), channel.bits);
        fillLine(whole, channel, line, raw, 0);
        for (let x = 0; x < points; ++x) {
            grid[row * points + x] = whole[Math.floor((x * channel.points) / points)] as number;
        }
    }
    return { grid, points, lines };
}
