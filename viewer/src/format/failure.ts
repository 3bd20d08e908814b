/** Where in a file something is wrong. Lines count from 1 and bytes from 0. */
export interface Place {
    section?: string;
    key?: string;
    line?: number;
    byte?: number;
}

function describe(place: Place): string {
    const parts = [
        place.line === undefined ? "" : `line ${place.line}`,
        place.section === undefined ? "" : `section [${place.section}]`,
        place.key === undefined ? "" : `key ${place.key}`,
        place.byte === undefined ? "" : `byte ${place.byte}`,
    ];
    return parts.filter((part) => part !== "").join(", ");
}

/** A file that cannot be read. Its message is a sentence that names the place. */
export class FormatFailure extends Error {
    constructor(
        what: string,
        readonly place: Place,
    ) {
        super(`${what} (${describe(place)}).`);
    }
}
