/** A browser for the tests of the built page, and what they do with it. */
import { execFileSync } from "node:child_process";
import { mkdirSync, readFileSync, rmSync } from "node:fs";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { type Browser, type Page, chromium } from "playwright-core";
import { afterAll, beforeAll, expect } from "vitest";
import { outputFolder, tool } from "../library.ts";

export const built = resolve(outputFolder, "page/index.html");
export const sample = resolve(outputFolder, "sample.oxd");
export type Scheme = "light" | "dark";
const axe = readFileSync(resolve(import.meta.dirname, "../../node_modules/axe-core/axe.min.js"), "utf-8");
const quiet = ["--disable-gpu", "--disable-background-networking", "--disable-component-update", "--disable-sync", "--no-first-run"];
let browser: Browser;

export function useBrowser(): void {
    beforeAll(async () => {
        mkdirSync(outputFolder, { recursive: true });
        rmSync(sample, { force: true });
        execFileSync(tool, ["make-sample", sample]);
        browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", ...quiet] });
    }, 180_000);
    afterAll(() => browser?.close());
}

export async function openPage(file = built, colorScheme: Scheme = "light"): Promise<Page> {
    const page = await browser.newPage({ colorScheme, viewport: { width: 1280, height: 900 } });
    await page.goto(pathToFileURL(file).href);
    return page;
}

/** Until the channel that was asked for last is shown, and painted. */
export async function settled(page: Page): Promise<void> {
    await page.waitForFunction(() => {
        const text = document.querySelector("output")?.textContent ?? "";
        const isBusy = document.querySelector("[aria-busy=true]") !== null; // with thumbnails
        return text !== "" && !text.startsWith("Reading") && !isBusy;
    });
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
}

export async function openSample(colorScheme: Scheme = "light"): Promise<Page> {
    const page = await openPage(built, colorScheme);
    await page.setInputFiles("#chooser", sample);
    await settled(page);
    return page;
}

export async function showBeside(page: Page): Promise<void> {
    await page.selectOption("label:has-text('Beside') select", { label: "BackwardScan" });
    await page.waitForSelector("figure + figure");
    await settled(page);
}

export async function showCurves(page: Page): Promise<void> {
    await page.click("text=Approach");
    await page.waitForSelector(".plot .uplot");
    await settled(page);
}

export async function drag(page: Page, from: { x: number; y: number }, to: { x: number; y: number }): Promise<void> {
    const image = page.locator(".frame .image").first();
    await image.dragTo(image, { sourcePosition: from, targetPosition: to });
}

export async function told(page: Page): Promise<string> {
    return (await page.textContent("output"))?.replaceAll("−", "-") ?? "";
}

/** The length that a text begins with. */
export function metres(text: string): number {
    const [number, unit] = text.split(/[ ,;]+/);
    return Number(number) * { nm: 1e-9, µm: 1e-6, pm: 1e-12 }[unit as "nm"];
}

export async function expectAccessible(page: Page): Promise<void> {
    await page.evaluate(axe);
    const found = await page.evaluate("axe.run().then((all) => all.violations.map((v) => v.id + ': ' + v.nodes[0].html))");
    expect(found).toEqual([]);
}
