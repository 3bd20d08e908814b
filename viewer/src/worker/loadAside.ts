import type { StoredChannel } from "../format/dataset.ts";
import { loadGrid } from "../model/loading.ts";
import GridWorker from "./gridWorker.ts?worker&inline";
import type { Report, Task } from "./task.ts";

const fewSamples = 1 << 18; // which take less time than a worker takes to begin

/** Why nothing came of a worker: it did not even begin. */
class NoWorker extends Error {}

function startWorker(): Worker {
    try {
        return new GridWorker();
    } catch {
        throw new NoWorker();
    }
}

async function loadByWorker(task: Task, goOn: (share: number) => boolean): Promise<Float64Array | undefined> {
    const worker = startWorker();
    const done = new Promise<Float64Array | undefined>((resolve, reject) => {
        worker.addEventListener("message", ({ data }: MessageEvent<Report>) => {
            if ("grid" in data) {
                resolve(data.grid);
            } else if ("failure" in data) {
                reject(new Error(data.failure));
            } else if (!goOn(data.share)) {
                resolve(undefined);
            }
        });
        worker.addEventListener("error", () => reject(new NoWorker()));
        worker.postMessage(task);
    });
    return done.finally(() => worker.terminate());
}

/**
 * As loadGrid, but large channels are read and corrected by a worker, so that the page answers meanwhile; by the page
 * itself where its browser has no workers for pages from disk.
 */
export async function loadAside(
    file: Blob,
    channel: StoredChannel,
    operator: number,
    goOn: (share: number) => boolean,
): Promise<Float64Array | undefined> {
    if (channel.lines * channel.points > fewSamples) {
        try {
            return await loadByWorker({ file, channel, operator }, goOn);
        } catch (failure) {
            if (!(failure instanceof NoWorker)) {
                throw failure;
            }
        }
    }
    return loadGrid(file, channel, operator, goOn);
}
