// A label that was refused.

const outOfMemory = {
  ok: false,
  error: { code: "out_of_memory", field: "", message: "Memory is exhausted; try again with less." },
  warnings: [],
};

export class LabelError extends Error {
  // report: that of a refused label.
  constructor(report) {
    const { code, field, message, needed } = report.error;
    super(message);
    this.code = code;
    this.field = field;
    if (needed !== undefined) {
      this.needed = needed;
    }
    this.report = report;
  }

  // Of a request that does not come as far as the library.
  static of(code, field, message) {
    return new LabelError({ ok: false, error: { code, field, message }, warnings: [] });
  }

  static outOfMemory() {
    return new LabelError(structuredClone(outOfMemory));
  }
}

// As with the errors of the language itself, it is no member that is listed.
Object.defineProperty(LabelError.prototype, "name", { value: "LabelError", configurable: true, writable: true });
