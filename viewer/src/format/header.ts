import { decodeHeader } from "./encoding.ts";
import { FormatFailure, type Place } from "./failure.ts";
import { parseInteger, parseReal } from "./numbers.ts";

interface Entry {
    key: string;
    value: string;
    line: number;
}

/** Names are compared without regard to the case of ASCII letters, and of these only. */
function fold(name: string): string {
    return name.replace(/[A-Z]/g, (letter) => letter.toLowerCase());
}

/** The keys of one section, in the order in which they were last given. */
export class Section {
    private readonly byKey = new Map<string, Entry>();

    constructor(
        readonly name: string,
        readonly line: number | undefined,
    ) {}

    set(key: string, value: string, line: number): void {
        const folded = fold(key);
        this.byKey.delete(folded);
        if (value !== "") {
            this.byKey.set(folded, { key, value, line });
        }
    }

    entries(): Entry[] {
        return [...this.byKey.values()];
    }

    get size(): number {
        return this.byKey.size;
    }

    text(key: string, otherwise = ""): string {
        return this.byKey.get(fold(key))?.value ?? otherwise;
    }

    integer(key: string, otherwise: number): number {
        return parseInteger(this.text(key)) ?? otherwise;
    }

    real(key: string, otherwise: number): number {
        return parseReal(this.text(key)) ?? otherwise;
    }

    placeOf(key: string): Place {
        const line = this.byKey.get(fold(key))?.line ?? this.line;
        return { ...(line === undefined ? {} : { line }), section: this.name, key };
    }

    fail(what: string, key: string): never {
        throw new FormatFailure(what, this.placeOf(key));
    }
}

/** The text ahead of the samples, as sections of keys and values. */
export class Header {
    private readonly sections = new Map<string, Section>();

    /** The section of this name, which is empty if the file has none. */
    section(name: string): Section {
        return this.sections.get(fold(name)) ?? new Section(name, undefined);
    }

    has(name: string): boolean {
        return this.sections.has(fold(name));
    }

    begin(name: string, line: number): Section {
        if (name === "") {
            throw new FormatFailure("A section has no name", { line });
        }
        const known = this.sections.get(fold(name)) ?? new Section(name, line);
        this.sections.set(fold(name), known);
        return known;
    }
}

export function parseHeader(text: string): Header {
    const header = new Header();
    const lines = text.split("\n");
    lines.pop(); // what no line feed ends is no line
    let section: Section | undefined;
    for (const [index, untrimmed] of lines.entries()) {
        const line = untrimmed.replace(/[ \t\r\v\f]+$/, "");
        const equals = line.indexOf("=");
        if (line.startsWith("[") && line.endsWith("]")) {
            section = header.begin(line.slice(1, -1), index + 1);
        } else if (equals > 0) {
            section?.set(line.slice(0, equals), line.slice(equals + 1), index + 1);
        }
    }
    return header;
}

const endMark = [0x23, 0x21]; // "#!"
const bytesAtATime = 1 << 16;
const mostHeaderBytes = 1 << 30;

function findMark(bytes: Uint8Array): number {
    let at = bytes.indexOf(endMark[0] as number);
    while (at >= 0 && bytes[at + 1] !== endMark[1]) {
        at = bytes.indexOf(endMark[0] as number, at + 1);
    }
    return at;
}

/** How many bytes the header has with its end mark. Reads no more of the file than that, rounded up. */
async function headerLength(file: Blob): Promise<number> {
    const end = Math.min(file.size, mostHeaderBytes);
    for (let begin = 0; begin < end; begin += bytesAtATime) {
        const chunk = file.slice(begin, Math.min(begin + bytesAtATime + 1, end));
        const at = findMark(new Uint8Array(await chunk.arrayBuffer()));
        if (at >= 0) {
            return begin + at + endMark.length;
        }
    }
    throw new FormatFailure('The mark "#!" that ends a header is missing, so this is no .oxd file', { byte: end });
}

/** The header of a file, and the byte at which its samples begin. */
export async function readHeader(file: Blob): Promise<{ header: Header; length: number }> {
    const length = await headerLength(file);
    if (length === endMark.length) {
        throw new FormatFailure('Nothing stands ahead of the mark "#!" that ends a header', { byte: 0 });
    }
    const bytes = new Uint8Array(await file.slice(0, length).arrayBuffer());
    return { header: parseHeader(decodeHeader(bytes)), length };
}
