import { type ChannelHeader, readChannelSection } from "./channelSection.ts";
import { FormatFailure } from "./failure.ts";
import { type Header, type Section, readHeader } from "./header.ts";
import { type InfoGroup, readInformation } from "./information.ts";

/** A channel and where its samples stand: lines without valid points have no bytes. */
export interface StoredChannel extends ChannelHeader {
    section: string;
    slot: number;
    begin: number;
}

export interface Group {
    name: string;
    channels: (StoredChannel | undefined)[];
}

export interface DataSet {
    file: Blob;
    version: number;
    groups: Group[];
    information: InfoGroup[];
}

const mostGroups = 65536;
const mostSlots = 1 << 20;

function readChannel(header: Header, name: string, slot: number): StoredChannel {
    return { ...readChannelSection(header.section(name)), section: name, slot, begin: 0 };
}

function boundedCount(section: Section, key: string, limit: number): number {
    const count = Math.max(0, section.integer(key, 0));
    return count <= limit ? count : section.fail(`${count} is more than a file can have`, key);
}

function readGroups(header: Header): Group[] {
    const section = header.section("DataSet");
    const groupCount = boundedCount(section, "GroupCount", Math.max(mostGroups, section.size));
    const groups: Group[] = [];
    let slotsLeft = mostSlots;
    for (let g = 0; g < groupCount; ++g) {
        const count = boundedCount(section, `Gr${g}-Count`, slotsLeft);
        slotsLeft -= count;
        const channels = Array.from({ length: count }, (_, c) => {
            const name = section.text(`Gr${g}-Ch${c}`);
            return name === "" ? undefined : readChannel(header, name, c);
        });
        groups.push({ name: section.text(`Gr${g}-Name`, `Group${g}`), channels });
    }
    return groups;
}

/** Version 1: frames, which become groups, each with a channel of every kind. */
function readFrames(header: Header): Group[] {
    const section = header.section("DataSet");
    const channelCount = boundedCount(section, "ChannelCount", mostSlots);
    const frameCount = boundedCount(section, "FrameCount", mostSlots);
    if (channelCount * frameCount === 0 || channelCount * frameCount > section.size) {
        const key = channelCount === 0 ? "ChannelCount" : "FrameCount";
        section.fail("The counts of channels and frames do not fit what the section names", key);
    }
    return Array.from({ length: frameCount }, (_, f) => {
        const channels = Array.from({ length: channelCount }, (_, c) => {
            const key = `Ch${c}-Fr${f}`;
            const name = section.text(key);
            return name === "" ? section.fail("The channel is missing", key) : readChannel(header, name, c);
        });
        return { name: channels.at(-1)?.frame ?? "", channels };
    });
}

/** How many points line `line` has in the file. */
export function storedPoints(channel: ChannelHeader, line: number): number {
    return channel.ownAxes?.[line]?.points === 0 ? 0 : channel.points;
}

export function byteLength(channel: ChannelHeader): number {
    const empty = channel.ownAxes?.filter((axis) => axis.points === 0).length ?? 0;
    return (channel.lines - empty) * channel.points * (channel.bits / 8);
}

/** Version 2 stores samples group by group; version 1 stores channel 0 of all frames first. */
function inStoredOrder(version: number, groups: Group[]): StoredChannel[] {
    const slots = Math.max(0, ...groups.map((group) => group.channels.length));
    const ordered =
        version === 2
            ? groups.flatMap((group) => group.channels)
            : Array.from({ length: slots }, (_, c) => groups.map((group) => group.channels[c])).flat();
    return ordered.filter((channel) => channel !== undefined);
}

function placeSamples(file: Blob, begin: number, channels: StoredChannel[]): void {
    let at = begin;
    for (const channel of channels) {
        channel.begin = at;
        at += byteLength(channel);
        if (at > file.size) {
            throw new FormatFailure(
                `The samples of channel "${channel.axes[2].name}" end at byte ${at}, but the file has ${file.size} bytes`,
                { section: channel.section, byte: channel.begin },
            );
        }
    }
}

/** Reads the header and finds the samples of each channel. No sample is read yet. */
export async function openDataSet(file: Blob): Promise<DataSet> {
    const { header, length } = await readHeader(file);
    const section = header.section("DataSet");
    const version = section.integer("Version", 1);
    if (version !== 1 && version !== 2) {
        section.fail(`Version ${version} of the format is none of 1 and 2`, "Version");
    }
    const groups = version === 2 ? readGroups(header) : readFrames(header);
    placeSamples(file, length, inStoredOrder(version, groups));
    return { file, version, groups, information: readInformation(header, version) };
}
