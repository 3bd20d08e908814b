import type { DataSet, StoredChannel } from "../format/dataset.ts";
import { correctedGrid, position, readLines, realValue, validPoints } from "../model/channel.ts";
import { applyOperator, operators } from "../model/operators.ts";
import { type Point, percentiles, sampleProfile } from "../model/profile.ts";
import { formatValue } from "../model/units.ts";
import { colourMaps } from "../draw/colours.ts";
import { paint } from "../draw/image.ts";
import { button, element, labelled, saveAs } from "./dom.ts";
import { type Curve, plotCurves } from "./plot.ts";
import { RangePanel } from "./rangePanel.ts";

const mostLinesOfAProfile = 2;
const zoomStep = 1.25;

/** Whether the lines of a channel are curves or a profile: they are one or two, or what tells them apart has no unit. */
function isOfCurves(channel: StoredChannel): boolean {
    const [points, lines] = channel.axes;
    return channel.lines <= mostLinesOfAProfile || (lines.unit === "" && points.unit !== "");
}

/** One channel: its image or curves, what the pointer is on, a profile, and the controls. */
export class ChannelView {
    readonly root = element("section", { "aria-label": "Channel" });
    private readonly canvas = element("canvas", {
        tabindex: "0",
        role: "application",
        "aria-label": "Image. Arrow keys move the point, Space begins and ends a profile, plus and minus zoom.",
    });
    private readonly overlay = element("canvas", { class: "overlay", "aria-hidden": "true" });
    private readonly frame = element("div", { class: "frame" }, this.canvas, this.overlay);
    private readonly readout = element("output", { "aria-live": "polite" });
    private readonly plot = element("div", { class: "plot" });
    private readonly range = new RangePanel(() => this.repaint());
    private grid = new Float64Array(0);
    private map = "viridis";
    private operator = 0;
    private zoom = 1;
    private point: Point = { x: 0, y: 0 };
    private from: Point | undefined;
    private profile: { length: number; value: number }[] = [];

    constructor(
        private readonly data: DataSet,
        group: string,
        readonly channel: StoredChannel,
    ) {
        const title = element("h2", {}, `${group}: ${channel.axes[2].name}`);
        this.root.append(title, this.controls(), this.frame, this.readout, this.plot, this.range.root);
        this.listen();
    }

    async show(): Promise<void> {
        const lines = await readLines(this.data.file, this.channel);
        const signal = this.channel.axes[2];
        this.grid = correctedGrid(this.channel, lines, this.operator).map((raw) => realValue(raw, signal));
        const [low = 0, high = 0] = percentiles(this.grid, [0.01, 0.99]);
        this.range.set(this.grid, low, high, signal.unit);
        const isImage = !isOfCurves(this.channel);
        this.frame.hidden = !isImage;
        this.range.root.hidden = !isImage;
        if (isImage) {
            this.layOut();
            this.repaint();
            this.tell();
        } else {
            this.showCurves(lines);
        }
    }

    private showCurves(lines: (Int32Array | undefined)[]): void {
        const { axes, ownAxes } = this.channel;
        const curves = lines.slice(0, 64).map((line, k): Curve => {
            const raw = [...applyOperator(this.operator, line ?? new Int32Array(0))];
            const axis = ownAxes?.[k] ?? axes[0];
            const count = validPoints(this.channel, k);
            return {
                name: `Line ${k}`,
                x: raw.map((_, i) => position(axis, i, count)),
                y: raw.map((value) => realValue(value, axes[2])),
            };
        });
        this.readout.textContent = `${this.channel.lines} curves of ${this.channel.points} points`;
        plotCurves(this.plot, curves, axes[0].unit, axes[2].unit);
    }

    private controls(): HTMLElement {
        const operator = element("select");
        operator.append(...operators.map(({ code, name }) => element("option", { value: String(code) }, name)));
        operator.addEventListener("change", () => {
            this.operator = Number(operator.value);
            void this.show();
        });
        const map = element("select");
        map.append(...Object.keys(colourMaps).map((name) => element("option", {}, name)));
        map.addEventListener("change", () => {
            this.map = map.value;
            this.repaint();
        });
        const copy = button("Copy as PNG", () => this.copy());
        const save = button("Save profile as CSV", () => this.saveProfile());
        return element("div", { class: "controls" }, labelled("Operator", operator), labelled("Colours", map), copy, save);
    }

    /** Width and height of the whole channel in its axes' units, or in samples if these have none in common. */
    private layOut(): void {
        const { axes, points, lines } = this.channel;
        const trueToScale = axes[0].unit === axes[1].unit && axes[0].range > 0 && axes[1].range > 0;
        const ratio = trueToScale ? axes[0].range / axes[1].range : points / lines;
        const width = this.zoom * Math.min(512, 512 * ratio);
        for (const canvas of [this.canvas, this.overlay]) {
            canvas.style.width = `${width}px`;
            canvas.style.height = `${Math.max(1, width / ratio)}px`;
        }
        this.overlay.width = width;
        this.overlay.height = Math.max(1, width / ratio);
        this.drawOverlay();
    }

    private repaint(): void {
        const { points, lines } = this.channel;
        paint(this.canvas, { grid: this.grid, points, lines }, this.range.range, this.map);
    }

    private pointAt(event: PointerEvent): Point {
        const box = this.canvas.getBoundingClientRect();
        const { points, lines } = this.channel;
        const clamp = (value: number, count: number) => Math.min(count - 1, Math.max(0, Math.floor(value * count)));
        return {
            x: clamp((event.clientX - box.left) / box.width, points),
            y: clamp((box.bottom - event.clientY) / box.height, lines),
        };
    }

    private listen(): void {
        this.canvas.addEventListener("pointermove", (event) => {
            this.point = this.pointAt(event);
            this.tell();
        });
        this.canvas.addEventListener("pointerdown", (event) => {
            this.point = this.pointAt(event);
            this.from = this.point;
            this.canvas.setPointerCapture(event.pointerId);
        });
        this.canvas.addEventListener("pointerup", () => this.endProfile());
        this.canvas.addEventListener("keydown", (event) => this.press(event));
        this.frame.addEventListener(
            "wheel",
            (event) => {
                if (event.ctrlKey) {
                    event.preventDefault();
                    this.zoomBy(event.deltaY < 0 ? zoomStep : 1 / zoomStep);
                }
            },
            { passive: false },
        );
    }

    private zoomBy(factor: number): void {
        this.zoom = Math.min(16, Math.max(1, this.zoom * factor));
        this.layOut();
    }

    private press(event: KeyboardEvent): void {
        const moves: Record<string, [number, number]> = {
            ArrowLeft: [-1, 0],
            ArrowRight: [1, 0],
            ArrowUp: [0, 1],
            ArrowDown: [0, -1],
        };
        const move = moves[event.key];
        if (move) {
            const far = event.shiftKey ? 10 : 1;
            const { points, lines } = this.channel;
            this.point = {
                x: Math.min(points - 1, Math.max(0, this.point.x + far * move[0])),
                y: Math.min(lines - 1, Math.max(0, this.point.y + far * move[1])),
            };
            this.tell();
        } else if (event.key === " ") {
            this.beginOrEndProfile();
        } else if (event.key === "+" || event.key === "-") {
            this.zoomBy(event.key === "+" ? zoomStep : 1 / zoomStep);
        } else {
            return;
        }
        event.preventDefault();
    }

    private valueAt(point: Point): number {
        return this.grid[point.y * this.channel.points + point.x] ?? Number.NaN;
    }

    private tell(): void {
        const { axes, points, lines } = this.channel;
        const { x, y } = this.point;
        const at = [position(axes[0], x, points), position(axes[1], y, lines)];
        const place = at.map((value, i) => formatValue(value, axes[i]?.unit ?? "")).join(", ");
        const value = formatValue(this.valueAt(this.point), axes[2].unit);
        this.readout.textContent = `${value} at ${place} (line ${y}, point ${x})`;
        this.drawOverlay();
    }

    private drawOverlay(): void {
        const context = this.overlay.getContext("2d");
        const { width, height } = this.overlay;
        context?.clearRect(0, 0, width, height);
        if (!context || !this.from) {
            return;
        }
        const place = ({ x, y }: Point): [number, number] => [
            ((x + 0.5) / this.channel.points) * width,
            height - ((y + 0.5) / this.channel.lines) * height,
        ];
        context.strokeStyle = "#fff";
        context.lineWidth = 2;
        context.beginPath();
        context.moveTo(...place(this.from));
        context.lineTo(...place(this.point));
        context.stroke();
    }

    private beginOrEndProfile(): void {
        if (this.from) {
            this.endProfile();
        } else {
            this.from = this.point;
        }
    }

    private endProfile(): void {
        const { axes, points, lines } = this.channel;
        if (!this.from) {
            return;
        }
        const from = this.from;
        const step = [axes[0].range / Math.max(1, points - 1), axes[1].range / Math.max(1, lines - 1)];
        this.profile = sampleProfile(this.grid, points, from, this.point).map(({ at, value }) => ({
            length: Math.hypot((at.x - from.x) * (step[0] ?? 0), (at.y - from.y) * (step[1] ?? 0)),
            value,
        }));
        this.drawOverlay();
        this.from = undefined;
        const last = this.profile.at(-1);
        const height = this.valueAt(this.point) - this.valueAt(from);
        const length = formatValue(last?.length ?? 0, axes[0].unit);
        const curve = { name: "Profile", x: this.profile.map((p) => p.length), y: this.profile.map((p) => p.value) };
        plotCurves(this.plot, [curve], axes[0].unit, axes[2].unit);
        this.readout.textContent = `Profile: length ${length}, difference ${formatValue(height, axes[2].unit)}`;
    }

    private copy(): void {
        this.canvas.toBlob((picture) => {
            if (picture) {
                void navigator.clipboard.write([new ClipboardItem({ "image/png": picture })]).catch(() => {
                    saveAs(picture, "channel.png"); // where the browser has no clipboard for pages from disk
                });
            }
        });
    }

    private saveProfile(): void {
        const { axes } = this.channel;
        const head = `length (${axes[0].unit}),value (${axes[2].unit})`;
        const rows = this.profile.map(({ length, value }) => `${length},${Number.isFinite(value) ? value : ""}`);
        saveAs(new Blob([`${[head, ...rows].join("\r\n")}\r\n`], { type: "text/csv" }), "profile.csv");
    }
}
