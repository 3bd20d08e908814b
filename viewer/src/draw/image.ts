import { colourTable } from "./colours.ts";

export interface Shown {
    grid: Float64Array;
    points: number;
    lines: number;
}

/** Paints samples into a canvas, one pixel each at most, line 0 at the bottom; where there is none it is transparent. */
export function paint(canvas: HTMLCanvasElement, shown: Shown, range: [number, number], map: string, longest = 4096): void {
    const step = Math.max(1, Math.ceil(Math.max(shown.points, shown.lines) / longest));
    canvas.width = Math.max(1, Math.ceil(shown.points / step));
    canvas.height = Math.max(1, Math.ceil(shown.lines / step));
    const table = colourTable(map);
    const image = new ImageData(canvas.width, canvas.height);
    const pixels = new Uint32Array(image.data.buffer);
    const [low, high] = range;
    const scale = high > low ? 255 / (high - low) : 0;
    for (let y = 0; y < canvas.height; ++y) {
        const begin = Math.min(shown.lines - 1, (canvas.height - 1 - y) * step) * shown.points;
        for (let x = 0; x < canvas.width; ++x) {
            const value = shown.grid[begin + x * step] as number;
            if (Number.isFinite(value)) {
                const level = Math.min(255, Math.max(0, Math.round((value - low) * scale)));
                pixels[y * canvas.width + x] = table[level] as number;
            }
        }
    }
    canvas.getContext("2d")?.putImageData(image, 0, 0);
}
