import { type DataSet, type StoredChannel, openDataSet } from "../format/dataset.ts";
import { FormatFailure } from "../format/failure.ts";
import { ChannelView } from "./channelView.ts";
import { button, byId, element } from "./dom.ts";
import { informationPanel } from "./information.ts";

function say(text: string): void {
    byId("message").textContent = text;
}

async function show(data: DataSet, group: string, channel: StoredChannel): Promise<void> {
    const view = new ChannelView(data, group, channel);
    byId("view").replaceChildren(view.root);
    try {
        await view.show();
    } catch (failure) {
        const what = failure instanceof Error ? failure.message : String(failure);
        say(`The samples of ${channel.axes[2].name} (section [${channel.section}]) cannot be read: ${what}`);
    }
}

function addTree(name: string, data: DataSet): void {
    const tree = element("section", { "aria-label": name }, element("h2", {}, name));
    for (const group of data.groups) {
        const list = element("ul");
        for (const channel of group.channels) {
            if (channel) {
                const open = button(channel.axes[2].name, () => void show(data, group.name, channel));
                list.append(element("li", {}, open, ` ${channel.points} × ${channel.lines}`));
            }
        }
        tree.append(element("h3", {}, group.name), list);
    }
    byId("tree").append(tree);
    byId("information").replaceChildren(informationPanel(data.information));
}

/** Opens a file beside those that are open. One that cannot be read gives a sentence with the place. */
export async function openFile(file: Blob, name: string): Promise<void> {
    try {
        const data = await openDataSet(file);
        addTree(name, data);
        say("");
        for (const group of data.groups) {
            const first = group.channels.find((channel) => channel !== undefined);
            if (first) {
                return await show(data, group.name, first);
            }
        }
        say(`${name} has no channels.`);
    } catch (failure) {
        const known = failure instanceof FormatFailure;
        say(`${name} cannot be read. ${known ? failure.message : `The browser says: ${failure}`}`);
    }
}
