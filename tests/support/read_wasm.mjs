// Reads grey images from standard input, one after the other: width and height as 32-bit little-endian numbers,
// then width * height bytes. Prints a line for each: the format and the data in hexadecimal, or "-".
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { prepareZXingModule, readBarcodes } from "zxing-wasm/reader";

const wasm = createRequire(import.meta.url).resolve("zxing-wasm/reader/zxing_reader.wasm");
prepareZXingModule({ overrides: { wasmBinary: readFileSync(wasm).buffer } });

const formats = process.argv.slice(2);
const input = readFileSync(0);
const lines = [];
for (let at = 0; at < input.length; ) {
  const width = input.readUInt32LE(at);
  const height = input.readUInt32LE(at + 4);
  const grey = input.subarray(at + 8, at + 8 + width * height);
  at += 8 + width * height;
  const pixels = Uint32Array.from(grey, (value) => 0xff000000 | (value * 0x010101));
  const data = new Uint8ClampedArray(pixels.buffer);
  const [result] = await readBarcodes({ width, height, data, colorSpace: "srgb" }, { formats, maxNumberOfSymbols: 1 });
  lines.push(result?.isValid ? `${result.format} ${Buffer.from(result.bytes).toString("hex")}` : "-");
}
console.log(lines.join("\n"));
