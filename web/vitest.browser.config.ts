import { defineConfig } from 'vitest/config';

export default defineConfig({
  test: {
    include: ['tests/browser/**/*.test.ts'],
    environment: 'node',
    testTimeout: 240_000, // a busy machine is no fault of the app
    expect: { poll: { timeout: 30_000 } },
    hookTimeout: 60_000,
    fileParallelism: false,
  },
});
