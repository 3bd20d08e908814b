import { scaleFor } from "../model/units.ts";
import { colourTable } from "./colours.ts";
import { tickTexts, ticks } from "./ticks.ts";

export interface Scale {
    low: number;
    high: number;
    unit: string;
}

/** What stands around an image, in CSS pixels. */
export const margins = { left: 52, top: 10, right: 82, bottom: 40 };

const tickLength = 4;
const bar = { gap: 14, width: 14 };
const spaceOfATick = { across: 56, up: 36 };

interface Mark {
    share: number; // of the axis
    text: string;
}

function marksOf({ low, high, unit }: Scale, length: number, space: number): { marks: Mark[]; unit: string } {
    const scale = scaleFor(Math.max(Math.abs(low), Math.abs(high)), unit);
    const ends = [low * scale.factor, high * scale.factor];
    const values = ticks(Math.min(...ends), Math.max(...ends), Math.max(2, length / space)); // some axes run back
    const texts = tickTexts(values);
    const share = (value: number) => (value / scale.factor - low) / (high - low);
    return { marks: values.map((value, i) => ({ share: share(value), text: texts[i] ?? "" })), unit: scale.unit };
}

/** Axes with units left of and below an image of this size, and a colour bar on its right. */
export class Plate {
    private readonly context: CanvasRenderingContext2D | null;

    constructor(
        readonly canvas: HTMLCanvasElement,
        private readonly width: number,
        private readonly height: number,
    ) {
        const density = window.devicePixelRatio;
        const whole = { width: width + margins.left + margins.right, height: height + margins.top + margins.bottom };
        canvas.width = Math.round(whole.width * density);
        canvas.height = Math.round(whole.height * density);
        canvas.style.width = `${whole.width}px`;
        canvas.style.height = `${whole.height}px`;
        this.context = canvas.getContext("2d");
        this.context?.scale(density, density);
        this.context?.translate(margins.left, margins.top);
    }

    draw(across: Scale, up: Scale, signal: Scale, map: string): void {
        const context = this.context;
        if (!context) {
            return;
        }
        context.clearRect(-margins.left, -margins.top, 2 * this.canvas.width, 2 * this.canvas.height);
        const ink = getComputedStyle(document.body).color;
        context.fillStyle = ink;
        context.strokeStyle = ink;
        context.font = "12px system-ui, sans-serif";
        context.strokeRect(-0.5, -0.5, this.width + 1, this.height + 1);
        this.drawAcross(context, across);
        this.drawUp(context, up, 0, -1);
        this.writeUnit(context, marksOf(up, this.height, spaceOfATick.up).unit, 14 - margins.left);
        this.drawBar(context, signal, map);
    }

    private drawAcross(context: CanvasRenderingContext2D, scale: Scale): void {
        const { marks, unit } = marksOf(scale, this.width, spaceOfATick.across);
        context.textAlign = "center";
        context.textBaseline = "top";
        for (const { share, text } of marks) {
            context.fillRect(share * this.width, this.height, 1, tickLength);
            context.fillText(text, share * this.width, this.height + tickLength + 2);
        }
        context.fillText(unit, this.width / 2, this.height + 22);
    }

    /** Marks at the height of the image, which are left of `x` if `side` is -1 and right of it if it is 1. */
    private drawUp(context: CanvasRenderingContext2D, scale: Scale, x: number, side: -1 | 1): void {
        context.textAlign = side < 0 ? "right" : "left";
        context.textBaseline = "middle";
        for (const { share, text } of marksOf(scale, this.height, spaceOfATick.up).marks) {
            const y = (1 - share) * this.height;
            context.fillRect(side < 0 ? x - tickLength : x, y, tickLength, 1);
            context.fillText(text, x + side * (tickLength + 3), y);
        }
    }

    private writeUnit(context: CanvasRenderingContext2D, unit: string, x: number): void {
        context.save();
        context.translate(x, this.height / 2);
        context.rotate(-Math.PI / 2);
        context.textAlign = "center";
        context.textBaseline = "middle";
        context.fillText(unit, 0, 0);
        context.restore();
    }

    private drawBar(context: CanvasRenderingContext2D, signal: Scale, map: string): void {
        const x = this.width + bar.gap;
        const bytes = new Uint8Array(colourTable(map).buffer);
        for (let y = 0; y < this.height; ++y) {
            const level = 4 * Math.round(255 * (1 - y / Math.max(1, this.height - 1)));
            context.fillStyle = `rgb(${bytes[level]} ${bytes[level + 1]} ${bytes[level + 2]})`;
            context.fillRect(x, y, bar.width, 1);
        }
        context.fillStyle = context.strokeStyle;
        context.strokeRect(x - 0.5, -0.5, bar.width + 1, this.height + 1);
        this.drawUp(context, signal, x + bar.width + 1, 1);
        this.writeUnit(context, marksOf(signal, this.height, spaceOfATick.up).unit, this.width + margins.right - 8);
    }
}
