const lettersOfAPart = 1 << 20; // a multiple of the four that stand for three bytes

/** The bytes of a text in base64. It is taken in parts, so that a large one takes little memory besides itself. */
export function fromBase64(text: string): Blob {
    const parts: Uint8Array<ArrayBuffer>[] = [];
    for (let at = 0; at < text.length; at += lettersOfAPart) {
        const letters = atob(text.slice(at, at + lettersOfAPart));
        const bytes = new Uint8Array(letters.length);
        for (let i = 0; i < bytes.length; ++i) {
            bytes[i] = letters.charCodeAt(i);
        }
        parts.push(bytes);
    }
    return new Blob(parts);
}
