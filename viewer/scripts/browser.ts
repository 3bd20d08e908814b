/** The built page in a browser, for scripts that measure it or take pictures of it. */
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { type Browser, type Page, chromium } from "playwright-core";

const root = resolve(import.meta.dirname, "../..");
export const outputFolder = resolve(root, "build/viewer");
export const pictureFolder = resolve(root, "docs/images");
export const tool = resolve(root, process.env.VELOXD_BUILD ?? "build/dev", "tools/oxd/oxd");

export function launch(): Promise<Browser> {
    return chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu"] });
}

export async function openPage(browser: Browser, size = { width: 1280, height: 900 }): Promise<Page> {
    const page = await browser.newPage({ viewport: size });
    await page.goto(pathToFileURL(resolve(outputFolder, "page/index.html")).href);
    return page;
}

/** Until the channel that was asked for last is shown. */
export async function settled(page: Page): Promise<void> {
    await page.waitForFunction(() => {
        const text = document.querySelector("output")?.textContent ?? "";
        return text !== "" && !text.startsWith("Reading") && document.querySelector("[aria-busy]") === null;
    }, undefined, { timeout: 120_000 });
    await page.waitForTimeout(300);
}
