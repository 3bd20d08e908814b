/** What the page and its worker tell each other. */
import type { StoredChannel } from "../format/dataset.ts";

export interface Task {
    file: Blob;
    channel: StoredChannel;
    operator: number;
}

/** The share that is done, and in the end the grid, or why there is none. */
export type Report = { share: number } | { grid: Float64Array<ArrayBuffer> } | { failure: string };
