export { convertSync, PagerexError } from './index.js';
export type { Options, Result } from './index.js';
