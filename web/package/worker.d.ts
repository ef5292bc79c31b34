/** The script of a worker; for the `worker` of init: new Worker(new URL('pagerex/worker', ...), { type: 'module' }). */
export {};
