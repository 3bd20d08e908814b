/** Normal equations of polynomials through samples at 0, 1, 2, ..., solved by Cramer's rule. */
type Matrix = number[][];

export interface Equations {
    length: number;
    degree: number;
    inverseDeterminant: number;
    cofactors: Matrix; // [coefficient][moment]
}

function minor(matrix: Matrix, row: number, column: number): Matrix {
    return matrix.filter((_, i) => i !== row).map((numbers) => numbers.filter((_, k) => k !== column));
}

function at(matrix: Matrix, row: number, column: number): number {
    return matrix[row]?.[column] ?? 0;
}

/** Moves the row with the largest number of the column to its diagonal. Says whether rows were exchanged. */
function pivot(matrix: Matrix, column: number): boolean {
    let best = column;
    for (let row = column + 1; row < matrix.length; ++row) {
        if (Math.abs(at(matrix, row, column)) > Math.abs(at(matrix, best, column))) {
            best = row;
        }
    }
    [matrix[column], matrix[best]] = [matrix[best] as number[], matrix[column] as number[]];
    return best !== column;
}

function byElimination(original: Matrix): number {
    const matrix = original.map((row) => row.slice());
    let determinant = 1;
    for (let column = 0; column < matrix.length; ++column) {
        determinant = pivot(matrix, column) ? -determinant : determinant;
        const diagonal = at(matrix, column, column);
        if (diagonal === 0) {
            return 0;
        }
        determinant *= diagonal;
        for (let row = column + 1; row < matrix.length; ++row) {
            const factor = at(matrix, row, column) / diagonal;
            matrix[row] = (matrix[row] ?? []).map((n, k) => (k < column ? n : n - factor * at(matrix, column, k)));
        }
    }
    return determinant;
}

function determinantOf(matrix: Matrix): number {
    if (matrix.length > 3) {
        return byElimination(matrix);
    }
    if (matrix.length === 1) {
        return at(matrix, 0, 0);
    }
    return matrix.reduce((sum, _, k) => {
        const term = at(matrix, 0, k) * determinantOf(minor(matrix, 0, k));
        return sum + (k % 2 === 0 ? term : -term);
    }, 0);
}

/** The sums of x^0, x^1, ... over all samples, in the places that the equations have them. */
function powerSums(length: number, size: number): Matrix {
    const sums = new Array<number>(2 * size - 1).fill(0);
    for (let x = 0; x < length; ++x) {
        let power = 1;
        for (let k = 0; k < sums.length; ++k) {
            sums[k] = (sums[k] as number) + power;
            power *= x;
        }
    }
    return Array.from({ length: size }, (_, i) => sums.slice(i, i + size));
}

function makeEquations(length: number, degree: number): Equations {
    const sums = powerSums(length, degree + 1);
    const cofactors = sums.map((_, column) =>
        sums.map((_, row) => {
            const value = determinantOf(minor(sums, row, column));
            return (row + column) % 2 === 0 ? value : -value;
        }),
    );
    return { length, degree, inverseDeterminant: 1 / determinantOf(sums), cofactors };
}

const latest: Equations[] = [];

/** Lines of a channel mostly have one length, so the equations of the last few lengths are kept. */
export function equationsFor(length: number, degree: number): Equations {
    const known = latest.find((one) => one.length === length && one.degree === degree);
    if (known) {
        return known;
    }
    const made = makeEquations(length, degree);
    latest.unshift(made);
    latest.length = Math.min(latest.length, 8);
    return made;
}

function moments(line: Int32Array, degree: number): number[] {
    const sums = new Array<number>(degree + 1).fill(0);
    for (let x = 0; x < line.length; ++x) {
        let term = line[x] as number;
        for (let k = 0; k <= degree; ++k) {
            sums[k] = (sums[k] as number) + term;
            term *= x;
        }
    }
    return sums;
}

/** The coefficients of the polynomial through a line, from that of x^0 on. */
export function solve(equations: Equations, line: Int32Array): number[] {
    const right = moments(line, equations.degree);
    return equations.cofactors.map((row) => {
        const numerator = row.reduce((sum, cofactor, k) => sum + cofactor * (right[k] as number), 0);
        return numerator * equations.inverseDeterminant;
    });
}
