// What the package is in a process: its threads, its end, its bytes beside those of other hosts.

import assert from "node:assert/strict";
import { execFileSync, spawn, spawnSync } from "node:child_process";
import { once } from "node:events";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { Worker } from "node:worker_threads";

import { label } from "libbarcode";

const here = fileURLToPath(new URL(".", import.meta.url));

// Status and output of a program with the package; a signal is a failure.
function run(code, environment = {}) {
  const arguments_ = ["--input-type=module", "-e", code];
  const env = { ...process.env, ...environment };
  const { status, signal, stdout, stderr } = spawnSync(process.execPath, arguments_, { cwd: here, encoding: "utf-8", env });
  assert.equal(signal, null, stderr);
  return { status, stdout, stderr };
}

test("worker threads load it too", async () => {
  const code = `
    import { parentPort, workerData } from "node:worker_threads";
    import { label, labelAsync, labels } from "libbarcode";
    const request = { type: "qr", text: "thread " + workerData };
    const same = await labelAsync(request);
    let last;
    for await (const made of labels(Array(200).fill(request), { workers: 2 })) {
      last = made;
    }
    parentPort.postMessage([label(request).data, same.data, last.data]);`;
  const url = new URL(`data:text/javascript,${encodeURIComponent(code.replaceAll('"libbarcode"',
    JSON.stringify(import.meta.resolve("libbarcode"))))}`);
  const answers = await Promise.all(Array.from({ length: 8 }, async (_, i) => {
    const worker = new Worker(url, { workerData: i });
    const [answer] = await once(worker, "message");
    await worker.terminate();
    return answer;
  }));
  answers.forEach((answer, i) => {
    for (const data of answer) {
      assert.deepEqual(data, label({ type: "qr", text: `thread ${i}` }).data);
    }
  });
});

test("threads that draw at the same time do not mix", async () => {
  const code = `
    import { parentPort, workerData } from "node:worker_threads";
    import { label } from ${JSON.stringify(import.meta.resolve("libbarcode"))};
    let wrong = 0;
    for (let i = 0; i < 5000; ++i) {
      const text = "thread " + workerData + ", " + i;
      const { data, report } = label({ type: "code39", text: text.toUpperCase().replace(",", "."), format: "svg", module: 1 + workerData });
      wrong += report.module === 1 + workerData && report.bytes === data.length && report.text.endsWith(String(i)) ? 0 : 1;
    }
    parentPort.postMessage(wrong);`;
  const url = new URL(`data:text/javascript,${encodeURIComponent(code)}`);
  const answers = await Promise.all([0, 1, 2, 3].map(async (i) => (await once(new Worker(url, { workerData: i }), "message"))[0]));
  assert.deepEqual(answers, [0, 0, 0, 0]);
});

test("worker threads that are ended in the middle", async () => {
  const code = `
    import { labelAsync, labels } from ${JSON.stringify(import.meta.resolve("libbarcode"))};
    import { parentPort } from "node:worker_threads";
    function* endless() { for (;;) yield { type: "qr", text: "hello", module: 20 }; }
    for (let i = 0; i < 32; ++i) labelAsync({ type: "qr", text: "hello", module: 40 });
    for await (const made of labels(endless())) parentPort.postMessage(made.data.length);`;
  for (let i = 0; i < 20; ++i) {
    const worker = new Worker(new URL(`data:text/javascript,${encodeURIComponent(code)}`));
    await once(worker, "message");
    assert.equal(await worker.terminate(), 1);
  }
  assert.equal(label({ type: "qr", text: "hello" }).report.ok, true);
});

test("a process may end in the middle of labels()", () => {
  const code = `
    import { labelAsync, labels } from "libbarcode";
    function* endless() { for (;;) yield { type: "code128", text: "hello", module: 9 }; }
    for (let i = 0; i < 64; ++i) labelAsync({ type: "qr", text: "hello", module: 40 });
    let count = 0;
    for await (const made of labels(endless(), { workers: 4 })) {
      if (++count === 10) process.exit(7);
    }`;
  for (let i = 0; i < 10; ++i) {
    const { status, stderr } = run(code);
    assert.equal(status, 7, stderr);
    assert.equal(stderr, "");
  }
});

// What a process has used of processors: how long it took says less, where others use them too.
const sum = ({ user, system }) => user + system;

// The same of this process's children that have ended: in /proc, in hundredths of a second.
function microsecondsOfChildren() {
  const [, times] = /\)(?: \S+){13} (\d+ \d+) /.exec(readFileSync("/proc/self/stat", "utf-8"));
  const [user, system] = times.split(" ").map(Number);
  return 10_000 * (user + system);
}

// A program with a thread for the pool, and a chunk of `count` labels.
const withSlowChunk = (count, code) => run(`
    import { stat } from "node:fs/promises";
    import { label } from "libbarcode";
    import { createLanes, makeLabels } from "./../node_modules/libbarcode/lib/native.js";
    const request = { type: "qr", text: "y".repeat(2000), module: 40 };
    const slow = JSON.stringify(request);
    const sum = ({ user, system }) => user + system;
    const before = process.cpuUsage();
    label(request);
    const ofLabel = sum(process.cpuUsage(before));
    await makeLabels("{}", createLanes(1));
    const chunk = makeLabels(Array(${count}).fill(slow).join("\\n"), createLanes(1));
    ${code}`, { UV_THREADPOOL_SIZE: "1" });

test("others get a thread of the pool in the middle of a chunk", () => {
  const { stdout, stderr } = withSlowChunk(100, `
    let files = 0;
    let isMade = false;
    chunk.then(() => {
      isMade = true;
    });
    while (!isMade) {
      await stat(".");
      ++files;
    }
    console.log(files);`);
  assert.ok(Number(stdout) >= 4, `${stdout}${stderr}`);
});

test("a process that ends does not make what is left of a chunk", () => {
  const before = microsecondsOfChildren();
  const { status, stdout, stderr } = withSlowChunk(400, `
    setTimeout(() => {
      console.log(ofLabel, sum(process.cpuUsage()));
      process.exit(3);
    }, 10);`);
  const all = microsecondsOfChildren() - before;
  assert.equal(status, 3, stderr);
  const [ofLabel, exit] = stdout.split(" ").map(Number);
  assert.ok(all > 0 && all - exit < 100 * ofLabel, `${all - exit} µs; a label takes ${ofLabel} µs`);
});

test("others get a thread of the pool before all streams that wait for one", () => {
  const { stdout, stderr } = run(`
    import { stat } from "node:fs/promises";
    import { createLanes, makeLabels } from "./../node_modules/libbarcode/lib/native.js";
    const request = JSON.stringify({ type: "qr", text: "y".repeat(2000), module: 20 });
    let made = 0;
    const all = Array.from({ length: 64 }, () => makeLabels(request, createLanes(1)).then(() => ++made));
    await stat(".");
    console.log(made < 32);
    await Promise.all(all);
    console.log(made);`, { UV_THREADPOOL_SIZE: "2" });
  assert.equal(stdout, "true\n64\n", stderr);
});

test("a worker thread that is ended does not make what waits", async () => {
  const request = { type: "qr", text: "y".repeat(2000), module: 40 };
  const before = process.cpuUsage();
  label(request);
  const ofLabel = sum(process.cpuUsage(before));
  const native = new URL("./lib/native.js", import.meta.resolve("libbarcode"));
  const code = `
    import { parentPort } from "node:worker_threads";
    import { createLanes, makeLabels } from ${JSON.stringify(native)};
    const slow = ${JSON.stringify(JSON.stringify(request))};
    await makeLabels(slow, createLanes(1));
    for (let i = 0; i < 200; ++i) makeLabels(slow + "\\n" + slow, createLanes(1));
    parentPort.postMessage("begun");`;
  const worker = new Worker(new URL(`data:text/javascript,${encodeURIComponent(code)}`));
  await once(worker, "message");
  const end = process.cpuUsage();
  assert.equal(await worker.terminate(), 1);
  const ofEnd = sum(process.cpuUsage(end));
  assert.ok(ofEnd < 100 * ofLabel, `${ofEnd} µs; a label takes ${ofLabel} µs`);
});

test("an error that nobody catches ends a process as usual", () => {
  const { status, stderr } = run(`
    import { labels } from "libbarcode";
    for await (const made of labels([{ type: "qr", text: "a" }, { type: "qr", text: "" }])) console.log(made.mediaType);`);
  assert.equal(status, 1);
  assert.match(stderr, /LabelError: The text is empty; give at least one character\./);
});

test("a process that has begun labels() and forgets it ends by itself", () => {
  const { status, stdout } = run(`
    import { labels } from "libbarcode";
    const made = labels([{ type: "qr", text: "a" }, { type: "qr", text: "b" }]);
    console.log((await made.next()).value.report.text);`);
  assert.equal(status, 0);
  assert.equal(stdout, "a\n");
});

test("nothing is written to the streams", () => {
  const { stdout, stderr } = run(`
    import { label } from "libbarcode";
    label({ type: "databar", text: "490123456789" });
    try { label({ type: "jan8", text: "x" }); } catch {}`);
  assert.deepEqual([stdout, stderr], ["", ""]);
});

// Node has a zlib of its own, whose compression is another.
const program = process.env.BARCODE_PROGRAM;
test("the same request makes the same bytes as in mkbarcode", { skip: program === undefined }, () => {
  for (const type of ["code128", "qr", "databar-expanded", "datamatrix"]) {
    for (const format of ["png", "svg", "pdf"]) {
      const text = type === "databar-expanded" ? "(01)04912345678904" : "Pallet 771204";
      const made = execFileSync(program, [type, text, "--format", format, "-o", "-"], { stdio: ["ignore", "pipe", "ignore"] });
      assert.deepEqual(Buffer.from(label({ type, text, format }).data), made, `${type} ${format}`);
    }
  }
});

test("a process that is killed leaves nothing that hangs", async () => {
  const code = `
    import { labels } from "libbarcode";
    function* endless() { for (;;) yield { type: "qr", text: "hello", module: 20 }; }
    for await (const made of labels(endless())) process.stdout.write(".");`;
  const child = spawn(process.execPath, ["--input-type=module", "-e", code], { cwd: here, stdio: ["ignore", "pipe", "pipe"] });
  await once(child.stdout, "data");
  child.kill("SIGTERM");
  const [, signal] = await once(child, "exit");
  assert.equal(signal, "SIGTERM");
});

test("exhausted memory is a LabelError", () => {
  const { status, stdout, stderr } = run(`
    import { execFileSync } from "node:child_process";
    import { readFileSync } from "node:fs";
    import { LabelError } from "libbarcode";
    import { outcomeNow, Outcomes } from "./../node_modules/libbarcode/lib/label.js";
    import * as native from "./../node_modules/libbarcode/lib/native.js";
    const request = JSON.stringify({ type: "qr", text: "a", caption: "a".repeat(300_000_000) });
    await native.makeLabels("{}", native.createLanes(1)); // the threads of the pool
    const kilobytes = Number(/VmSize:\\s+(\\d+)/.exec(readFileSync("/proc/self/status", "utf-8"))[1]);
    execFileSync("prlimit", ["--pid", process.pid, "--as=" + (kilobytes * 1024 + 200_000_000)]);
    const errors = [outcomeNow(native.makeLabel(request)), new Outcomes(await native.makeLabels(request, native.createLanes(1)), 1).take()];
    console.log(errors.map((error) => error instanceof LabelError && error.code).join());`);
  assert.equal(status, 0, stderr);
  assert.equal(stdout, "out_of_memory,out_of_memory\n");
});
