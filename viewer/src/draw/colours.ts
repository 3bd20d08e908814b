/** Colour maps by a few fixed colours, between which they are linear. Lightness grows with the value in each. */
export const colourMaps: Record<string, readonly string[]> = {
    viridis: ["440154", "3b528b", "21918c", "5ec962", "fde725"],
    inferno: ["000004", "57106e", "bc3754", "f98e09", "fcffa4"],
    cividis: ["00224e", "434e6c", "7d7c78", "bcae6c", "fee838"],
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
