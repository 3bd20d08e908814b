const prefixes = ["y", "z", "a", "f", "p", "n", "µ", "m", "", "k", "M", "G", "T", "P", "E", "Z", "Y"];
const plain = prefixes.indexOf("");

/** The factor and the unit in which numbers of this magnitude read well. */
export function scaleFor(magnitude: number, unit: string): { factor: number; unit: string } {
    if (unit === "" || !Number.isFinite(magnitude) || magnitude === 0) {
        return { factor: 1, unit };
    }
    const step = Math.floor(Math.log10(magnitude) / 3 + 1e-9);
    const index = Math.min(prefixes.length - 1, Math.max(0, plain + step));
    return { factor: 10 ** (-3 * (index - plain)), unit: `${prefixes[index]}${unit}` };
}

export function formatValue(value: number, unit: string): string {
    if (!Number.isFinite(value)) {
        return "no value";
    }
    const scale = scaleFor(Math.abs(value), unit);
    const digits = String(Number((value * scale.factor).toPrecision(5)));
    return `${digits.replace("-", "−")} ${scale.unit}`.trim();
}
