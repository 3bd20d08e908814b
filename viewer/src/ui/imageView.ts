import { colourMaps } from "../draw/colours.ts";
import { paint } from "../draw/image.ts";
import type { DataSet, Group, StoredChannel } from "../format/dataset.ts";
import { position } from "../model/channel.ts";
import { operators } from "../model/operators.ts";
import { type Point, percentiles, sampleProfile } from "../model/profile.ts";
import { type Named, counterparts } from "../model/related.ts";
import { formatValue } from "../model/units.ts";
import { Viewport } from "../model/viewport.ts";
import { loadAside } from "../worker/loadAside.ts";
import { choice } from "./choice.ts";
import { button, element, saveAs } from "./dom.ts";
import { ImagePane } from "./imagePane.ts";
import { listen } from "./imageInput.ts";
import { type Curve, plotCurves } from "./plot.ts";
import { RangePanel } from "./rangePanel.ts";

const gap = 8; // between two images, in pixels
const hint = "Dragging moves the image, and with Shift or the profile tool draws a profile. Ctrl and the wheel, + and − zoom.";

/** One image, or two side by side that move and point together, with controls, the value at the point and a profile. */
export class ImageView {
    readonly root = element("section", { "aria-label": "Channel" });
    private readonly panesBox = element("div", { class: "panes" });
    private readonly readout = element("output", { "aria-live": "polite" });
    private readonly plot = element("div", { class: "plot" });
    private readonly range = new RangePanel(() => this.repaint());
    private readonly tool = button("Profile tool", () => {
        this.drawsProfiles = !this.drawsProfiles;
        this.tool.setAttribute("aria-pressed", String(this.drawsProfiles));
    });
    private readonly viewport: Viewport;
    private readonly others: Named[];
    private panes: ImagePane[] = [];
    private beside: Named | undefined;
    private map = "viridis";
    private operator = 0;
    private point: Point = { x: 0, y: 0 };
    private from: Point | undefined;
    private profile: { line: [Point, Point]; curves: Curve[] } | undefined;
    private drawsProfiles = false;
    private load = 0; // counts what was asked for, so that what is outdated ends
    private isToBePainted = false;

    constructor(
        private readonly data: DataSet,
        private readonly group: Group,
        readonly channel: StoredChannel,
    ) {
        this.viewport = new Viewport(channel.points, channel.lines);
        this.tool.setAttribute("aria-pressed", "false");
        this.others = counterparts(data, channel);
        const title = element("h2", {}, `${group.name}: ${channel.axes[2].name}`);
        this.root.append(title, this.controls(), element("p", { class: "hint" }, hint), this.panesBox, this.readout, this.plot, this.range.root);
    }

    async show(): Promise<void> {
        const load = ++this.load;
        const shown = [{ group: this.group.name, channel: this.channel }, ...(this.beside ? [this.beside] : [])];
        const room = Math.floor(this.root.clientWidth / shown.length) - gap;
        const panes = shown.map(({ group, channel }) => new ImagePane(channel, group, this.viewport, room));
        for (const [i, pane] of panes.entries()) {
            const grid = await loadAside(this.data.file, pane.channel, this.operator, (share) => {
                const part = Math.round((100 * (i + share)) / panes.length);
                this.root.setAttribute("aria-busy", "true");
                this.readout.textContent = part < 100 ? `Reading: ${part} %` : "";
                return load === this.load && this.root.isConnected;
            });
            if (!grid) {
                return;
            }
            pane.grid = grid;
        }
        this.root.removeAttribute("aria-busy");
        this.take(panes);
    }

    private take(panes: ImagePane[]): void {
        this.panes = panes;
        for (const pane of panes) {
            listen(pane, this);
        }
        this.panesBox.replaceChildren(...panes.map((pane) => pane.root));
        const grid = panes[0]?.grid ?? new Float64Array(0);
        const [low = 0, high = 0] = percentiles(grid, [0.01, 0.99]);
        this.range.set(grid, low, high, this.channel.axes[2].unit);
        this.profile = undefined;
        this.from = undefined;
        this.plot.replaceChildren();
        this.repaint();
        this.tell();
    }

    private controls(): HTMLElement {
        const operator = choice("Operator", operators.map(({ code, name }) => [String(code), name] as const), (value) => {
            this.operator = Number(value);
            void this.show();
        });
        const map = choice("Colours", Object.keys(colourMaps).map((name) => [name, name] as const), (value) => {
            this.map = value;
            this.repaint();
        });
        const names = this.others.map(({ group }, i) => [String(i), group] as const);
        const beside = choice("Beside", [["", "nothing"], ...names], (value) => {
            this.beside = value === "" ? undefined : this.others[Number(value)];
            void this.show();
        });
        const copy = button("Copy as PNG", () => this.copy());
        const save = button("Save profile as CSV", () => this.saveProfile());
        const compared = names.length > 0 ? [beside] : [];
        return element("div", { class: "controls" }, operator, map, ...compared, this.tool, copy, save);
    }

    /** Whether dragging draws a profile instead of moving the image. */
    isProfile(event: MouseEvent): boolean {
        return event.shiftKey || this.drawsProfiles;
    }

    pointTo(point: Point): void {
        this.point = point;
        this.tell();
    }

    moveBy(x: number, y: number): void {
        const { points, lines } = this.channel;
        this.point = {
            x: Math.min(points - 1, Math.max(0, this.point.x + x)),
            y: Math.min(lines - 1, Math.max(0, this.point.y + y)),
        };
        this.viewport.follow(this.point);
        this.tell();
        this.repaint();
    }

    panBy(x: number, y: number): void {
        this.viewport.panBy(x, y);
        this.repaint();
    }

    zoomBy(factor: number, at?: { x: number; y: number }): void {
        this.viewport.zoomBy(factor, at);
        this.repaint();
    }

    sampleAt({ x, y }: { x: number; y: number }): Point {
        return this.viewport.sampleAt(x, y);
    }

    /** Once for each frame that the browser shows, however much changes in between. */
    private repaint(): void {
        if (this.isToBePainted) {
            return;
        }
        this.isToBePainted = true;
        requestAnimationFrame(() => {
            this.isToBePainted = false;
            for (const pane of this.panes) {
                pane.paint(this.range.range, this.map);
            }
            this.mark();
        });
    }

    private mark(): void {
        const line: [Point, Point] | undefined = this.from ? [this.from, this.point] : this.profile?.line;
        for (const pane of this.panes) {
            pane.mark(this.point, line);
        }
    }

    private tell(): void {
        const { axes, points, lines } = this.channel;
        const { x, y } = this.point;
        const at = [position(axes[0], x, points), position(axes[1], y, lines)];
        const place = at.map((value, i) => formatValue(value, axes[i]?.unit ?? "")).join(", ");
        const values = this.panes.map((pane) => pane.valueAt(this.point));
        const [own = Number.NaN, other] = values.map((value) => formatValue(value, axes[2].unit));
        const difference = formatValue((values[0] ?? Number.NaN) - (values[1] ?? Number.NaN), axes[2].unit);
        const compared = other === undefined ? "" : `; beside ${other}, difference ${difference}`;
        this.readout.textContent = `${own} at ${place} (line ${y}, point ${x})${compared}`;
        this.mark();
    }

    beginOrEndProfile(): void {
        this.from ? this.endProfile() : this.beginProfile();
    }

    beginProfile(): void {
        this.from = this.point;
    }

    endProfile(): void {
        const { axes } = this.channel;
        if (!this.from) {
            return;
        }
        const from = this.from;
        this.from = undefined;
        const curves = this.panes.map((pane, kind) => this.profileOf(pane, kind, from));
        this.profile = { line: [from, this.point], curves };
        this.mark();
        plotCurves(this.plot, curves, axes[0].unit, axes[2].unit);
        const pane = this.panes[0];
        const height = pane ? pane.valueAt(this.point) - pane.valueAt(from) : Number.NaN;
        const length = formatValue(curves[0]?.x.at(-1) ?? 0, axes[0].unit);
        this.readout.textContent = `Profile: length ${length}, difference ${formatValue(height, axes[2].unit)}`;
    }

    private profileOf(pane: ImagePane, kind: number, from: Point): Curve {
        const { axes, points, lines } = this.channel;
        const step = { x: axes[0].range / Math.max(1, points - 1), y: axes[1].range / Math.max(1, lines - 1) };
        const samples = sampleProfile(pane.grid, points, from, this.point);
        return {
            name: pane.group,
            kind,
            x: samples.map(({ at }) => Math.hypot((at.x - from.x) * step.x, (at.y - from.y) * step.y)),
            y: samples.map(({ value }) => value),
        };
    }

    private copy(): void {
        const { points, lines } = this.channel;
        const canvas = element("canvas");
        paint(canvas, { grid: this.panes[0]?.grid ?? new Float64Array(0), points, lines }, this.range.range, this.map);
        canvas.toBlob((picture) => {
            if (picture) {
                void navigator.clipboard.write([new ClipboardItem({ "image/png": picture })]).catch(() => {
                    saveAs(picture, "channel.png"); // where the browser has no clipboard for pages from disk
                });
            }
        });
    }

    private saveProfile(): void {
        const { axes } = this.channel;
        const curves = this.profile?.curves ?? [];
        const heads = curves.map(() => `value (${axes[2].unit})`);
        const rows = (curves[0]?.x ?? []).map((length, i) => {
            const values = curves.map(({ y }) => (Number.isFinite(y[i]) ? y[i] : ""));
            return [length, ...values].join(",");
        });
        const table = [[`length (${axes[0].unit})`, ...heads].join(","), ...rows];
        saveAs(new Blob([`${table.join("\r\n")}\r\n`], { type: "text/csv" }), "profile.csv");
    }
}
