import { suite } from './suite.mjs';

suite('WebKit');
