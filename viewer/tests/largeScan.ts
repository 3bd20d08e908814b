import { closeSync, openSync, writeSync } from "node:fs";

const side = 4096;
const range = 1e-7; // metres, over all raw samples

/** Writes a scan of 4 096 lines of as many points in 32 bits, which are 64 MiB: waves on a slope. */
export function writeLargeScan(file: string): { file: string; valueAt: (x: number, y: number) => number } {
    const axis = (n: number, name: string, size: number) => `Dim${n}Name=${name}\nDim${n}Unit=m\nDim${n}Min=0\nDim${n}Range=${size}\n`;
    const axes = axis(0, "X", 5e-5) + axis(1, "Y", 5e-5) + axis(2, "Topography", range);
    const group = "Version=2\nGroupCount=1\nGr0-Name=Scan\nGr0-ID=1\nGr0-Count=1\nGr0-Ch0=Ch\nInfoSetCount=0\n";
    const raw = (x: number, y: number) => Math.round(2e8 * Math.sin(x / 90) * Math.cos(y / 130) + 5e4 * (x - y));
    const output = openSync(file, "w");
    writeSync(output, `[DataSet]\n${group}[Ch]\nVersion=2\nPoints=${side}\nLines=${side}\nFrame=Scan\nSaveBits=32\n${axes}#!`);
    for (let y = 0; y < side; ++y) {
        writeSync(output, Buffer.from(Int32Array.from({ length: side }, (_, x) => raw(x, y) << 2).buffer));
    }
    closeSync(output);
    return { file, valueAt: (x, y) => (range * (raw(x, y) + 2 ** 29)) / (2 ** 30 - 1) };
}
