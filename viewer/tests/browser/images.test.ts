/** Images beside each other, moved and zoomed, large ones, and what all of it looks like. */
import { execFileSync } from "node:child_process";
import { existsSync, mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { resolve } from "node:path";
import type { Page } from "playwright-core";
import { describe, expect, it } from "vitest";
import { outputFolder, readByLibrary, tool } from "../library.ts";
import { writeLargeScan } from "../largeScan.ts";
import { type Scheme, drag, metres, openPage, openSample, sample, settled, showBeside, showCurves, told, useBrowser } from "./helpers.ts";

useBrowser();

const approved = resolve(import.meta.dirname, "approved");

const small = { width: 320, height: 225 }; // enough to look at
const coarse = { width: 32, height: 22 }; // so few pixels that fonts no longer show

/** The picture in another size: as PNG, and the levels of its pixels. */
function scaled(page: Page, picture: Buffer, size: typeof small): Promise<{ url: string; levels: number[] }> {
    return page.evaluate(
        async ({ data, width, height }) => {
            const image = new Image();
            image.src = `data:image/png;base64,${data}`;
            await image.decode();
            const canvas = document.createElement("canvas");
            canvas.width = width;
            canvas.height = height;
            const context = canvas.getContext("2d") as CanvasRenderingContext2D;
            context.imageSmoothingQuality = "high";
            context.drawImage(image, 0, 0, width, height);
            return { url: canvas.toDataURL(), levels: [...context.getImageData(0, 0, width, height).data] };
        },
        { data: picture.toString("base64"), ...size },
    );
}

/** After a change that is meant to show, remove the picture, run this, and look at the one that it then writes. */
async function expectApproved(page: Page, name: string): Promise<void> {
    const { url } = await scaled(page, await page.screenshot({ path: resolve(outputFolder, `${name}.png`) }), small);
    const picture = Buffer.from(url.slice(url.indexOf(",") + 1), "base64");
    const file = resolve(approved, `${name}.png`);
    if (!existsSync(file)) {
        mkdirSync(approved, { recursive: true });
        writeFileSync(file, picture);
        expect.soft(existsSync(file), `${name}.png was not there. It is now: look at it.`).toBe(false);
        return;
    }
    const { levels } = await scaled(page, picture, coarse);
    const { levels: wanted } = await scaled(page, readFileSync(file), coarse);
    const most = levels.reduce((most, level, i) => Math.max(most, Math.abs(level - (wanted[i] ?? 0))), 0);
    expect(most, name).toBeLessThan(40);
}

describe("images", () => {
    it("tells the values of both directions at the same point", async () => {
        const page = await openSample();
        await showBeside(page);
        await page.focus(".frame .image >> nth=1");
        for (const key of ["Shift+ArrowRight", "ArrowUp"]) {
            await page.keyboard.press(key);
        }
        const text = await told(page);
        const values = readByLibrary([sample])[0]?.groups.slice(0, 2).map((group) => Number(group.channels[0]?.lines[1]?.real[10]));
        const [forward = 0, backward = 0] = values ?? [];
        const [own = "", beside = "", rest = ""] = text.split(/; beside |, difference /);
        expect(text).toContain("(line 1, point 10)");
        expect(metres(own)).toBeCloseTo(forward, 12);
        expect(metres(beside)).toBeCloseTo(backward, 12);
        expect(metres(rest)).toBeCloseTo(forward - backward, 12);
        await page.close();
    }, 180_000);

    it("moves as far as it is dragged", async () => {
        const page = await openSample();
        const image = page.locator(".frame .image");
        await image.focus();
        for (let i = 0; i < 6; ++i) {
            await page.keyboard.press("+");
        }
        await image.hover({ position: { x: 200, y: 200 } });
        const before = await told(page);
        await drag(page, { x: 200, y: 200 }, { x: 150, y: 230 });
        expect(await told(page)).toContain(before.slice(before.indexOf("(line")));
        expect(await page.locator(".plot .uplot").count()).toBe(0);
        await image.hover({ position: { x: 200, y: 200 } });
        expect(await told(page)).not.toBe(before);
        await page.close();
    }, 180_000);

    const scan = writeLargeScan(resolve(outputFolder, "large.oxd"));

    async function expectToMoveOverLargeScan(page: Page): Promise<void> {
        await settled(page);
        await page.focus(".frame .image");
        for (const key of ["ArrowRight", "Shift+ArrowUp", "+", "+"]) {
            await page.keyboard.press(key);
        }
        const text = await told(page);
        expect(text).toContain("(line 10, point 1)");
        expect(metres(text)).toBeCloseTo(scan.valueAt(1, 10), 12);
        await page.close();
    }

    it("opens a scan of 64 MiB by a worker and moves over it", async () => {
        const page = await openPage();
        let workers = 0;
        page.on("worker", () => ++workers);
        await page.setInputFiles("#chooser", scan.file);
        await expectToMoveOverLargeScan(page);
        expect(workers).toBe(1);
    }, 180_000);

    it("opens a page with a scan of 64 MiB inside", async () => {
        const file = resolve(outputFolder, "large.html");
        execFileSync(tool, ["export", scan.file, "-o", file], { stdio: "pipe" });
        await expectToMoveOverLargeScan(await openPage(file));
    }, 180_000);

    it("reads by itself where the browser has no workers", async () => {
        const page = await openPage();
        await page.evaluate(() => Object.assign(window, { Worker: undefined }));
        await page.setInputFiles("#chooser", scan.file);
        await expectToMoveOverLargeScan(page);
    }, 180_000);

    it.each(["light", "dark"] as Scheme[])("looks as approved in %s colours", async (scheme) => {
        const page = await openSample(scheme);
        await expectApproved(page, `image-${scheme}`);
        await showBeside(page);
        await expectApproved(page, `beside-${scheme}`);
        await showCurves(page);
        await expectApproved(page, `curves-${scheme}`);
        await page.close();
    }, 180_000);
});

describe("the keyboard", () => {
    it("reaches every control in order and uses it", async () => {
        const page = await openSample();
        const names: string[] = [];
        const focused = () =>
            page.evaluate(() => {
                const at = document.activeElement as HTMLElement;
                return (at.getAttribute("aria-label") ?? at.closest("label")?.textContent ?? at.textContent ?? "").split(/[.:\n]/)[0];
            });
        await page.focus("#chooser");
        for (let i = 0; i < 24 && names.at(-1) !== "Search the information"; ++i) {
            await page.keyboard.press("Tab");
            names.push(((await focused()) ?? "").replace(/^(Operator|Colours|Beside).*/, "$1").trim());
        }
        const channels = ["Topography", "Deflection", "Phase"];
        const controls = ["Operator", "Colours", "Beside", "Profile tool", "Copy as PNG", "Save profile as CSV"];
        const rest = ["Image of ForwardScan", "Lowest", "Highest", "Search the information"];
        expect(names).toEqual([...channels, ...channels, "Approach", "Retract", ...controls, ...rest]);
        await page.focus("#tree button >> nth=0");
        for (let i = 0; i < 7; ++i) {
            await page.keyboard.press("Tab");
        }
        await page.keyboard.press("Enter");
        await page.waitForSelector("text=2 curves of 512 points");
        await page.close();
    }, 180_000);
});
