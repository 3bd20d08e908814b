import { element, labelled } from "./dom.ts";

/** A list to choose from, with its label. `chosen` is told the value of the choice. */
export function choice(label: string, options: readonly (readonly [value: string, text: string])[], chosen: (value: string) => void): HTMLElement {
    const list = element("select");
    list.append(...options.map(([value, text]) => element("option", { value }, text)));
    list.addEventListener("change", () => chosen(list.value));
    return labelled(label, list);
}
