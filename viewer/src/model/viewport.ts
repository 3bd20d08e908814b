import type { Point } from "./profile.ts";

export interface Part {
    left: number; // all as shares of the image, from its left and its bottom
    bottom: number;
    width: number;
    height: number;
}

const clamp = (value: number, low: number, high: number) => Math.min(high, Math.max(low, value));
const fewestSamples = 8; // that are shown at the largest zoom

/** The part of an image that is shown. It never goes beyond the image. */
export class Viewport {
    private zoom = 1;
    private centre = { x: 0.5, y: 0.5 };

    constructor(
        readonly points: number,
        readonly lines: number,
    ) {}

    get part(): Part {
        const size = 1 / this.zoom;
        return { left: this.centre.x - size / 2, bottom: this.centre.y - size / 2, width: size, height: size };
    }

    /** Moves by shares of what is shown. */
    panBy(x: number, y: number): void {
        this.lookAt(this.centre.x + x / this.zoom, this.centre.y + y / this.zoom);
    }

    /** Zooms, while `at`, in shares of what is shown, stays where it is. */
    zoomBy(factor: number, at = { x: 0.5, y: 0.5 }): void {
        const most = Math.max(1, Math.max(this.points, this.lines) / fewestSamples);
        const before = this.zoom;
        this.zoom = clamp(before * factor, 1, most);
        const shift = 1 / before - 1 / this.zoom;
        this.lookAt(this.centre.x + (at.x - 0.5) * shift, this.centre.y + (at.y - 0.5) * shift);
    }

    /** Moves just so far that the sample is in what is shown. */
    follow(point: Point): void {
        const x = (point.x + 0.5) / this.points;
        const y = (point.y + 0.5) / this.lines;
        const half = 0.5 / this.zoom;
        this.lookAt(clamp(this.centre.x, x - half, x + half), clamp(this.centre.y, y - half, y + half));
    }

    /** The sample at a place in shares of what is shown, from the left and the bottom. */
    sampleAt(x: number, y: number): Point {
        const { left, bottom, width, height } = this.part;
        return {
            x: clamp(Math.floor((left + x * width) * this.points), 0, this.points - 1),
            y: clamp(Math.floor((bottom + y * height) * this.lines), 0, this.lines - 1),
        };
    }

    /** The place of the middle of a sample, in shares of what is shown. */
    placeOf(point: Point): { x: number; y: number } {
        const { left, bottom, width, height } = this.part;
        return {
            x: ((point.x + 0.5) / this.points - left) / width,
            y: ((point.y + 0.5) / this.lines - bottom) / height,
        };
    }

    private lookAt(x: number, y: number): void {
        const half = 0.5 / this.zoom;
        this.centre = { x: clamp(x, half, 1 - half), y: clamp(y, half, 1 - half) };
    }
}
