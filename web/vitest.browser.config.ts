import { defineConfig } from 'vitest/config';

export default defineConfig({
  test: {
    // A browser on a busy machine may miss a moment; what fails twice is a fault.
    retry: 1,
    include: ['tests/browser/**/*.test.ts'],
    environment: 'node',
    testTimeout: 90_000,
    hookTimeout: 60_000,
    fileParallelism: false,
  },
});
