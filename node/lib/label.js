// Results of the module as labels.

import { Buffer } from "node:buffer";
import { inspect } from "node:util";

import { LabelError } from "./label_error.js";

// Parsing a report takes as long as drawing a small symbol: it waits until somebody looks.
export class Label {
  #reportText;
  #report;

  constructor(data, mediaType, reportText) {
    this.data = data;
    this.mediaType = mediaType;
    this.#reportText = reportText;
  }

  get report() {
    if (this.#report === undefined) {
      this.#report = JSON.parse(this.#reportText);
      this.#reportText = undefined;
    }
    return this.#report;
  }

  get warnings() {
    return this.report.warnings;
  }

  toJSON() {
    const { buffer, byteOffset, length } = this.data;
    const data = Buffer.from(buffer, byteOffset, length).toString("base64");
    return { mediaType: this.mediaType, data, report: this.report, warnings: this.warnings };
  }

  [inspect.custom](depth, options, inspectValue) {
    const { data, mediaType, report, warnings } = this;
    return `Label ${inspectValue({ data, mediaType, report, warnings }, options)}`;
  }
}

// The label, or the error of one that was refused.
export function outcome(data, mediaType, reportText) {
  if (data !== undefined) {
    return new Label(data, mediaType, reportText);
  }
  return reportText === "" ? LabelError.outOfMemory() : new LabelError(JSON.parse(reportText));
}

// The outcomes of what makeLabels of the module has returned for so many requests: where memory was exhausted it has
// stopped.
export function outcomes([answers, , ...pictures], count) {
  const lines = answers.split("\n");
  const results = pictures.map((data, index) => {
    const line = lines[index];
    const mediaTypeLength = line.indexOf("{");
    return outcome(data, line.slice(0, mediaTypeLength), line.slice(mediaTypeLength));
  });
  while (results.length < count) {
    results.push(LabelError.outOfMemory());
  }
  return results;
}

export function delivered(result) {
  if (result instanceof LabelError) {
    throw result;
  }
  return result;
}
