import { createHash } from "node:crypto";
import { type Plugin, defineConfig } from "vite";

function hashOf(text: string): string {
    return `'sha256-${createHash("sha256").update(text).digest("base64")}'`;
}

/** Only the script of the page itself may run, which its hash names, and nothing is ever fetched. */
function policy(script: string): string {
    const rules = [
        "default-src 'none'",
        `script-src ${hashOf(script)}`,
        "worker-src blob:", // whose script is in that of the page
        "style-src 'unsafe-inline'", // the plots set sizes of their elements
        "img-src blob: data:",
        "base-uri 'none'",
        "form-action 'none'",
    ];
    return `<meta http-equiv="Content-Security-Policy" content="${rules.join("; ")}" />`;
}

/** Puts the one script and the one style sheet into the page, and the policy ahead of them. */
function oneFile(): Plugin {
    return {
        name: "one-file",
        enforce: "post",
        generateBundle(_, bundle) {
            const page = Object.values(bundle).find((file) => file.fileName === "index.html");
            if (page?.type !== "asset") {
                throw new Error("There is no page");
            }
            let html = String(page.source);
            let script = "";
            let style = "";
            for (const file of Object.values(bundle)) {
                if (file !== page) {
                    script += file.type === "chunk" ? file.code : "";
                    style += file.type === "asset" ? file.source : "";
                    delete bundle[file.fileName];
                }
            }
            script = `\n${script.replaceAll("</script", "<\\/script")}`;
            html = html.replace(/<script type="module"[^>]*><\/script>|<link rel="stylesheet"[^>]*>/g, "");
            html = html.replace('<meta charset="utf-8" />', (charset) => `${charset}${policy(script)}`);
            html = html.replace("</head>", () => `<style>${style}</style></head>`);
            page.source = html.replace("</body>", () => `<script type="module">${script}</script></body>`);
        },
    };
}

export default defineConfig({
    plugins: [oneFile()],
    build: { outDir: "../build/viewer/page", emptyOutDir: true, assetsInlineLimit: 0, modulePreload: false },
});
