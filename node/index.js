// Labels for Node; see docs/node.md, and index.d.ts for the manual of each function.

import { delivered, makeNow, Outcomes } from "./lib/label.js";
import { LabelStream } from "./lib/label_stream.js";
import * as native from "./lib/native.js";
import { requestOf, requestText } from "./lib/request.js";

export { LabelError } from "./lib/label_error.js";

export const version = native.version();

export function types() {
  return JSON.parse(native.types());
}

export function label(...words) {
  return delivered(makeNow(requestOf(words)));
}

const lanes = native.createLanes(native.threads);

export async function labelAsync(...words) {
  const text = requestText(requestOf(words));
  return delivered(new Outcomes(await native.makeLabels(text, lanes), 1).take());
}

export function labels(requests, options) {
  return new LabelStream(requests, options);
}
