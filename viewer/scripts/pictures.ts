/** Makes the pictures of docs/viewer.md from the sample. */
import { execFileSync } from "node:child_process";
import { mkdirSync, rmSync } from "node:fs";
import { resolve } from "node:path";
import { launch, openPage, outputFolder, pictureFolder, settled, tool } from "./browser.ts";

const sample = resolve(outputFolder, "sample.oxd");
mkdirSync(outputFolder, { recursive: true });
rmSync(sample, { force: true });
execFileSync(tool, ["make-sample", sample], { stdio: "pipe" });

const browser = await launch();
const page = await openPage(browser, { width: 1200, height: 800 });
const save = (name: string, part = "body") => page.locator(part).first().screenshot({ path: resolve(pictureFolder, `${name}.png`) });
const choose = (label: string, choice: string) => page.selectOption(`label:has-text('${label}') select`, { label: choice });
const profile = async () => {
    await page.focus(".frame .image");
    for (const key of [" ", ...Array<string>(18).fill("Shift+ArrowRight"), " "]) {
        await page.keyboard.press(key);
    }
    await page.waitForTimeout(300);
};

await page.setInputFiles("#chooser", sample);
await settled(page);
await choose("Operator", "Parabola fit");
await settled(page);
await page.screenshot({ path: resolve(pictureFolder, "viewer.png") });
await page.hover(".frame .image", { position: { x: 80, y: 250 } });
await profile();
await save("viewer-profile", "#view section");
await choose("Beside", "BackwardScan");
await page.waitForSelector("figure + figure");
await settled(page);
await page.hover(".frame .image", { position: { x: 30, y: 88 } });
await profile();
await save("viewer-beside", "#view section");
await page.click("text=Approach");
await page.waitForSelector("text=2 curves");
await page.waitForTimeout(300);
await save("viewer-curves", "#view section");
await browser.close();
