import { FormatFailure } from "./failure.ts";

/** Byte-order marks of encodings that headers never have. */
const refusedMarks = [
    [0xfe, 0xff],
    [0xff, 0xfe],
    [0x00, 0x00, 0xfe, 0xff],
];

/** What bytes 80 to 9F are in code page 1252. The five that it leaves undefined are control characters. */
const upperControls = "€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ";

/** Written out, because some runtimes take this code page for Latin 1. */
function decodeWestern(bytes: Uint8Array): string {
    const letterOf = (byte: number) =>
        byte >= 0x80 && byte < 0xa0 ? upperControls.charAt(byte - 0x80) : String.fromCharCode(byte);
    return Array.from(bytes, letterOf).join("");
}

/** The text of a header: UTF-8 if all of it is valid as such, and code page 1252 otherwise. */
export function decodeHeader(bytes: Uint8Array): string {
    try {
        return new TextDecoder("utf-8", { fatal: true }).decode(bytes);
    } catch {
        if (refusedMarks.some((mark) => mark.every((byte, i) => bytes[i] === byte))) {
            throw new FormatFailure("The header is in UTF-16 or UTF-32, which no file of this kind is", { byte: 0 });
        }
        return decodeWestern(bytes);
    }
}
