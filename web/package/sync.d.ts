export { convertSync, init, PagerexError } from './index.js';
export type { InitOptions, Options, Result } from './index.js';
