const mostWanted = 16;

/** Round numbers from `low` to `high`: multiples of 1, 2 or 5 and a power of ten. At most `wanted` and one, at least two. */
export function ticks(low: number, high: number, wanted: number): number[] {
    const found = multiples(low, high, wanted);
    return found.length >= 2 || !(high > low) || wanted > mostWanted ? found : ticks(low, high, 2 * wanted);
}

function multiples(low: number, high: number, wanted: number): number[] {
    const span = high - low;
    if (!(span > 0) || !Number.isFinite(span)) {
        return [];
    }
    const power = 10 ** Math.floor(Math.log10(span / wanted));
    const step = [1, 2, 5, 10].map((n) => n * power).find((size) => span / size <= wanted) ?? span;
    const first = Math.ceil(low / step - 1e-9);
    const count = Math.floor(high / step + 1e-9) - first + 1;
    return Array.from({ length: Math.max(0, count) }, (_, i) => (first + i) * step);
}

/** The numbers with as many decimals as tell them apart. */
export function tickTexts(values: number[]): string[] {
    const step = Math.abs((values[1] ?? 0) - (values[0] ?? 0));
    const decimals = step > 0 ? Math.min(12, Math.max(0, -Math.floor(Math.log10(step) + 1e-9))) : 0;
    return values.map((value) => (value === 0 ? 0 : value).toFixed(decimals).replace("-", "−"));
}
