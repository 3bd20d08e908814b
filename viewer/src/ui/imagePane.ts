import type { StoredChannel } from "../format/dataset.ts";
import { paintPart } from "../draw/image.ts";
import { Plate, margins } from "../draw/plate.ts";
import { position } from "../model/channel.ts";
import type { Point } from "../model/profile.ts";
import type { Viewport } from "../model/viewport.ts";
import { element } from "./dom.ts";

const longestSide = 512;
const shortestSide = 24;
const help = "Arrow keys move the point, Space begins and ends a profile, plus and minus zoom.";

/** Width and height in pixels: true to scale where both axes have the same unit, else as many samples. */
function sizeOf(channel: StoredChannel, room: number): { width: number; height: number } {
    const [points, lines] = channel.axes;
    const trueToScale = points.unit === lines.unit && points.range > 0 && lines.range > 0;
    const ratio = trueToScale ? points.range / lines.range : channel.points / channel.lines;
    const width = Math.min(longestSide, room, longestSide * ratio);
    const atLeast = (length: number) => Math.max(shortestSide, Math.round(length));
    return { width: atLeast(width), height: atLeast(Math.min(longestSide, width / ratio)) };
}

/** One image with its axes, a colour bar, and marks over it for the point and the profile. */
export class ImagePane {
    readonly canvas: HTMLCanvasElement;
    readonly root: HTMLElement;
    grid: Float64Array = new Float64Array(0);
    private readonly overlay = element("canvas", { class: "overlay", "aria-hidden": "true" });
    private readonly plate: Plate;

    constructor(
        readonly channel: StoredChannel,
        readonly group: string,
        private readonly viewport: Viewport,
        room: number,
    ) {
        const size = sizeOf(channel, Math.max(2 * shortestSide, room - margins.left - margins.right));
        const label = `Image of ${group}: ${channel.axes[2].name}. ${help}`;
        this.canvas = element("canvas", { tabindex: "0", role: "application", "aria-label": label, class: "image" });
        const plate = element("canvas", { "aria-hidden": "true" });
        this.plate = new Plate(plate, size.width, size.height);
        for (const canvas of [this.canvas, this.overlay]) {
            canvas.width = size.width;
            canvas.height = size.height;
            canvas.style.left = `${margins.left}px`;
            canvas.style.top = `${margins.top}px`;
        }
        const frame = element("div", { class: "frame" }, this.canvas, this.overlay, plate);
        this.root = element("figure", {}, element("figcaption", {}, group), frame);
    }

    valueAt(point: Point): number {
        return this.grid[point.y * this.channel.points + point.x] ?? Number.NaN;
    }

    /** Where the pointer is, in shares of what is shown, from the left and the bottom. */
    placeOf(event: MouseEvent): { x: number; y: number } {
        const box = this.canvas.getBoundingClientRect();
        return { x: (event.clientX - box.left) / box.width, y: (box.bottom - event.clientY) / box.height };
    }

    paint(range: [number, number], map: string): void {
        const { points, lines, axes } = this.channel;
        const { part } = this.viewport;
        paintPart(this.canvas, { grid: this.grid, points, lines }, part, range, map);
        // The first and the last sample are half a sample inside the ends of the image.
        const at = (axis: { min: number; range: number }, share: number, n: number) => position(axis, share * n - 0.5, n);
        const across = { low: at(axes[0], part.left, points), high: at(axes[0], part.left + part.width, points) };
        const up = { low: at(axes[1], part.bottom, lines), high: at(axes[1], part.bottom + part.height, lines) };
        const signal = { low: range[0], high: range[1], unit: axes[2].unit };
        this.plate.draw({ ...across, unit: axes[0].unit }, { ...up, unit: axes[1].unit }, signal, map);
    }

    /** Marks the point by a cross, and the profile from `from` to the point by a line. */
    mark(point: Point, profile: [Point, Point] | undefined): void {
        const context = this.overlay.getContext("2d");
        const { width, height } = this.overlay;
        if (!context) {
            return;
        }
        const place = (at: Point): [number, number] => {
            const { x, y } = this.viewport.placeOf(at);
            return [x * width, (1 - y) * height];
        };
        const [x, y] = place(point);
        context.clearRect(0, 0, width, height);
        context.beginPath();
        for (const [dx, dy] of [[1, 0], [-1, 0], [0, 1], [0, -1]] as const) {
            context.moveTo(x + 3 * dx, y + 3 * dy);
            context.lineTo(x + 9 * dx, y + 9 * dy);
        }
        if (profile) {
            context.moveTo(...place(profile[0]));
            context.lineTo(...place(profile[1]));
        }
        for (const [colour, line] of [["#000", 4], ["#fff", 2]] as const) { // to be seen on any colour
            context.strokeStyle = colour;
            context.lineWidth = line;
            context.stroke();
        }
    }
}
