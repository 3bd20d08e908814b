import type { Part } from "../model/viewport.ts";
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

/** Paints a part of an image so that it fills the canvas, whose size stays. What that costs does not grow with the image. */
export function paintPart(canvas: HTMLCanvasElement, shown: Shown, part: Part, range: [number, number], map: string): void {
    const { width, height } = canvas;
    const table = colourTable(map);
    const image = new ImageData(width, height);
    const pixels = new Uint32Array(image.data.buffer);
    const [low, high] = range;
    const scale = high > low ? 255 / (high - low) : 0;
    const at = (from: number, share: number, count: number) => Math.min(count - 1, Math.max(0, Math.floor((from + share) * count)));
    const columns = Int32Array.from({ length: width }, (_, x) => at(part.left, (part.width * (x + 0.5)) / width, shown.points));
    for (let y = 0; y < height; ++y) {
        const begin = at(part.bottom, (part.height * (height - y - 0.5)) / height, shown.lines) * shown.points;
        for (let x = 0; x < width; ++x) {
            const value = shown.grid[begin + (columns[x] as number)] as number;
            if (Number.isFinite(value)) {
                const level = Math.min(255, Math.max(0, Math.round((value - low) * scale)));
                pixels[y * width + x] = table[level] as number;
            }
        }
    }
    canvas.getContext("2d")?.putImageData(image, 0, 0);
}
