/** Numbers as headers spell them. A text that is not a number gives undefined, and the caller takes the default. */

const decimal = /^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$/;
const nonFinite = /^([+-]?)(?:(inf|infinity)|nan(?:\(.*\))?)$/i;

const oldSpellings = new Map([
    ["1.#INF", Number.POSITIVE_INFINITY],
    ["-1.#INF", Number.NEGATIVE_INFINITY],
    ["1.#IND", Number.NaN],
    ["-1.#IND", Number.NaN],
    ["1.#QNAN", Number.NaN],
    ["-1.#QNAN", Number.NaN],
]);

/** A signed integer of 32 bits. */
export function parseInteger(text: string): number | undefined {
    if (!/^[+-]?\d+$/.test(text)) {
        return undefined;
    }
    const value = Number(text) + 0;
    return value >= -(2 ** 31) && value < 2 ** 31 ? value : undefined;
}

function parseNonFinite(text: string): number | undefined {
    const parts = nonFinite.exec(text);
    if (parts === null) {
        return oldSpellings.get(text);
    }
    if (parts[2] === undefined) {
        return Number.NaN;
    }
    return parts[1] === "-" ? Number.NEGATIVE_INFINITY : Number.POSITIVE_INFINITY;
}

export function parseReal(text: string): number | undefined {
    if (!decimal.test(text)) {
        return parseNonFinite(text);
    }
    const value = Number(text);
    return Number.isFinite(value) ? value : undefined;
}
