// The examples of docs/node.md and README.md run as they stand, and print what stands behind them; an ellipsis is any
// text of a line.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { cpSync, mkdtempSync, readFileSync, rmSync, symlinkSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";

const packageFolder = fileURLToPath(new URL(".", import.meta.resolve("libbarcode")));

function examplesOf(page) {
  const blocks = [...readFileSync(page, "utf-8").matchAll(/^```(\w+)\n(.*?)^```$/gms)];
  return blocks.flatMap(([, kind, code], index) => {
    const [, nextKind, nextText] = blocks[index + 1] ?? [];
    return kind === "js" ? [{ code, output: nextKind === "text" ? nextText : "" }] : [];
  });
}

function patternOf(output) {
  const parts = output.split("…").map((part) => part.replace(/[.*+?^${}()|[\]\\]/g, "\\$&"));
  return new RegExp(`^${parts.join(".*")}$`);
}

function runIn(folder, code) {
  writeFileSync(join(folder, "example.mjs"), code);
  return spawnSync(process.execPath, ["example.mjs"], { cwd: folder, encoding: "utf-8" });
}

for (const [page, count] of [[process.env.BARCODE_NODE_MANUAL, 5], [join(packageFolder, "README.md"), 1]]) {
  test(`the examples of ${page}`, { skip: page === undefined }, () => {
    const examples = examplesOf(page);
    assert.equal(examples.length, count);
    const folder = mkdtempSync(join(tmpdir(), "libbarcode-manual-"));
    try {
      symlinkSync(join(packageFolder, ".."), join(folder, "node_modules"));
      for (const { code, output } of examples) {
        const { status, stdout, stderr } = runIn(folder, code);
        assert.equal(status, 0, stderr);
        assert.match(stdout, patternOf(output));
      }
    } finally {
      rmSync(folder, { recursive: true });
    }
  });
}

test("the server of the package answers", async () => {
  const folder = mkdtempSync(join(tmpdir(), "libbarcode-server-"));
  try {
    cpSync(join(packageFolder, "examples", "server.mjs"), join(folder, "server.mjs"));
    symlinkSync(join(packageFolder, ".."), join(folder, "node_modules"));
    const { stdout, status, stderr } = runIn(folder, `
      import { spawn } from "node:child_process";
      const server = spawn(process.execPath, ["server.mjs", "0"]);
      server.stdout.once("data", async (line) => {
        const answer = await fetch(String(line).trim());
        console.log(answer.status, answer.headers.get("content-type"), (await answer.arrayBuffer()).byteLength > 100);
        server.kill();
      });`);
    assert.equal(status, 0, stderr);
    assert.equal(stdout, "200 image/png true\n");
  } finally {
    rmSync(folder, { recursive: true });
  }
});
