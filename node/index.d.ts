/** Labels for Node: one request in, one picture and a report out. */

/** The names of the symbologies; `types()` tells them with their aliases. */
export type LabelType =
  | "code39"
  | "code93"
  | "code128"
  | "gs1-128"
  | "nw7"
  | "matrix2of5"
  | "nec2of5"
  | "jan8"
  | "jan13"
  | "upca"
  | "upce"
  | "itf"
  | "databar"
  | "databar-limited"
  | "databar-expanded"
  | "yubin"
  | "qr"
  | "datamatrix"
  | "pdf417";

/** Words may be written in upper or lower case: those of other spelling are taken too. */
type Word<Known extends string> = Known | (string & {});

/** What a label is to be. `undefined` and `null` count as absent. */
export interface LabelRequest extends LabelFields {
  /** A name or an alias of a symbology. */
  type: Word<LabelType>;
  /** What is encoded; bytes, for what is no text, are encoded as they are. */
  text?: string | Uint8Array | null;
}

/** What a request may say beside its type and its text. */
export interface LabelFields {
  /** Instead of `text`: bytes in Base64. */
  text_base64?: string | null;
  /** GS1-128: `payment`. DataBar: `omnidirectional`, `stacked`, `stacked-omnidirectional`; Expanded: `row`, `stacked`. */
  form?: Word<"payment" | "omnidirectional" | "stacked" | "stacked-omnidirectional" | "row"> | null;
  /** Default: `png`. */
  format?: Word<"png" | "svg" | "pdf"> | null;
  /** Dots of a module, 1 to 100. */
  module?: number | null;
  /** Dots of the bars; beside `width`, of the picture. */
  height?: number | null;
  /** Dots of the picture, with `height` and without `module`. */
  width?: number | null;
  /** Dots an inch, 50 to 4,800: the size of the picture is physical then. */
  dpi?: number | null;
  /** Millimetres instead of `module`, with `dpi`. */
  module_mm?: number | null;
  /** Millimetres instead of `height`, with `dpi`. */
  height_mm?: number | null;
  /** Modules on every side, 0 to 100; default: `standard`. */
  quiet_zone?: number | Word<"standard"> | null;
  /** Degrees clockwise. */
  rotate?: 0 | 90 | 180 | 270 | null;
  /** `#rgb`, `#rrggbb` or `#rrggbbaa`; default: black. */
  foreground?: string | null;
  /** The same, or `transparent`; default: white. */
  background?: Word<"transparent"> | null;
  /** Whether the human-readable text is shown; default: true. */
  show_text?: boolean | null;
  /** A text of one's own instead. */
  caption?: string | null;
  /** 0.25 to 8: multiplies the size of the text. */
  text_scale?: number | null;
  /** 0.25 to 8: multiplies the distance of the text from the symbol. */
  text_gap?: number | null;
  /** Whether the characters are spread across the symbol; default: true. */
  even_spacing?: boolean | null;
  /** Code 39 and NW-7: whether the text shows the start and stop characters; default: true. */
  show_start_stop?: boolean | null;
  /** JAN and UPC: whether guard bars are longer than the others; default: true. */
  extended_guard?: boolean | null;
  /** Dots added to every bar, -20 to 20. */
  bar_adjust?: number | null;
  /** Whether warnings are errors; default: false. */
  strict?: boolean | null;
  /** Code 128; default: `AUTO`. */
  code_mode?: Word<"AUTO" | "A" | "B" | "C"> | null;
  /** DataBar Expanded, stacked: 1 to 10 segment pairs. */
  pairs_per_row?: number | null;
  /** QR, Data Matrix, PDF417; default: `utf-8`. */
  string_encoding?: Word<"utf-8" | "shift-jis" | "shift_jis"> | null;
  /** QR: 1 to 40. */
  qr_version?: number | null;
  /** QR; default: `M`. */
  error_correction_level?: Word<"L" | "M" | "Q" | "H"> | null;
  /** QR; default: `BYTE`. */
  encode_mode?: Word<"AUTO" | "BYTE" | "NUMERIC" | "ALPHANUMERIC" | "KANJI"> | null;
  /** Data Matrix: `AUTO`, or rows and columns, `10x10` to `144x144`. */
  code_size?: string | null;
  /** Data Matrix; default: `ASCII`. */
  encode_scheme?: Word<"AUTO" | "ASCII" | "C40" | "TEXT" | "X12" | "EDIFACT" | "BASE256"> | null;
  /** PDF417: height to width, 0.001 to 1000. */
  aspect_ratio?: number | null;
  /** PDF417: modules of a row's height, 1 to 1000. */
  y_height?: number | null;
}

/** What stands against a label that is delivered all the same. */
export interface LabelWarning {
  code: string;
  message: string;
}

/** The report of a label that was delivered. */
export interface LabelReport {
  ok: true;
  warnings: LabelWarning[];
  type: LabelType;
  /** What is encoded, with its check digit. */
  text: string;
  /** What stands under the symbol. */
  display_text: string;
  /** Pixels of the picture. */
  width: number;
  height: number;
  /** With `dpi`. */
  width_mm?: number;
  height_mm?: number;
  /** Pixels of a module. */
  module: number;
  /** The symbol without its quiet zone. */
  modules: { columns: number; rows: number };
  /** In modules. */
  quiet_zone: { left: number; right: number; top: number; bottom: number };
  format: "png" | "svg" | "pdf";
  bytes: number;
}

/** A label. It is a value: nothing has to be freed. `report` and `warnings` are read when they are asked for; spreading
 *  and `structuredClone` take `data` and `mediaType` only. */
export interface Label {
  /** The bytes of the picture, in an `ArrayBuffer` of their own. */
  data: Uint8Array;
  mediaType: "image/png" | "image/svg+xml" | "application/pdf";
  readonly report: LabelReport;
  /** Those of the report. */
  readonly warnings: LabelWarning[];
  /** All four, `data` in Base64. */
  toJSON(): { mediaType: string; data: string; report: LabelReport; warnings: LabelWarning[] };
}

/** The report of a label that was refused. */
export interface RefusedReport {
  ok: false;
  error: LabelFault;
  warnings: LabelWarning[];
  type?: LabelType;
}

/** What is wrong with a request. */
export interface LabelFault {
  /** `bad_request`, `unknown_field`, `bad_value`, `unknown_type`, `bad_text`, `too_long`, `too_small`, `too_large`,
   *  `out_of_memory`; with `strict` also the code of a warning. */
  code: string;
  /** The field that is to blame; "" where none is. */
  field: string;
  /** One sentence that says what to do. */
  message: string;
  /** A size that would do. */
  needed?: { width: number; height: number };
}

/** A label that was refused. */
export class LabelError extends Error {
  private constructor();
  readonly name: "LabelError";
  readonly code: string;
  readonly field: string;
  readonly needed?: { width: number; height: number };
  readonly report: RefusedReport;
}

/** A field that requests of a type may have beside `type`, `text` and `text_base64`. */
export interface LabelOption {
  name: Exclude<keyof LabelRequest, "type" | "text" | "text_base64">;
  kind: "string" | "boolean" | "integer" | "number" | "keyword" | "color" | "quiet_zone";
  values?: (string | number)[];
  min?: number;
  max?: number;
  default?: string | number | boolean;
}

/** What the library knows of a symbology. */
export interface TypeDescription {
  name: LabelType;
  title: string;
  number: number;
  aliases: string[];
  two_dimensional: boolean;
  options: LabelOption[];
  /** "yes", "no", or a sentence that says what a reader does not read. */
  readers: { zxing: string; zbar: string; zxing_wasm: string };
}

/** Makes a label, and blocks until it is made, which takes some 10 to 100 microseconds.
 *  @throws LabelError where the label is refused; TypeError, with `code` and `field`, for a value that is neither
 *  string, number nor boolean, and for a request that is no object. */
export function label(request: LabelRequest): Label;
/** The same of a type, a text and the other fields. */
export function label(type: Word<LabelType>, text: string | Uint8Array | null | undefined, fields?: LabelFields): Label;

/** The same on a thread of Node's pool. */
export function labelAsync(request: LabelRequest): Promise<Label>;
export function labelAsync(
  type: Word<LabelType>, text: string | Uint8Array | null | undefined, fields?: LabelFields,
): Promise<Label>;

export interface LabelsOptions {
  /** How many labels are made at a time, 1 to 1024; Node's pool has four threads unless UV_THREADPOOL_SIZE says
   *  otherwise. Default: one for each processor, at most four. */
  workers?: number;
  /** What becomes of a request that is refused: its error is thrown and ends the labels ("raise", the default), or
   *  stands in the place of its label ("yield"). */
  errors?: "raise" | "yield";
}

/** The labels of many requests, in their order. Requests are read as their labels are taken, a few chunks ahead. */
export function labels(
  requests: Iterable<LabelRequest> | AsyncIterable<LabelRequest>,
  options?: LabelsOptions & { errors?: "raise" },
): AsyncIterableIterator<Label>;
export function labels(
  requests: Iterable<LabelRequest> | AsyncIterable<LabelRequest>,
  options: LabelsOptions & { errors: "yield" },
): AsyncIterableIterator<Label | LabelError | (TypeError & LabelFault)>;
export function labels(
  requests: Iterable<LabelRequest> | AsyncIterable<LabelRequest>,
  options?: LabelsOptions,
): AsyncIterableIterator<Label | LabelError | (TypeError & LabelFault)>;

/** The symbologies, in the order of their numbers. */
export function types(): TypeDescription[];

/** The version of the label library. */
export const version: string;
