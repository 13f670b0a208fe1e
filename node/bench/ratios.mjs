// What a label costs in Node beside C, and what a second worker brings, in one run.
//
//     node build/release/node/bench/ratios.mjs [ROUNDS]
//
// Each figure is the best of many short rounds that take turns, so that the ratios hold on a busy machine. Node's
// processor time is that of the whole process, with its collector and its compiler.

import { createRequire } from "node:module";

import { label, labels } from "libbarcode";

const { loopSeconds } = createRequire(import.meta.url)("./c_loop.node");

const rounds = Number(process.argv[2] ?? 40);
const roundSeconds = 0.02;

const requests = [
  { type: "code128", text: "Pallet 771204" },
  { type: "code128", text: "Pallet 771204", format: "svg" },
  { type: "code128", text: "Pallet 771204", format: "pdf" },
  { type: "jan13", text: "490123456789" },
  { type: "qr", text: "https://example.com/" },
  { type: "qr", text: "https://example.com/", format: "svg" },
  { type: "datamatrix", text: "LOT42-20261122" },
  { type: "datamatrix", text: "LOT42-20261122", format: "svg" },
  { type: "pdf417", text: "LOT42-20261122, pallet 771204" },
  { type: "code39", text: "ABC", format: "svg", show_text: false },
];

function nameOf({ type, format = "png", show_text: hasText = true }) {
  return `${type} ${format}${hasText ? "" : ", no text"}`;
}

function nodeSeconds(request, count) {
  const begin = process.cpuUsage();
  for (let i = 0; i < count; ++i) {
    if (label(request).data.length === 0) {
      throw new Error("a label without a picture");
    }
  }
  const { user, system } = process.cpuUsage(begin);
  return (user + system) * 1e-6;
}

function costRow(request) {
  const text = JSON.stringify(request);
  const trial = loopSeconds(text, 100);
  if (trial < 0) {
    throw new Error(`refused: ${text}`);
  }
  const count = Math.max(10, Math.floor((roundSeconds * 100) / trial));
  let inC = Infinity;
  let inNode = Infinity;
  for (let round = 0; round < rounds; ++round) {
    inC = Math.min(inC, loopSeconds(text, count) / count);
    inNode = Math.min(inNode, nodeSeconds(request, count) / count);
  }
  const micro = (seconds) => (seconds * 1e6).toFixed(2);
  return `| ${nameOf(request)} | ${micro(inC)} | ${micro(inNode)} | ${(inNode / inC).toFixed(2)} |`;
}

function* numbered(request, count) {
  for (let number = 0; number < count; ++number) {
    yield { ...request, text: String(number).padStart(12, "0") };
  }
}

async function streamRate(request, count, workers) {
  const begin = performance.now();
  let made = 0;
  for await (const { data } of labels(numbered(request, count), { workers })) {
    made += data.length > 0 ? 1 : 0;
  }
  if (made !== count) {
    throw new Error(`${made} labels of ${count}`);
  }
  return (1000 * count) / (performance.now() - begin);
}

async function workerRow(request, count) {
  const best = { 1: 0, 2: 0 };
  for (let round = 0; round < rounds; ++round) {
    for (const workers of [1, 2]) {
      best[workers] = Math.max(best[workers], await streamRate(request, count, workers));
    }
  }
  return `| ${nameOf(request)} | ${best[1].toFixed(0)} | ${best[2].toFixed(0)} | ${(best[2] / best[1]).toFixed(2)} |`;
}

console.log("| Label | C, us | Node, us | ratio |\n|---|---|---|---|");
for (const request of requests) {
  console.log(costRow(request));
}
console.log("\n| labels() | 1 worker, labels/s | 2 workers, labels/s | ratio |\n|---|---|---|---|");
console.log(await workerRow({ type: "code128" }, 2000));
console.log(await workerRow({ type: "jan13" }, 1000));
console.log(await workerRow({ type: "qr" }, 4000));
console.log(await workerRow({ type: "code128", dpi: 300, module_mm: 0.5, height_mm: 30 }, 200));
