import { histogram } from "../model/profile.ts";
import { formatValue } from "../model/units.ts";
import { element, labelled } from "./dom.ts";

const steps = 1000;
const bins = 128;

/** The histogram of an image, and two handles for the range of values that the colours span. */
export class RangePanel {
    readonly root = element("section", { "aria-label": "Range of colours", class: "range" });
    private readonly bars = element("canvas", { width: String(2 * bins), height: "48", "aria-hidden": "true" });
    private readonly handles = ["Lowest", "Highest"].map(() => element("input", { type: "range", min: "0", max: String(steps) }));
    private readonly text = element("span");
    private low = 0;
    private high = 0;
    private unit = "";

    constructor(changed: () => void) {
        const [lowest, highest] = this.handles as [HTMLInputElement, HTMLInputElement];
        this.root.append(this.bars, labelled("Lowest", lowest), labelled("Highest", highest), this.text);
        for (const handle of this.handles) {
            handle.addEventListener("input", () => {
                this.tell();
                changed();
            });
        }
    }

    /** The handles go from a fifth of the range below it to a fifth above. */
    set(grid: Float64Array, low: number, high: number, unit: string): void {
        const margin = (high - low) / 5;
        this.low = low - margin;
        this.high = high + margin;
        this.unit = unit;
        for (const [i, handle] of this.handles.entries()) {
            handle.value = String(Math.round((steps * (i === 0 ? 1 : 6)) / 7));
        }
        this.draw(histogram(grid, this.low, this.high, bins));
        this.tell();
    }

    get range(): [number, number] {
        const at = (i: number) => this.low + ((this.high - this.low) * Number(this.handles[i]?.value)) / steps;
        return [Math.min(at(0), at(1)), Math.max(at(0), at(1))];
    }

    private tell(): void {
        this.text.textContent = this.range.map((value) => formatValue(value, this.unit)).join(" to ");
    }

    private draw(counts: number[]): void {
        const context = this.bars.getContext("2d");
        const most = Math.max(1, ...counts);
        context?.clearRect(0, 0, this.bars.width, this.bars.height);
        for (const [bin, count] of counts.entries()) {
            const height = (count / most) * this.bars.height;
            if (context) {
                context.fillStyle = "#888";
                context.fillRect(2 * bin, this.bars.height - height, 2, height);
            }
        }
    }
}
