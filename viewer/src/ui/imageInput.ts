import type { Point } from "../model/profile.ts";
import type { ImagePane } from "./imagePane.ts";

const zoomStep = 1.25;

/** What pointers and keys do to an image. */
export interface ImageActions {
    isProfile(event: MouseEvent): boolean;
    sampleAt(place: { x: number; y: number }): Point;
    pointTo(point: Point): void;
    moveBy(x: number, y: number): void;
    panBy(x: number, y: number): void;
    zoomBy(factor: number, at?: { x: number; y: number }): void;
    beginProfile(): void;
    endProfile(): void;
    beginOrEndProfile(): void;
}

const moves: Record<string, readonly [number, number]> = {
    ArrowLeft: [-1, 0],
    ArrowRight: [1, 0],
    ArrowUp: [0, 1],
    ArrowDown: [0, -1],
};

function press(event: KeyboardEvent, actions: ImageActions): void {
    const move = moves[event.key];
    if (move) {
        const far = event.shiftKey ? 10 : 1;
        actions.moveBy(far * move[0], far * move[1]);
    } else if (event.key === " ") {
        actions.beginOrEndProfile();
    } else if (event.key === "+" || event.key === "-") {
        actions.zoomBy(event.key === "+" ? zoomStep : 1 / zoomStep);
    } else {
        return;
    }
    event.preventDefault();
}

/** Dragging moves the image, or draws a profile from where it began. */
export function listen(pane: ImagePane, actions: ImageActions): void {
    const { canvas } = pane;
    let last: { x: number; y: number } | undefined; // of the drag that moves the image
    canvas.addEventListener("pointerdown", (event) => {
        canvas.setPointerCapture(event.pointerId);
        actions.pointTo(actions.sampleAt(pane.placeOf(event)));
        if (actions.isProfile(event)) {
            actions.beginProfile();
        } else {
            last = pane.placeOf(event);
        }
    });
    canvas.addEventListener("pointermove", (event) => {
        const place = pane.placeOf(event);
        if (last) {
            actions.panBy(last.x - place.x, last.y - place.y);
            last = place;
        }
        actions.pointTo(actions.sampleAt(place));
    });
    const end = () => {
        last = undefined;
        actions.endProfile();
    };
    canvas.addEventListener("pointerup", end);
    canvas.addEventListener("pointercancel", end);
    canvas.addEventListener("keydown", (event) => press(event, actions));
    canvas.addEventListener(
        "wheel",
        (event) => {
            if (event.ctrlKey) {
                event.preventDefault();
                actions.zoomBy(event.deltaY < 0 ? zoomStep : 1 / zoomStep, pane.placeOf(event));
            }
        },
        { passive: false },
    );
}
