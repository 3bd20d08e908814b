/** Elements are made with text only: what a file says never becomes markup. */
export function element<K extends keyof HTMLElementTagNameMap>(
    tag: K,
    attributes: Record<string, string> = {},
    ...children: (Node | string)[]
): HTMLElementTagNameMap[K] {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        made.setAttribute(name, value);
    }
    made.append(...children);
    return made;
}

export function byId<T extends HTMLElement = HTMLElement>(id: string): T {
    const found = document.getElementById(id);
    if (found === null) {
        throw new Error(`The page has no ${id}`);
    }
    return found as T;
}

export function labelled(text: string, control: HTMLElement): HTMLLabelElement {
    return element("label", {}, `${text} `, control);
}

export function button(text: string, press: () => void): HTMLButtonElement {
    const made = element("button", { type: "button" }, text);
    made.addEventListener("click", press);
    return made;
}

export function saveAs(content: Blob, name: string): void {
    const link = element("a", { href: URL.createObjectURL(content), download: name });
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
}
