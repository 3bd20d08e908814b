import { paint } from "../draw/image.ts";
import type { StoredChannel } from "../format/dataset.ts";
import { loadFew } from "../model/loading.ts";
import { percentiles } from "../model/profile.ts";
import { isOfCurves } from "../model/related.ts";
import { element } from "./dom.ts";

const side = 40;
const most = 200; // a file may have a million channels

/** Small pictures of the channels of a file, which are drawn one after the other, once the page is there. */
export class Thumbnails {
    private readonly wanted: { canvas: HTMLCanvasElement; channel: StoredChannel }[] = [];

    constructor(private readonly file: Blob) {}

    of(channel: StoredChannel): HTMLElement {
        const canvas = element("canvas", { width: String(side), height: String(side), "aria-hidden": "true" });
        if (this.wanted.length < most && channel.points * channel.lines > 0) {
            this.wanted.push({ canvas, channel });
        }
        return canvas;
    }

    async draw(): Promise<void> {
        for (const { canvas, channel } of this.wanted) {
            // One that cannot be read has no picture. Whoever opens it is told why.
            const few = await loadFew(this.file, channel, side).catch(() => undefined);
            if (few && isOfCurves(channel)) {
                drawCurve(canvas, few.grid.subarray(0, few.points));
            } else if (few) {
                const [low = 0, high = 0] = percentiles(few.grid, [0.01, 0.99]);
                paint(canvas, few, [low, high], "viridis");
            }
        }
    }
}

function drawCurve(canvas: HTMLCanvasElement, values: Float64Array): void {
    const context = canvas.getContext("2d");
    const finite = values.filter(Number.isFinite);
    const low = Math.min(...finite);
    const high = Math.max(...finite);
    if (!context || finite.length < 2) {
        return;
    }
    context.strokeStyle = getComputedStyle(document.body).color;
    context.beginPath();
    for (const [i, value] of values.entries()) {
        const share = high > low ? (value - low) / (high - low) : 0.5;
        context.lineTo((i / (values.length - 1)) * side, side - 2 - share * (side - 4));
    }
    context.stroke();
}
