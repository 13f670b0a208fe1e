// Results of the module as labels.

import { Buffer } from "node:buffer";
import { inspect } from "node:util";

import { LabelError } from "./label_error.js";
import * as native from "./native.js";
import { putRequest } from "./request.js";

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

// A label has an answer, its media type and the report behind it, which is a part of `text`, and a picture, empty where
// the label was refused and undefined where memory was exhausted. The label, or the error.
function outcome(text, begin, end, picture) {
  if (picture === undefined || begin === end) {
    return LabelError.outOfMemory();
  }
  const reportBegin = text.indexOf("{", begin);
  const report = text.slice(reportBegin, end);
  return picture.length > 0 ? new Label(picture, text.slice(begin, reportBegin), report) : new LabelError(JSON.parse(report));
}

// Bytes of one's own, of pictures that lie among others; undefined when memory is exhausted.
function copied(bytes, begin, end) {
  try {
    return bytes.slice(begin, end);
  } catch {
    return undefined;
  }
}

// Where a request lies as makeLabel of the module is called, and then the length of the picture, of 32 bits, and the
// picture.
const scratch = new Uint8Array(native.scratch);
const pictureLength = new Uint32Array(native.scratch, 0, 1);
const pictureBegin = 4;

// The outcome of what makeLabel of the module has returned, before it is called again.
export function outcomeNow(made) {
  if (typeof made === "string") {
    return outcome(made, 0, made.length, copied(scratch, pictureBegin, pictureBegin + pictureLength[0]));
  }
  const [answer, picture] = made;
  return outcome(answer, 0, answer.length, picture);
}

export function makeNow(request) {
  return outcomeNow(native.makeLabel(putRequest(scratch, 0, request)));
}

// The outcomes of what makeLabels of the module has returned for `length` requests, one after the other. Where memory
// was exhausted it has stopped.
export class Outcomes {
  #answers;
  #answersBegin = 0;
  #bytes;
  #begin;
  #lengths;
  #taken = 0;

  constructor([answers, , pictures], length) {
    const [count] = new Uint32Array(pictures, 0, 1);
    this.length = length;
    this.#answers = answers;
    this.#lengths = new Uint32Array(pictures, 4, count);
    this.#bytes = new Uint8Array(pictures);
    this.#begin = 4 * (count + 1);
  }

  take() {
    if (this.#taken === this.#lengths.length) {
      return LabelError.outOfMemory();
    }
    const begin = this.#begin;
    const answerBegin = this.#answersBegin;
    const answerEnd = this.#answers.indexOf("\n", answerBegin);
    this.#begin += this.#lengths[this.#taken];
    this.#answersBegin = answerEnd + 1;
    ++this.#taken;
    return outcome(this.#answers, answerBegin, answerEnd, copied(this.#bytes, begin, this.#begin));
  }
}

export function delivered(result) {
  if (result instanceof LabelError) {
    throw result;
  }
  return result;
}
