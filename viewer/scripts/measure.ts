/** Opens a scan of 4 096 x 4 096 and drags it about, and tells what the browser's trace says of both. */
import { readFileSync } from "node:fs";
import { resolve } from "node:path";
import { writeLargeScan } from "../tests/largeScan.ts";
import { launch, openPage, outputFolder, settled } from "./browser.ts";

interface TraceEvent {
    name: string;
    ph: string;
    ts: number; // microseconds, as dur
    dur?: number;
    tid: number;
    pid: number;
    args: { name?: string };
}

const strokes = 120;
const frameName = "FireAnimationFrame";

/** What the main thread of the page did. */
function onMainThread(file: string): TraceEvent[] {
    const events = (JSON.parse(readFileSync(file, "utf-8")) as { traceEvents: TraceEvent[] }).traceEvents;
    const busiest = events.filter((event) => event.name === frameName).at(-1);
    return events.filter((event) => event.pid === busiest?.pid && event.tid === busiest.tid);
}

function tell(what: string, events: TraceEvent[]): void {
    const tasks = events.filter((event) => event.name === "RunTask" || event.name.endsWith("::RunTask")).map((event) => (event.dur ?? 0) / 1000);
    const frames = events.filter((event) => event.name === frameName && event.dur !== undefined).map((event) => (event.dur ?? 0) / 1000);
    const sorted = frames.sort((a, b) => a - b);
    const at = (share: number) => (sorted[Math.floor(share * (sorted.length - 1))] ?? Number.NaN).toFixed(1);
    const over = tasks.filter((task) => task > 50).length;
    const longest = tasks.reduce((most, task) => Math.max(most, task), 0).toFixed(1);
    console.log(`${what}: longest task ${longest} ms, ${over} of ${tasks.length} tasks above 50 ms`);
    console.log(`${what}: work of a frame, median ${at(0.5)} ms, 95th percentile ${at(0.95)} ms, ${frames.length} frames`);
}

const scan = writeLargeScan(resolve(outputFolder, "large.oxd"));
const browser = await launch();
const page = await openPage(browser);
const trace = resolve(outputFolder, "trace.json");
const categories = ["toplevel", "devtools.timeline", "disabled-by-default-devtools.timeline"];

await browser.startTracing(page, { path: trace, categories });
const begin = performance.now();
await page.setInputFiles("#chooser", scan.file);
await settled(page);
console.log(`Opening: ${((performance.now() - begin) / 1000).toFixed(1)} s until the image is there`);
await browser.stopTracing();
tell("Opening", onMainThread(trace));

await page.focus(".frame .image");
for (let i = 0; i < 8; ++i) {
    await page.keyboard.press("+");
}
const box = await page.locator(".frame .image").boundingBox();
const centre = { x: (box?.x ?? 0) + (box?.width ?? 0) / 2, y: (box?.y ?? 0) + (box?.height ?? 0) / 2 };
await browser.startTracing(page, { path: trace, categories });
await page.mouse.move(centre.x, centre.y);
await page.mouse.down();
for (let i = 0; i < strokes; ++i) {
    await page.mouse.move(centre.x + 150 * Math.sin(i / 10), centre.y + 150 * Math.cos(i / 10));
}
await page.mouse.up();
await browser.stopTracing();
tell("Panning", onMainThread(trace));
await browser.close();
