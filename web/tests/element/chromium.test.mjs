import { suite } from './suite.mjs';

suite('Chromium');
