/** Files made by a seed: every width and version, odd shapes, lines with axes of their own, odd spellings. */

export class Random {
    constructor(private state: number) {}

    /** An integer from 0 to below `end`. */
    below(end: number): number {
        this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
        return Math.floor((this.state / 2 ** 32) * end);
    }

    pick<T>(choices: readonly T[]): T {
        return choices[this.below(choices.length)] as T;
    }
}

const units = ["m", "nm", "µm", "V", "", " N", "k", "°"];
const numbers = ["0", "1e-6", "-2.5E-09", "nan", "-inf", "1.#QNAN", "3.", ".5", "+4", "1e999", "abc", "1 "];
const names = ["Topography", "Höhe", "高さ", "a]b", "<b>", "Noname"];

function axes(random: Random): string[] {
    return [0, 1, 2].flatMap((n) => [
        `Dim${n}Name=${random.pick(names)}`,
        `Dim${n}Unit=${random.pick(units)}`,
        `Dim${n}Range=${random.pick(numbers)}`,
        `Dim${n}Min=${random.pick(numbers)}`,
    ]);
}

function samples(random: Random, count: number, bits: number): Uint8Array {
    const extreme = random.below(3) === 0;
    return Uint8Array.from({ length: (count * bits) / 8 }, () => (extreme ? random.pick([0, 255, 127, 128]) : random.below(256)));
}

function channel(random: Random, version: number): { keys: string[]; samples: Uint8Array } {
    const bits = random.pick([8, 16, 32]);
    const points = random.pick([0, 1, 2, 3, 4, 5, 6, 17, 64, 300]);
    const lines = random.below(5);
    const keys = [`Version=${version}`, `Points=${points}`, `Lines=${lines}`, ...axes(random), `SaveBits=${bits}`];
    let stored = lines;
    for (let k = 0; version === 3 && k < lines; ++k) {
        const valid = random.pick([0, points, points + 1, random.below(points + 1)]);
        keys.push(`LineDim${k}Points=${valid}`, `LineDim${k}Min=${random.pick(numbers)}`);
        stored -= valid === 0 ? 1 : 0;
    }
    return { keys, samples: samples(random, stored * points, bits) };
}

const information = [
    ["InfoSetCount=2", "InfoSet0=Scan", "InfoSet1=Scan", "[DataSet\\Scan]", "SubSectionCount=1", "SubSection0=In", "a=1"],
    ["SetInfos=List", "[List]", "-- One --=-", "x=1", "scansize=5 µm", "-- Two --=-", "=no key", "y= z "],
    ["SetInfos=List", "[List]", "scansize=5 µm", "Mod=1", "Tip Potential=2", "GapVoltage1=3", "PointsAbort=4", "other=5"],
    [],
];

function joined(lines: string[], data: Uint8Array[], random: Random): Uint8Array {
    const text = [...lines, ""].join(random.pick(["\r\n", "\n"]));
    const head = random.below(4) === 0 && /^[\0-\xff]*$/.test(text) ? latin(text) : new TextEncoder().encode(text);
    const parts = [head, new TextEncoder().encode("\r\n#!"), ...data];
    return Uint8Array.from(parts.flatMap((part) => [...part]));
}

function latin(text: string): Uint8Array {
    return Uint8Array.from(text, (letter) => letter.charCodeAt(0));
}

function frames(random: Random): Uint8Array {
    const counts = { channels: 1 + random.below(3), frames: 1 + random.below(3) };
    const lines = ["[DataSet]", `ChannelCount=${counts.channels}`, `FrameCount=${counts.frames}`];
    const sections: string[] = [];
    const data: Uint8Array[] = [];
    for (let c = 0; c < counts.channels; ++c) {
        for (let f = 0; f < counts.frames; ++f) {
            lines.push(`Ch${c}-Fr${f}=S${c}.${f}`);
            const made = channel(random, random.pick([1, 2, 3]));
            sections.push(`[S${c}.${f}]`, `Frame=${random.pick(names)}`, ...made.keys);
            data.push(made.samples);
        }
    }
    return joined([...lines, ...random.pick(information), ...sections], data, random);
}

function groups(random: Random): Uint8Array {
    const count = random.below(4);
    const lines = ["[dataset]", "Version=2", `GroupCount=${count}`];
    const sections: string[] = [];
    const data: Uint8Array[] = [];
    for (let g = 0; g < count; ++g) {
        const slots = random.below(4);
        lines.push(`Gr${g}-Name=${random.pick(names)}`, `Gr${g}-Count=${slots}`);
        for (let c = 0; c < slots; ++c) {
            const made = channel(random, random.pick([1, 2, 3]));
            if (random.below(5) > 0) {
                lines.push(`Gr${g}-Ch${c}=DataSet-${g}:${c}`);
                sections.push(`[DataSet-${g}:${c}]`, ...made.keys);
                data.push(made.samples);
            }
        }
    }
    return joined([...lines, ...random.pick(information), ...sections], data, random);
}

export function randomFile(seed: number): Uint8Array {
    const random = new Random(seed * 7919 + 1);
    return random.below(4) === 0 ? frames(random) : groups(random);
}
