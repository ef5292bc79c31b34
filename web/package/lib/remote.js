export const useWorkers = () => {};
export const wantsWorker = () => false;
export const convertThere = null;
export const pagesThere = null;
