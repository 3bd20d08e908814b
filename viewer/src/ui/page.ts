import { type DataSet, type Group, type StoredChannel, openDataSet } from "../format/dataset.ts";
import { FormatFailure } from "../format/failure.ts";
import { isOfCurves } from "../model/related.ts";
import { CurveView } from "./curveView.ts";
import { ImageView } from "./imageView.ts";
import { Thumbnails } from "./thumbnails.ts";
import { button, byId, element } from "./dom.ts";
import { informationPanel } from "./information.ts";

function say(text: string): void {
    byId("message").textContent = text;
}

async function show(data: DataSet, group: Group, channel: StoredChannel): Promise<void> {
    const view = isOfCurves(channel) ? new CurveView(data, group, channel) : new ImageView(data, group, channel);
    byId("view").replaceChildren(view.root);
    try {
        await view.show();
    } catch (failure) {
        const what = failure instanceof Error ? failure.message : String(failure);
        say(`The samples of ${channel.axes[2].name} (section [${channel.section}]) cannot be read: ${what}`);
    }
}

function addTree(name: string, data: DataSet): void {
    const thumbnails = new Thumbnails(data.file);
    const tree = element("section", { "aria-label": name }, element("h2", {}, name));
    for (const group of data.groups) {
        const list = element("ul");
        for (const channel of group.channels) {
            if (channel) {
                const open = button(channel.axes[2].name, () => void show(data, group, channel));
                const picture = thumbnails.of(channel);
                list.append(element("li", {}, picture, open, ` ${channel.points} × ${channel.lines}`));
            }
        }
        tree.append(element("h3", {}, group.name), list);
    }
    byId("tree").append(tree);
    byId("information").replaceChildren(informationPanel(data.information));
    tree.setAttribute("aria-busy", "true");
    void thumbnails.draw().finally(() => tree.removeAttribute("aria-busy"));
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
                return await show(data, group, first);
            }
        }
        say(`${name} has no channels.`);
    } catch (failure) {
        const known = failure instanceof FormatFailure;
        say(`${name} cannot be read. ${known ? failure.message : `The browser says: ${failure}`}`);
    }
}
