/** The built page in a real browser. */
import { execFileSync } from "node:child_process";
import { mkdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { type Browser, type Page, chromium } from "playwright-core";
import { afterAll, beforeAll, describe, expect, it } from "vitest";
import { openDataSet } from "../../src/format/dataset.ts";
import { outputFolder, readByLibrary, tool } from "../library.ts";
import { Random } from "../randomFiles.ts";

const built = resolve(outputFolder, "page/index.html");
const axe = readFileSync(resolve(import.meta.dirname, "../../node_modules/axe-core/axe.min.js"), "utf-8");
const sample = resolve(outputFolder, "sample.oxd");
const quiet = ["--disable-gpu", "--disable-background-networking", "--disable-component-update", "--disable-sync", "--no-first-run"];
let browser: Browser;

beforeAll(async () => {
    mkdirSync(outputFolder, { recursive: true });
    rmSync(sample, { force: true });
    execFileSync(tool, ["make-sample", sample]);
    browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", ...quiet] });
}, 180_000);

afterAll(() => browser?.close());

async function openPage(file = built, colorScheme: "light" | "dark" = "light"): Promise<Page> {
    const page = await browser.newPage({ colorScheme, viewport: { width: 1280, height: 900 } });
    await page.goto(pathToFileURL(file).href);
    return page;
}

async function openSample(colorScheme: "light" | "dark" = "light"): Promise<Page> {
    const page = await openPage(built, colorScheme);
    await page.setInputFiles("#chooser", sample);
    await page.waitForSelector("output:not(:empty)");
    return page;
}

async function choose(page: Page, name: string, bytes: Uint8Array): Promise<string> {
    await page.setInputFiles("#chooser", { name, mimeType: "", buffer: Buffer.from(bytes) });
    await page.waitForFunction((wanted) => document.querySelector("#message")?.textContent?.includes(wanted), name);
    return (await page.textContent("#message")) ?? "";
}

describe("the page", () => {
    it("opens a dropped file, and tells the library's value at the point that the keys lead to", async () => {
        const page = await openPage();
        const bytes = readFileSync(sample).toString("base64");
        await page.evaluate((content) => {
            const transfer = new DataTransfer();
            const decoded = Uint8Array.from(atob(content), (letter) => letter.charCodeAt(0));
            transfer.items.add(new File([decoded], "sample.oxd"));
            document.dispatchEvent(new DragEvent("drop", { dataTransfer: transfer, bubbles: true }));
        }, bytes);
        await page.focus(".frame canvas");
        await page.keyboard.press("ArrowRight");
        await page.keyboard.press("ArrowUp");
        const value = Number(readByLibrary([sample])[0]?.groups[0]?.channels[0]?.lines[1]?.real[1]);
        const told = (await page.textContent("output"))?.replace("−", "-") ?? "";
        expect(told).toContain("(line 1, point 1)");
        const factor = { nm: 1e-9, µm: 1e-6, pm: 1e-12 }[told.split(" ")[1] as "nm"];
        expect(Number(told.split(" ")[0]) * factor).toBeCloseTo(value, 12);
        await page.close();
    }, 180_000);

    it("draws a profile by keys and by pointer", async () => {
        const page = await openSample();
        await page.focus(".frame canvas");
        await page.keyboard.press(" ");
        await page.keyboard.press("Shift+ArrowRight");
        await page.keyboard.press(" ");
        expect(await page.textContent("output")).toContain("Profile: length");
        await page.locator(".frame canvas").first().dragTo(page.locator(".frame canvas").first(), {
            sourcePosition: { x: 20, y: 20 },
            targetPosition: { x: 200, y: 120 },
        });
        expect(await page.textContent("output")).toContain("Profile: length");
        expect(await page.locator(".plot .uplot").count()).toBe(1);
        await page.close();
    }, 180_000);

    it.each(["light", "dark"] as const)("has no accessibility violation in %s colours", async (scheme) => {
        const page = await openSample(scheme);
        await page.evaluate(axe);
        const found = await page.evaluate("axe.run().then((all) => all.violations.map((v) => v.id + ': ' + v.nodes[0].html))");
        await page.screenshot({ path: resolve(outputFolder, `${scheme}.png`) });
        expect(found).toEqual([]);
        await page.close();
    }, 180_000);

    it("opens the file that is embedded in it", async () => {
        const content = readFileSync(sample).toString("base64");
        const empty = 'id="file"></script>';
        const html = readFileSync(built, "utf-8");
        expect(html).toContain(empty);
        const file = resolve(outputFolder, "embedded.html");
        writeFileSync(file, html.replace(empty, `id="file" data-name="sample.oxd">${content}</script>`));
        const page = await openPage(file);
        await page.waitForSelector("output:not(:empty)");
        expect(await page.textContent("#tree h2")).toBe("sample.oxd");
        await page.close();
    }, 180_000);

    it("gives a sentence with the place for 49 damaged files", async () => {
        const page = await openPage();
        const whole = readFileSync(sample);
        const random = new Random(49);
        for (let made = 0; made < 49; ) {
            const damaged = Uint8Array.from(whole.subarray(0, random.below(2) === 0 ? whole.length : random.below(whole.length)));
            for (let i = 0; i < 40; ++i) {
                damaged[random.below(4000)] = 0x30 + random.below(10);
            }
            if (await openDataSet(new Blob([damaged])).then(() => false, () => true)) {
                const message = await choose(page, `damaged-${made++}.oxd`, damaged);
                expect(message).toMatch(/cannot be read\. .+\((line|section|key|byte) .+\)\.$/);
            }
        }
        await page.close();
    }, 180_000);

    it("runs nothing that a file says", async () => {
        const page = await openPage();
        const hostile = "<img src=x onerror=document.title='run'><script>document.title='run'</script>";
        const text = `[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=${hostile}\nGr0-Count=1\nGr0-Ch0=C\nInfoSetCount=1\nInfoSet0=${hostile}\n[C]\nVersion=2\nDim2Name=${hostile}\n#!`;
        await page.setInputFiles("#chooser", { name: hostile, mimeType: "", buffer: Buffer.from(text) });
        await page.waitForSelector("#tree h3");
        expect(await page.textContent("#tree h3")).toBe(hostile);
        const ran = await page.evaluate(() => {
            const script = document.createElement("script");
            script.textContent = "document.title = 'run'";
            document.body.append(script); // what the policy refuses
            return document.title;
        });
        expect(ran).toBe("VELOxd viewer");
        await page.close();
    }, 180_000);
});
