/** The built page in a real browser. */
import { execFileSync } from "node:child_process";
import { readFileSync, readdirSync } from "node:fs";
import { resolve } from "node:path";
import type { Page } from "playwright-core";
import { describe, expect, it } from "vitest";
import { openDataSet } from "../../src/format/dataset.ts";
import { outputFolder, readByLibrary, seedFolder, tool } from "../library.ts";
import { Random } from "../randomFiles.ts";
import { drag, expectAccessible, metres, openPage, openSample, sample, settled, showBeside, showCurves, told, useBrowser } from "./helpers.ts";

useBrowser();

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
        await settled(page);
        await page.focus(".frame canvas");
        await page.keyboard.press("ArrowRight");
        await page.keyboard.press("ArrowUp");
        const value = Number(readByLibrary([sample])[0]?.groups[0]?.channels[0]?.lines[1]?.real[1]);
        const text = await told(page);
        expect(text).toContain("(line 1, point 1)");
        expect(metres(text)).toBeCloseTo(value, 12);
        await page.close();
    }, 180_000);

    it("draws a profile by keys and by pointer", async () => {
        const page = await openSample();
        await page.focus(".frame canvas");
        await page.keyboard.press(" ");
        await page.keyboard.press("Shift+ArrowRight");
        await page.keyboard.press(" ");
        expect(await page.textContent("output")).toContain("Profile: length");
        await page.click("text=Profile tool");
        await drag(page, { x: 20, y: 20 }, { x: 200, y: 120 });
        expect(await page.textContent("output")).toContain("Profile: length");
        expect(await page.locator(".plot .uplot").count()).toBe(1);
        await page.close();
    }, 180_000);

    it.each(["light", "dark"] as const)("has no accessibility violation in %s colours", async (scheme) => {
        const page = await openSample(scheme);
        await expectAccessible(page);
        await showBeside(page);
        await drag(page, { x: 100, y: 20 }, { x: 20, y: 60 });
        await expectAccessible(page);
        await showCurves(page);
        await expectAccessible(page);
        await page.close();
    }, 180_000);

    it("opens the file that the tool put into it", async () => {
        const file = resolve(outputFolder, "embedded.html");
        execFileSync(tool, ["export", sample, "-o", file], { stdio: "pipe" });
        const page = await openPage(file);
        await settled(page);
        expect(await page.textContent("#tree h2")).toBe("sample.oxd");
        await page.close();
    }, 180_000);

    it("shows the groups and channels of all seeds, as the library reads them", async () => {
        const names = readdirSync(seedFolder);
        const files = names.map((name) => resolve(seedFolder, name));
        for (const [i, read] of readByLibrary(files).entries()) {
            const page = await openPage();
            await page.setInputFiles("#chooser", files[i] as string);
            await page.waitForFunction(() => document.querySelector("#tree h2, #message:not(:empty)") !== null);
            const channels = read?.groups.flatMap((group) => group.channels.flatMap((channel) => channel?.name ?? []));
            expect(await page.locator("#tree h3").allTextContents(), names[i]).toEqual(read?.groups.map((group) => group.name) ?? []);
            expect(await page.locator("#tree button").allTextContents(), names[i]).toEqual(channels ?? []);
            expect((await page.textContent("#message"))?.startsWith(`${names[i]} cannot be read`), names[i]).toBe(read === null);
            await page.close();
        }
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
