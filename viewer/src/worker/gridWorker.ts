/** Reads and corrects a channel beside the page, and ends when the page does not need it any more. */
import { loadGrid } from "../model/loading.ts";
import type { Report, Task } from "./task.ts";

function report(content: Report, moved: Transferable[] = []): void {
    postMessage(content, { transfer: moved });
}

addEventListener("message", async ({ data }: MessageEvent<Task>) => {
    try {
        const grid = await loadGrid(data.file, data.channel, data.operator, (share) => {
            report({ share });
            return true;
        });
        if (grid) {
            report({ grid }, [grid.buffer]);
        }
    } catch (failure) {
        report({ failure: failure instanceof Error ? failure.message : String(failure) });
    }
});
