/**
 * Opens the documentation in Chromium from disk: site.ts FOLDER. The first page shows, search finds the page that it should
 * and leads there, the page of the viewer shows the sample, nothing is fetched, and no rule of accessibility is violated.
 */
import { readFileSync } from "node:fs";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";
import type { Page } from "playwright-core";
import { launch } from "./browser.ts";

const folder = resolve(process.argv.at(-1) ?? ".");
const faults: string[] = [];

function expect(holds: boolean, what: string): void {
    if (!holds) {
        faults.push(what);
    }
}

function watch(page: Page): void {
    page.on("request", (request) => expect(/^(file|data|blob|about):/.test(request.url()), `fetches ${request.url()}`));
    page.on("console", (message) => expect(message.type() !== "error", `says ${message.text()}`));
    page.on("pageerror", (error) => expect(false, `fails: ${error.message}`));
}

function address(name: string): string {
    return pathToFileURL(resolve(folder, name)).href;
}

async function checkAccess(page: Page): Promise<void> {
    await page.addScriptTag({ content: readFileSync("node_modules/axe-core/axe.min.js", "utf-8") });
    // The theme marks regions that scroll, and its search field, in its own way.
    const violations: string[] = await page.evaluate(
        `axe.run("article", { preload: false, runOnly: ["wcag2a", "wcag2aa"], rules: { "scrollable-region-focusable": { enabled: false } } })
            .then((found) => found.violations.map((each) => each.id + ": " + each.nodes[0].html))`,
    );
    for (const violation of violations) {
        expect(false, violation);
    }
}

const browser = await launch();
const page = await browser.newPage({ viewport: { width: 1280, height: 900 } });
watch(page);
await page.goto(address("index.html"));
expect((await page.locator("article h1").first().innerText()).startsWith("VELOxd"), "the first page has its title");
await checkAccess(page);
await page.screenshot({ path: resolve(folder, "../first.png") });

await page.locator(".md-search__input").fill("salvage");
const hit = page.locator('.md-search-result__link[href*="oxd.html"]').first();
await hit.waitFor({ timeout: 20_000 });
await hit.click();
await page.waitForURL(/oxd\.html/);
expect((await page.locator("article").innerText()).includes("salvage"), "search leads to a page with the word");
await page.screenshot({ path: resolve(folder, "../found.png") });

const phone = await browser.newPage({ viewport: { width: 390, height: 800 }, colorScheme: "dark" });
watch(phone);
await phone.goto(address("docs/python/plot.html"));
const width = await phone.evaluate<number>("document.documentElement.scrollWidth");
expect(width <= 390, `the page is ${width} pixels wide on a phone`);
await checkAccess(phone);
await phone.screenshot({ path: resolve(folder, "../phone.png") });

await page.goto(address("viewer.html"));
await page.locator("text=Topography").first().waitFor({ timeout: 20_000 });
await browser.close();

for (const fault of new Set(faults)) {
    console.error(fault);
}
console.log(`${new Set(faults).size} faults in Chromium.`);
process.exit(faults.length === 0 ? 0 : 1);
