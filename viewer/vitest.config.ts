import { defineConfig } from "vitest/config";

/** Both kinds of tests compile and start programs: one file after the other. */
export default defineConfig({ test: { include: ["tests/**/*.test.ts"], fileParallelism: false } });
