import type { Header, Section } from "./header.ts";

/** A group of the measurement information. Groups come before items, as they were read. */
export interface InfoGroup {
    name: string;
    groups: InfoGroup[];
    items: { name: string; value: string }[];
}

const newNames = new Map(
    Object.entries({
        offsetx: "X-Pos",
        XOffset: "X-Pos",
        offsety: "Y-Pos",
        YOffset: "Y-Pos",
        offsetz: "Z-Plane",
        ZOffset: "Z-Plane",
        "Z-Pos": "Z-Plane",
        slopex: "X-Slope",
        XSlope: "X-Slope",
        slopey: "Y-Slope",
        YSlope: "Y-Slope",
        scansize: "Image size",
        ScanRange: "Image size",
        scantime: "Time/Line",
        "Tip Potential": "Tip voltage",
    }),
);

function groupNamed(groups: InfoGroup[], name: string): InfoGroup {
    const known = groups.find((group) => group.name === name);
    return known ?? addGroup(groups, name);
}

function addGroup(groups: InfoGroup[], name: string): InfoGroup {
    const made: InfoGroup = { name, groups: [], items: [] };
    groups.push(made);
    return made;
}

/** The group that an item begins in a list without lines for groups. */
function groupBegunBy(item: string, isFirst: boolean, version: number): string | undefined {
    const endsSpectrum = version === 1 ? "PointsAbort" : "Measurement aborted";
    if (item === "Image size") {
        return "Scan";
    }
    if (item === "Mod" || item === endsSpectrum) {
        return "Spec";
    }
    if (version === 1 ? item.startsWith("GapVoltage") : item === "Tip voltage") {
        return "Approach";
    }
    return isFirst ? "Tool" : undefined;
}

function readFlatList(section: Section, version: number, groups: InfoGroup[]): void {
    let current: InfoGroup | undefined;
    let hasGroupLines = true;
    for (const [index, entry] of section.entries().entries()) {
        const name = newNames.get(entry.key) ?? entry.key;
        const beginsGroup = name.startsWith("-- ");
        hasGroupLines = index === 0 ? beginsGroup : hasGroupLines;
        const begun = hasGroupLines ? undefined : groupBegunBy(name, index === 0, version);
        current = begun === undefined ? current : groupNamed(groups, begun);
        if (beginsGroup) {
            current = addGroup(groups, name.slice(3, Math.max(3, name.length - 3)));
        } else {
            current?.items.push({ name, value: entry.value });
        }
    }
}

/** Trees: each section is read once, however often it is linked, so that circles end. */
class TreeReader {
    private readonly seen = new Set<string>();

    constructor(private readonly header: Header) {}

    read(parent: Section, countKey: string, linkKey: string, groups: InfoGroup[]): Set<string> {
        const count = Math.min(parent.integer(countKey, 0), Math.max(65536, parent.size));
        const links = new Set([countKey.toLowerCase()]);
        for (let i = 0; i < count; ++i) {
            links.add(`${linkKey}${i}`.toLowerCase());
            const name = parent.text(`${linkKey}${i}`);
            this.readGroup(groupNamed(groups, name), `${parent.name}\\${name}`);
        }
        return links;
    }

    private readGroup(group: InfoGroup, path: string): void {
        if (this.seen.has(path.toLowerCase())) {
            return;
        }
        this.seen.add(path.toLowerCase());
        const section = this.header.section(path);
        const links = this.read(section, "SubSectionCount", "SubSection", group.groups);
        for (const { key, value } of section.entries()) {
            if (!links.has(key.toLowerCase())) {
                group.items.push({ name: key, value });
            }
        }
    }
}

export function readInformation(header: Header, version: number): InfoGroup[] {
    const groups: InfoGroup[] = [];
    const dataSet = header.section("DataSet");
    const fallback = version === 1 && header.has("SetInfos") ? "SetInfos" : "";
    const list = dataSet.text("SetInfos", fallback);
    if (list !== "") {
        readFlatList(header.section(list), version, groups);
    }
    if (version === 2) {
        const trees: InfoGroup[] = [];
        new TreeReader(header).read(dataSet, "InfoSetCount", "InfoSet", trees);
        groups.push(...trees);
    }
    return groups;
}
