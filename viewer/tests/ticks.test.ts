import { describe, expect, it } from "vitest";
import { tickTexts, ticks } from "../src/draw/ticks.ts";

describe("ticks", () => {
    it.each([
        [-343, 331, 2.9],
        [0.99, 1.01, 1],
        [-7e-12, 3e-9, 4],
        [1e6, 1e6 + 3, 2],
    ])("are at least two round numbers from %d to %d", (low, high, wanted) => {
        const found = ticks(low, high, wanted);
        expect(found.length).toBeGreaterThanOrEqual(2);
        expect(new Set(tickTexts(found)).size).toBe(found.length);
        expect(found.every((value) => value >= low - 1e-9 * (high - low) && value <= high + 1e-9 * (high - low))).toBe(true);
    });

    it("are none where there is nothing between the ends", () => {
        expect([ticks(1, 1, 3), ticks(0, Number.NaN, 3), ticks(2, 1, 3), ticks(0, Number.POSITIVE_INFINITY, 3)]).toEqual([[], [], [], []]);
    });
});
