// Results of the module as labels.

import { LabelError } from "./label_error.js";

// The label, or the error of one that was refused.
export function outcome(data, mediaType, reportText) {
  if (reportText === "") {
    return LabelError.outOfMemory();
  }
  const report = JSON.parse(reportText);
  return data === undefined ? new LabelError(report) : { data, mediaType, report, warnings: report.warnings };
}

export function delivered(result) {
  if (result instanceof LabelError) {
    throw result;
  }
  return result;
}
