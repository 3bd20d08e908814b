import "uplot/dist/uPlot.min.css";
import "./page.css";
import { fromBase64 } from "./format/base64.ts";
import { byId } from "./ui/dom.ts";
import { openFile } from "./ui/page.ts";

async function openAll(files: Iterable<File>): Promise<void> {
    for (const file of files) {
        await openFile(file, file.name);
    }
}

/** A page that was made for a file holds its bytes in base64. */
function openEmbedded(): void {
    const embedded = document.getElementById("file");
    const text = embedded?.textContent?.trim() ?? "";
    if (embedded && text !== "") {
        embedded.textContent = ""; // which frees its memory
        void openFile(fromBase64(text), embedded.getAttribute("data-name") ?? "file");
    }
}

const chooser = byId<HTMLInputElement>("chooser");
chooser.addEventListener("change", () => void openAll(chooser.files ?? []));
document.addEventListener("dragover", (event) => event.preventDefault());
document.addEventListener("drop", (event) => {
    event.preventDefault();
    void openAll(event.dataTransfer?.files ?? []);
});
openEmbedded();
