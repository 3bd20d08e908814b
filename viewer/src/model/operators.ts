/**
 * Corrections of a line. Results are the same integers as the library's: the order of additions and multiplications of
 * doubles is part of them, because each is rounded.
 */
import { type Equations, equationsFor, solve } from "./equations.ts";

export const lowestRaw = -536870912;
export const highestRaw = 536870911;

export interface Operator {
    code: number;
    name: string;
    leastSamples: number;
    apply(line: Int32Array): Int32Array;
}

/** Fitted values beyond this magnitude take every sample to an end of the range. */
const farOff = 2 ** 30;

type Coefficients = readonly number[];

/** The polynomial of these coefficients, of the degree 0, 1, 2 or 4. */
function polynomial([c0 = 0, c1 = 0, c2 = 0, c3 = 0, c4 = 0]: Coefficients, degree: number): (x: number) => number {
    switch (degree) {
        case 0:
            return () => c0;
        case 1:
            return (x) => c0 + c1 * x;
        case 2:
            return (x) => c0 + c1 * x + c2 * (x * x);
        default:
            return (x) => {
                const square = x * x;
                return c0 + c1 * x + c2 * square + c3 * square * x + c4 * square * square;
            };
    }
}

/** Samples at the ends of the range are markers, which no fit changes. */
function subtract(line: Int32Array, coefficients: Coefficients): Int32Array {
    const valueAt = polynomial(coefficients, coefficients.length - 1);
    return line.map((sample, x) => {
        if (sample <= lowestRaw || sample >= highestRaw) {
            return sample;
        }
        const fitted = Math.trunc(Math.min(farOff, Math.max(-farOff, valueAt(x))));
        return Math.min(highestRaw, Math.max(lowestRaw, sample - fitted));
    });
}

function mean(line: Int32Array): number {
    let sum = 0; // exact: no line has as many samples as would reach 2^53
    for (const sample of line) {
        sum += sample;
    }
    return Math.trunc(sum / line.length);
}

function fit(line: Int32Array, degree: number): number[] {
    const equations: Equations = equationsFor(line.length, degree);
    return solve(equations, line);
}

function differences(line: Int32Array): Int32Array {
    const last = line.length - 1;
    return line.map((_, i) => {
        const from = i < last ? i : last - 1;
        return ((line[from + 1] as number) - (line[from] as number)) | 0;
    });
}

function quartic(line: Int32Array): number[] {
    return fit(line, 4).map((coefficient, k) => (k < 2 ? Math.trunc(coefficient) : coefficient));
}

export const operators: readonly Operator[] = [
    { code: 0, name: "Raw data", leastSamples: 0, apply: (line) => line.slice() },
    { code: 1, name: "Mean fit", leastSamples: 1, apply: (line) => subtract(line, [mean(line)]) },
    { code: 2, name: "Line fit", leastSamples: 4, apply: (line) => subtract(line, fit(line, 1)) },
    { code: 3, name: "Derived data", leastSamples: 2, apply: differences },
    { code: 4, name: "Parabola fit", leastSamples: 4, apply: (line) => subtract(line, fit(line, 2)) },
    { code: 5, name: "Polynomial fit", leastSamples: 5, apply: (line) => subtract(line, quartic(line)) },
];

/** The corrected line, which is empty if the line has too few samples for the operator. */
export function applyOperator(code: number, line: Int32Array): Int32Array {
    const operator = operators[code];
    return operator && line.length >= operator.leastSamples ? operator.apply(line) : new Int32Array(0);
}
