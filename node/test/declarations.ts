// What TypeScript makes of the declarations; compiled with --strict, not run. A line below "@ts-expect-error" must not
// compile.
import {
  label, labelAsync, LabelError, labels, types, version,
  type Label, type LabelOption, type LabelReport, type LabelRequest, type LabelType, type TypeDescription,
} from "libbarcode";

const request: LabelRequest = { type: "qr", text: "hello", format: "svg", module: 4, quiet_zone: "standard", rotate: 90 };
const made: Label = label(request);
const short: Label = label("qr", new Uint8Array(2), { module: 4 });
const data: Uint8Array = made.data;
const report: LabelReport = made.report;
const width: number = report.width + (report.width_mm ?? 0);
const codes: string[] = made.warnings.map(({ code }) => code);
const later: Promise<Label> = labelAsync({ type: "ean13", text: new Uint8Array(2), error_correction_level: "q" });
const words: string = version + JSON.stringify(made.toJSON().report.modules.columns);
const listed: TypeDescription[] = types();
const names: LabelType[] = listed.map(({ name }) => name);
const options: LabelOption[] = listed.flatMap((type) => type.options);

export async function stream(requests: AsyncIterable<LabelRequest>): Promise<number> {
  let bytes = 0;
  for await (const { data: picture } of labels([request], { workers: 2 })) {
    bytes += picture.length;
  }
  for await (const result of labels(requests, { errors: "yield" })) {
    if (result instanceof LabelError) {
      const needed: { width: number; height: number } | undefined = result.needed;
      bytes -= needed?.width ?? result.report.error.code.length;
    } else if (result instanceof Error) {
      bytes -= result.field.length;
    } else {
      bytes += result.data.length;
    }
  }
  return bytes;
}

// @ts-expect-error: the third is one object
label("qr", "hello", "svg");
// @ts-expect-error: no such field
label({ type: "qr", text: "a", codeMode: "A" });
// @ts-expect-error: a number
label({ type: "qr", text: "a", module: "4" });
// @ts-expect-error: no such angle
label({ type: "qr", text: "a", rotate: 45 });
// @ts-expect-error: a request has a type
label({ text: "a" });
// @ts-expect-error: requests
labels(["qr"]);
// @ts-expect-error: no such word
labels([request], { errors: "ignore" });
// @ts-expect-error: no synchronous iterable
for (const each of labels([request])) { void each; }
// @ts-expect-error: the library makes them
new LabelError();

export const used = [short, data, width, codes, later, words, names, options];
