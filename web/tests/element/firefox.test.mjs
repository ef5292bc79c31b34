import { suite } from './suite.mjs';

suite('Firefox');
