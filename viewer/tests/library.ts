import { execFileSync } from "node:child_process";
import { mkdirSync } from "node:fs";
import { resolve } from "node:path";

const root = resolve(import.meta.dirname, "../..");
const build = resolve(root, process.env.VELOXD_BUILD ?? "build/dev");
export const outputFolder = resolve(root, "build/viewer");
export const seedFolder = resolve(build, "fuzz/seeds/oxd");
export const tool = resolve(build, "tools/oxd/oxd");

export interface LibraryChannel {
    points: number;
    name: string;
    unit: string;
    lines: { axis: [string, string]; raw: number[][]; real: string[] }[];
}

export type LibraryInformation = [name: string, content: string | LibraryInformation][];

export interface LibraryFile {
    groups: { name: string; channels: (LibraryChannel | null)[] }[];
    information: LibraryInformation;
}

function compileReference(): string {
    const program = resolve(outputFolder, "reference");
    const library = resolve(build, "src/api");
    mkdirSync(outputFolder, { recursive: true });
    const source = resolve(import.meta.dirname, "reference/Reference.c");
    const linking = [`-L${library}`, `-Wl,-rpath,${library}`, "-lVELOxdDll"];
    execFileSync("cc", ["-O1", `-I${resolve(root, "include")}`, source, "-o", program, ...linking]);
    return program;
}

/** What the library reads of each file: null if it refuses it. */
export function readByLibrary(files: string[]): (LibraryFile | null)[] {
    const output = execFileSync(compileReference(), files, { maxBuffer: 2 ** 30, encoding: "utf-8", stdio: "pipe" });
    // The library's log may share the standard output.
    const lines = output.split("\n").filter((line) => line === "null" || line.startsWith('{"groups"'));
    return lines.map((line) => JSON.parse(line) as LibraryFile | null);
}
