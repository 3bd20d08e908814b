import type { DataSet, Group, StoredChannel } from "../format/dataset.ts";
import { position, readLines, validPoints, valuesOn } from "../model/channel.ts";
import { applyOperator, operators } from "../model/operators.ts";
import { family } from "../model/related.ts";
import { choice } from "./choice.ts";
import { element } from "./dom.ts";
import { type Curve, plotCurves } from "./plot.ts";

const mostLines = 64; // that are shown at once
const all = "all";

/** The curves of a channel, over those of the channels of its group with the same axes: approach and retract. */
export class CurveView {
    readonly root = element("section", { "aria-label": "Channel" });
    private readonly readout = element("output", { "aria-live": "polite" });
    private readonly plot = element("div", { class: "plot" });
    private readonly shown: Set<StoredChannel>;
    private operator = 0;
    private line: string;

    constructor(
        private readonly data: DataSet,
        group: Group,
        private readonly channel: StoredChannel,
    ) {
        const title = element("h2", {}, `${group.name}: ${channel.axes[2].name}`);
        const relatives = family(group, channel);
        this.shown = new Set(relatives);
        this.line = channel.lines > 1 && relatives.length > 1 ? "0" : all;
        this.root.append(title, this.controls(relatives), this.readout, this.plot);
    }

    async show(): Promise<void> {
        const curves: Curve[] = [];
        for (const channel of this.shown) {
            const lines = await readLines(this.data.file, channel);
            const wanted = this.line === all ? lines.slice(0, mostLines).map((_, k) => k) : [Number(this.line)];
            curves.push(...wanted.map((k) => this.curve(channel, lines[k], k)));
        }
        const { axes, lines, points } = this.channel;
        const number = curves.length === 1 ? "1 curve" : `${curves.length} curves`;
        const left = this.line === all && lines > mostLines ? `, of the first ${mostLines} of ${lines} lines` : "";
        this.readout.textContent = `${number} of ${points} points${left}`;
        plotCurves(this.plot, curves, axes[0].unit, axes[2].unit);
    }

    private curve(channel: StoredChannel, line: Int32Array | undefined, k: number): Curve {
        const raw = [...applyOperator(this.operator, line ?? new Int32Array(0))];
        const axis = channel.ownAxes?.[k] ?? channel.axes[0];
        const count = validPoints(channel, k);
        return {
            name: this.shown.size > 1 ? `${channel.axes[2].name}, line ${k}` : `Line ${k}`,
            kind: [...this.shown].indexOf(channel),
            x: raw.map((_, i) => position(axis, i, count)),
            y: raw.map(valuesOn(channel.axes[2])),
        };
    }

    private controls(relatives: StoredChannel[]): HTMLElement {
        const lines = Array.from({ length: this.channel.lines }, (_, k) => [String(k), String(k)] as const);
        const line = choice("Line", [[all, all], ...lines], (value) => {
            this.line = value;
            void this.show();
        });
        (line.querySelector("select") as HTMLSelectElement).value = this.line;
        const operator = choice("Operator", operators.map(({ code, name }) => [String(code), name] as const), (value) => {
            this.operator = Number(value);
            void this.show();
        });
        const others = relatives.filter((other) => other !== this.channel).map((other) => this.overlaid(other));
        return element("div", { class: "controls" }, operator, line, ...others);
    }

    private overlaid(other: StoredChannel): HTMLElement {
        const box = element("input", { type: "checkbox", checked: "" });
        box.addEventListener("change", () => {
            box.checked ? this.shown.add(other) : this.shown.delete(other);
            void this.show();
        });
        return element("label", {}, box, ` with ${other.axes[2].name}`);
    }
}
