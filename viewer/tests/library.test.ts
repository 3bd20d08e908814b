/** The viewer's reader and operators against the library's, value for value. */
import { mkdirSync, readFileSync, readdirSync, writeFileSync } from "node:fs";
import { resolve } from "node:path";
import { describe, expect, it } from "vitest";
import { type DataSet, type StoredChannel, openDataSet } from "../src/format/dataset.ts";
import { FormatFailure } from "../src/format/failure.ts";
import type { InfoGroup } from "../src/format/information.ts";
import { readLines, validPoints, valuesOn } from "../src/model/channel.ts";
import { applyOperator, operators } from "../src/model/operators.ts";
import { type LibraryFile, type LibraryInformation, outputFolder, readByLibrary, seedFolder } from "./library.ts";
import { randomFile } from "./randomFiles.ts";

function spell(value: number): string {
    return Number.isNaN(value) ? "nan" : String(value).replace("Infinity", "inf");
}

/** The library spells numbers with 17 digits, which read back as the same number. */
function respell(text: string): string {
    return text.includes("nan") ? "nan" : spell(Number(text.replace("inf", "Infinity")));
}

async function describeChannel(file: Blob, channel: StoredChannel) {
    const signal = channel.axes[2];
    const valueAt = valuesOn(signal);
    const lines = await readLines(file, channel);
    return {
        points: channel.points,
        name: signal.name,
        unit: signal.unit,
        lines: lines.map((line, k) => ({
            axis: [channel.ownAxes?.[k]?.min ?? channel.axes[0].min, channel.ownAxes?.[k]?.range ?? channel.axes[0].range].map(
                spell,
            ),
            raw: operators.map(({ code }) => (line ? [...applyOperator(code, line)] : [])),
            real: line ? Array.from(line, (raw) => spell(valueAt(raw))) : [],
            tooLong: line === undefined && validPoints(channel, k) > channel.points,
        })),
    };
}

function describeInformation(groups: InfoGroup[]): LibraryInformation {
    return groups.map((group) => [
        group.name,
        [...describeInformation(group.groups), ...group.items.map((item): [string, string] => [item.name, item.value])],
    ]);
}

async function describeFile(opened: DataSet) {
    const groups = [];
    for (const group of opened.groups) {
        const channels = group.channels.map((channel) => (channel ? describeChannel(opened.file, channel) : null));
        groups.push({ name: group.name, channels: await Promise.all(channels) });
    }
    return { groups, information: describeInformation(opened.information) };
}

/** What the library says in the viewer's spelling. */
function comparable(file: LibraryFile) {
    const groups = file.groups.map((group) => ({
        name: group.name,
        channels: group.channels.map((channel) =>
            channel === null
                ? null
                : {
                      ...channel,
                      lines: channel.lines.map((line) => ({
                          axis: line.axis.map(respell),
                          raw: line.raw,
                          real: line.real.map(respell),
                          tooLong: expect.any(Boolean),
                      })),
                  },
        ),
    }));
    return { groups, information: file.information };
}

async function expectSame(name: string, expected: LibraryFile | null) {
    const file = new Blob([readFileSync(name)]);
    const opened = await openDataSet(file).catch((failure: unknown) => failure);
    if (expected === null || expected.groups.length === 0) {
        if (opened instanceof Error) {
            expect(opened, name).toBeInstanceOf(FormatFailure);
        }
        return opened instanceof Error;
    }
    if (opened instanceof Error) {
        throw new Error(`${name}: ${opened.message}`);
    }
    expect(await describeFile(opened as DataSet), name).toEqual(comparable(expected));
    return true;
}

function writeRandomFiles(count: number): string[] {
    const folder = resolve(outputFolder, "random");
    mkdirSync(folder, { recursive: true });
    return Array.from({ length: count }, (_, seed) => {
        const name = resolve(folder, `${seed}.oxd`);
        writeFileSync(name, randomFile(seed));
        return name;
    });
}

describe("the viewer reads what the library reads", () => {
    it("of every seed", async () => {
        const seeds = readdirSync(seedFolder).map((name) => resolve(seedFolder, name));
        expect(seeds.length).toBeGreaterThan(10);
        for (const [i, expected] of readByLibrary(seeds).entries()) {
            await expectSame(seeds[i] as string, expected);
        }
    });

    it("of 500 random files", async () => {
        const files = writeRandomFiles(500);
        const expected = readByLibrary(files);
        expect(expected.filter((file) => file !== null).length).toBeGreaterThan(400);
        for (const [i, file] of files.entries()) {
            await expectSame(file, expected[i] as LibraryFile | null);
        }
    }, 180_000);
});
