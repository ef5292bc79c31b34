/** What ended a call. `code` is one of the names that index.d.ts lists; `result` what there is of a result. */
export class PagerexError extends Error {
  constructor(code, message, { kind = 'unknown', result, cause } = {}) {
    super(message, cause === undefined ? undefined : { cause });
    this.name = 'PagerexError';
    this.code = code;
    this.kind = kind;
    if (result) this.result = result;
  }
}

export const badArgument = (message) => new PagerexError('invalid_argument', message);

/** An error of the module's own report. */
export const errorOf = (told, result) => new PagerexError(told.code, told.sentence, { kind: told.kind, result });
