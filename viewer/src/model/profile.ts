export interface Point {
    x: number; // index along a line
    y: number; // index of the line
}

/** What a grid holds along a straight line between two points, at the nearest samples. */
export function sampleProfile(grid: Float64Array, points: number, from: Point, to: Point): { at: Point; value: number }[] {
    const steps = Math.max(1, Math.round(Math.max(Math.abs(to.x - from.x), Math.abs(to.y - from.y))));
    return Array.from({ length: steps + 1 }, (_, i) => {
        const at = { x: from.x + ((to.x - from.x) * i) / steps, y: from.y + ((to.y - from.y) * i) / steps };
        const value = grid[Math.round(at.y) * points + Math.round(at.x)] ?? Number.NaN;
        return { at, value };
    });
}

/** Up to about `most` values, evenly spread: enough to tell how all of them spread, in a time that does not grow. */
function spread(grid: Float64Array, most: number): Float64Array {
    const stride = Math.max(1, Math.floor(grid.length / most));
    return Float64Array.from({ length: Math.ceil(grid.length / stride) }, (_, i) => grid[i * stride] as number);
}

/** The numbers below which the given shares of the finite values lie, and how values spread over bins. */
export function percentiles(grid: Float64Array, shares: readonly number[]): number[] {
    const sorted = spread(grid, 100_000).filter(Number.isFinite).sort();
    return shares.map((share) => sorted[Math.round(share * (sorted.length - 1))] ?? 0);
}

export function histogram(grid: Float64Array, low: number, high: number, bins: number): number[] {
    const counts = new Array<number>(bins).fill(0);
    for (const value of spread(grid, 100_000)) {
        const bin = Math.floor(((value - low) / (high - low)) * bins);
        if (bin >= 0 && bin < bins) {
            counts[bin] = (counts[bin] ?? 0) + 1;
        }
    }
    return counts;
}
