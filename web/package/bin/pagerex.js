#!/usr/bin/env node
import { main } from '../lib/command/main.js';

process.exitCode = await main(process.argv.slice(2));
