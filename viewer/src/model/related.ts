import type { DataSet, Group, StoredChannel } from "../format/dataset.ts";

const mostLinesOfAProfile = 2;

/** Whether the lines of a channel are curves or a profile: they are one or two, or what tells them apart has no unit. */
export function isOfCurves(channel: StoredChannel): boolean {
    const [points, lines] = channel.axes;
    return channel.lines <= mostLinesOfAProfile || (lines.unit === "" && points.unit !== "");
}

export interface Named {
    group: string;
    channel: StoredChannel;
}

/** Images that can be shown beside one: of the same signal, with as many samples, such as those of the way back. */
export function counterparts(data: DataSet, channel: StoredChannel): Named[] {
    const fits = (other: StoredChannel) =>
        other !== channel &&
        other.points === channel.points &&
        other.lines === channel.lines &&
        other.axes[2].name === channel.axes[2].name &&
        other.axes[2].unit === channel.axes[2].unit;
    return data.groups.flatMap((group) =>
        group.channels
            .filter((other) => other !== undefined)
            .filter(fits)
            .map((other) => ({ group: group.name, channel: other })),
    );
}

/** Curves that share the axes of one, itself among them: approach and retract of one group. */
export function family(group: Group, channel: StoredChannel): StoredChannel[] {
    const fits = (other: StoredChannel | undefined): other is StoredChannel =>
        other !== undefined &&
        isOfCurves(other) &&
        other.lines === channel.lines &&
        other.axes[0].unit === channel.axes[0].unit &&
        other.axes[2].unit === channel.axes[2].unit;
    return group.channels.filter(fits);
}
