/** A script that the page brings inside itself. */
declare module "*?worker&inline" {
    const InlineWorker: new () => Worker;
    export default InlineWorker;
}
