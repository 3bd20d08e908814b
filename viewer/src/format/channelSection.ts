import type { Section } from "./header.ts";
import { parseReal } from "./numbers.ts";

export interface Axis {
    name: string;
    unit: string;
    min: number;
    range: number;
}

/** What a line has for itself in channels of version 3. */
export interface LineAxis {
    min: number;
    range: number;
    points: number;
}

export interface ChannelHeader {
    points: number;
    lines: number;
    frame: string;
    bits: 8 | 16 | 32;
    axes: [Axis, Axis, Axis]; // along a line, across lines, signal
    ownAxes: LineAxis[] | undefined;
}

const prefixes = "yzafpnµm kMGTPEZY";

/** The power of ten of a prefix, in either spelling of micro; undefined for any other letter. */
function powerOf(letter: string): number | undefined {
    const at = letter === "" ? -1 : prefixes.indexOf(letter === "\u03bc" ? "µ" : letter);
    return at < 0 ? undefined : 3 * (at - prefixes.indexOf(" "));
}

/** A number that may end with a prefix. Small prefixes divide, because their reciprocals are exact. */
function parsePrefixed(text: string): number | undefined {
    const plain = parseReal(text);
    const power = powerOf(text.slice(-1));
    const number = plain ?? parseReal(text.slice(0, -1));
    if (plain !== undefined || power === undefined || number === undefined) {
        return plain;
    }
    return power < 0 ? number / Number(`1e${-power}`) : number * Number(`1e${power}`);
}

/** Axes of version 1: the prefix of the unit applies to min and range. */
function readPrefixedAxis(section: Section, n: number): Axis {
    const unit = section.text(`Dim${n}Unit`);
    const prefix = unit.length >= 2 && powerOf(unit.charAt(0)) !== undefined ? unit.charAt(0) : "";
    return {
        name: section.text(`Dim${n}Name`, "Noname"),
        unit: unit.slice(prefix.length),
        min: parsePrefixed(section.text(`Dim${n}Min`, "0") + prefix) ?? 0,
        range: parsePrefixed(section.text(`Dim${n}Range`, "1") + prefix) ?? parsePrefixed(`1${prefix}`) ?? 1,
    };
}

function readAxis(section: Section, n: number): Axis {
    return {
        name: section.text(`Dim${n}Name`, "Noname"),
        unit: section.text(`Dim${n}Unit`),
        min: section.real(`Dim${n}Min`, 0),
        range: section.real(`Dim${n}Range`, 0),
    };
}

function count(section: Section, key: string, otherwise: number): number {
    const value = section.integer(key, otherwise);
    return value >= 0 ? value : section.fail(`${key} is ${value}, and no count is negative`, key);
}

function readOwnAxes(section: Section, lines: number, points: number, axis: Axis): LineAxis[] | undefined {
    if (!section.entries().some((entry) => /^linedim\d/i.test(entry.key))) {
        return undefined;
    }
    return Array.from({ length: lines }, (_, k) => ({
        min: section.real(`LineDim${k}Min`, axis.min),
        range: section.real(`LineDim${k}Range`, axis.range),
        points: count(section, `LineDim${k}Points`, points),
    }));
}

function readBits(section: Section): 8 | 16 | 32 {
    const bits = section.integer("SaveBits", 8);
    if (bits !== 8 && bits !== 16 && bits !== 32) {
        return section.fail(`Samples of ${bits} bits are none of 8, 16 and 32`, "SaveBits");
    }
    return bits;
}

export function readChannelSection(section: Section): ChannelHeader {
    const version = section.integer("Version", 1);
    if (version > 3) {
        section.fail(`Version ${version} of a channel is newer than this viewer`, "Version");
    }
    const points = count(section, "Points", 0);
    const lines = count(section, "Lines", 0);
    if (points * lines > 2 ** 32) {
        section.fail(`${lines} lines of ${points} points are more than a channel can have`, "Points");
    }
    if (points === 0 && lines > 2 ** 20) {
        section.fail(`${lines} lines without points are more than a file can have`, "Lines");
    }
    const read = version < 2 ? readPrefixedAxis : readAxis;
    const axes: [Axis, Axis, Axis] = [read(section, 0), read(section, 1), read(section, 2)];
    const ownAxes = version === 3 ? readOwnAxes(section, lines, points, axes[0]) : undefined;
    return { points, lines, frame: section.text("Frame", "Unknown"), bits: readBits(section), axes, ownAxes };
}
