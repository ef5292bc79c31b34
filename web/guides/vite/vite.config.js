import { defineConfig } from 'vite';

export default defineConfig({
  optimizeDeps: { exclude: ['pagerex'] },
  worker: { format: 'es' },
});
