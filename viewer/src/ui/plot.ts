import uPlot from "uplot";
import { scaleFor } from "../model/units.ts";

export interface Curve {
    name: string;
    kind: number; // curves of the same kind have the same colour where there are several kinds
    x: number[];
    y: number[];
}

const mostInLegend = 12;
const hues = ["#2a6fb0", "#c0561d", "#2b8a3e", "#8e3bb0", "#b0902a"];

/** Draws curves over each other in one plot with axes in units. */
export function plotCurves(parent: HTMLElement, curves: Curve[], xUnit: string, yUnit: string): void {
    const magnitude = (rows: number[][]) => rows.flat().reduce((most, v) => (Math.abs(v) > most ? Math.abs(v) : most), 0);
    const x = scaleFor(magnitude(curves.map((curve) => curve.x)), xUnit);
    const y = scaleFor(magnitude(curves.map((curve) => curve.y)), yUnit);
    const tables = curves.map((curve): uPlot.AlignedData => {
        const order = curve.x.map((_, i) => i).sort((a, b) => (curve.x[a] ?? 0) - (curve.x[b] ?? 0));
        const values = order.map((i) => (curve.y[i] ?? Number.NaN) * y.factor);
        return [order.map((i) => (curve.x[i] ?? 0) * x.factor), values.map((v) => (Number.isFinite(v) ? v : null))];
    });
    const ink = getComputedStyle(document.body).color;
    const axis = (label: string): uPlot.Axis => ({ label, stroke: ink, grid: { stroke: "#8884" }, ticks: { stroke: "#8884" } });
    const kinds = curves.some((curve) => curve.kind > 0);
    const hueOf = (curve: Curve, i: number) => hues[(kinds ? curve.kind : i) % hues.length] ?? ink;
    parent.replaceChildren();
    new uPlot(
        {
            width: Math.max(240, parent.clientWidth),
            height: 220,
            scales: { x: { time: false } },
            axes: [axis(x.unit), axis(y.unit)],
            series: [
                {},
                ...curves.map((curve, i) => ({ label: curve.name, stroke: hueOf(curve, i), spanGaps: true })),
            ],
            legend: { show: curves.length > 1 && curves.length <= mostInLegend, live: false },
        },
        uPlot.join(tables),
        parent,
    );
}
