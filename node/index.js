// Labels for Node; see docs/node.md, and index.d.ts for the manual of each function.

import { delivered, outcome, outcomes } from "./lib/label.js";
import { LabelStream } from "./lib/label_stream.js";
import * as native from "./lib/native.js";
import { requestOf, requestText } from "./lib/request.js";

export { LabelError } from "./lib/label_error.js";

export const version = native.version();

export function types() {
  return JSON.parse(native.types());
}

export function label(...words) {
  const [data, mediaType, report] = native.makeLabel(requestText(requestOf(words)));
  return delivered(outcome(data, mediaType, report));
}

export async function labelAsync(...words) {
  const [made] = outcomes(await native.makeLabels(requestText(requestOf(words))), 1);
  return delivered(made);
}

export function labels(requests, options) {
  return new LabelStream(requests, options);
}
