import type { Axis } from "../format/channelSection.ts";
import { type StoredChannel, byteLength } from "../format/dataset.ts";
import { lowestRaw } from "./operators.ts";

const rawSpan = 1073741823;

/** What tells the value of a raw sample. The end of the axis is rounded first: this is part of the value. */
export function valuesOn({ min, range }: Axis): (raw: number) => number {
    const extent = min + range - min;
    return (raw) => {
        const value = min + (extent * (raw - lowestRaw)) / rawSpan;
        // Near the largest double the product overflows, but the quotient does not.
        return Number.isFinite(value) ? value : min + extent * ((raw - lowestRaw) / rawSpan);
    };
}

/** Raw samples of stored bytes. Every width spans the whole range of raw samples. */
export function decodeSamples(bytes: ArrayBuffer, bits: 8 | 16 | 32): Int32Array {
    const view = new DataView(bytes);
    const count = bytes.byteLength / (bits / 8);
    const raw = new Int32Array(count);
    const decode = {
        8: (i: number) => view.getInt8(i) << 22,
        16: (i: number) => view.getInt16(2 * i, true) << 14,
        32: (i: number) => view.getInt32(4 * i, true) >> 2,
    }[bits];
    for (let i = 0; i < count; ++i) {
        raw[i] = decode(i);
    }
    return raw;
}

/** How many points of a line are valid. */
export function validPoints(channel: StoredChannel, line: number): number {
    return channel.ownAxes?.[line]?.points ?? channel.points;
}

/** The lines of a channel: undefined where more points are said to be valid than a line has. */
export async function readLines(file: Blob, channel: StoredChannel): Promise<(Int32Array | undefined)[]> {
    const stored = await file.slice(channel.begin, channel.begin + byteLength(channel)).arrayBuffer();
    const raw = decodeSamples(stored, channel.bits);
    let at = 0;
    return Array.from({ length: channel.lines }, (_, k) => {
        const valid = validPoints(channel, k);
        const begin = at;
        at += valid === 0 ? 0 : channel.points;
        return valid > channel.points ? undefined : raw.subarray(begin, begin + valid);
    });
}

/** The position of point `i` of `n` on an axis. */
export function position(axis: { min: number; range: number }, i: number, n: number): number {
    return n > 1 ? axis.min + (axis.range * i) / (n - 1) : axis.min;
}
