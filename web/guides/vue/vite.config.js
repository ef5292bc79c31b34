import vue from '@vitejs/plugin-vue';
import { defineConfig } from 'vite';

const isCustomElement = (name) => name === 'pagerex-viewer';

export default defineConfig({
  plugins: [vue({ template: { compilerOptions: { isCustomElement } } })],
  optimizeDeps: { exclude: ['pagerex'] },
  worker: { format: 'es' },
});
