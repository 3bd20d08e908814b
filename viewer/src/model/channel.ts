import type { Axis } from "../format/channelSection.ts";
import { type StoredChannel, byteLength } from "../format/dataset.ts";
import { lowestRaw } from "./operators.ts";

const rawSpan = 1073741823;

/** The end of the axis is rounded first: this is part of the value. */
export function realValue(raw: number, signal: Axis): number {
    const extent = signal.min + signal.range - signal.min;
    const value = signal.min + (extent * (raw - lowestRaw)) / rawSpan;
    // Near the largest double the product overflows, but the quotient does not.
    return Number.isFinite(value) ? value : signal.min + extent * ((raw - lowestRaw) / rawSpan);
}

/** Raw samples of stored bytes. Every width spans the whole range of raw samples. */
export function decodeSamples(bytes: ArrayBuffer, bits: 8 | 16 | 32): Int32Array {
    const view = new DataView(bytes);
    const count = bytes.byteLength / (bits / 8);
    const raw = new Int32Array(count);
    for (let i = 0; i < count; ++i) {
        if (bits === 8) {
            raw[i] = view.getInt8(i) << 22;
        } else if (bits === 16) {
            raw[i] = view.getInt16(2 * i, true) << 14;
        } else {
            raw[i] = view.getInt32(4 * i, true) >> 2;
        }
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
