/** Colour maps by some colours, between which they go straight, named as the tool's. Lightness grows with the value in each. */
export const colourMaps: Record<string, readonly string[]> = {
    viridis: [
        "440154", "48186a", "472d7b", "424086", "3b528b", "33638d", "2c728e", "26828e", "21918c",
        "1fa088", "28ae80", "3fbc73", "5ec962", "84d44b", "addc30", "d8e219", "fde725",
    ],
    magma: [
        "000004", "0a0822", "1d1147", "36106b", "51127c", "6a1c81", "832681", "9c2e7f", "b73779",
        "d0416f", "e75263", "f56b5c", "fc8961", "fea772", "fec488", "fde2a3", "fcfdbf",
    ],
    inferno: [
        "000004", "0b0724", "210c4a", "3d0965", "57106e", "71196e", "8a226a", "a32c61", "bc3754",
        "d24644", "e45a31", "f1731d", "f98e09", "fcac11", "f9cb35", "f2ea69", "fcffa4",
    ],
    cividis: [
        "00224e", "002e6a", "1a386f", "32436d", "434e6c", "535a6d", "61656f", "6f7073", "7d7c78",
        "8c8878", "9b9476", "aba072", "bcae6c", "cdbb63", "dec958", "f0d846", "fee838",
    ],
    gray: ["000000", "ffffff"],
};

const levels = 256;

function channelOf(colour: string, channel: number): number {
    return Number.parseInt(colour.slice(2 * channel, 2 * channel + 2), 16);
}

/** The colours of all levels, each as four bytes. */
export function colourTable(map: string): Uint32Array {
    const stops = colourMaps[map] ?? ["000000", "ffffff"];
    const bytes = new Uint8Array(4 * levels).fill(255);
    for (let level = 0; level < levels; ++level) {
        const at = (level / (levels - 1)) * (stops.length - 1);
        const stop = Math.min(stops.length - 2, Math.floor(at));
        for (let channel = 0; channel < 3; ++channel) {
            const from = channelOf(stops[stop] ?? "", channel);
            const to = channelOf(stops[stop + 1] ?? "", channel);
            bytes[4 * level + channel] = Math.round(from + (to - from) * (at - stop));
        }
    }
    return new Uint32Array(bytes.buffer);
}
