import type { InfoGroup } from "../format/information.ts";
import { element } from "./dom.ts";

function rows(groups: InfoGroup[], path: string): { name: string; value: string }[] {
    return groups.flatMap((group) => {
        const name = path === "" ? group.name : `${path} / ${group.name}`;
        const items = group.items.map((item) => ({ name: `${name} / ${item.name}`, value: item.value }));
        return [...rows(group.groups, name), ...items];
    });
}

/** The measurement information as a table, with a field that shows only rows with its text. */
export function informationPanel(groups: InfoGroup[]): HTMLElement {
    const search = element("input", { type: "search", "aria-label": "Search the information", placeholder: "Search" });
    const body = element("tbody");
    for (const row of rows(groups, "")) {
        body.append(element("tr", {}, element("th", { scope: "row" }, row.name), element("td", {}, row.value)));
    }
    search.addEventListener("input", () => {
        const wanted = search.value.toLowerCase();
        for (const row of body.rows) {
            row.hidden = !(row.textContent ?? "").toLowerCase().includes(wanted);
        }
    });
    return element("section", { "aria-label": "Information" }, element("h2", {}, "Information"), search, element("table", {}, body));
}
