import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { Readable } from "node:stream";
import { setTimeout as delay } from "node:timers/promises";
import { test } from "node:test";

import { Outcomes } from "../node_modules/libbarcode/lib/label.js";
import { createLanes, makeLabels, stopLanes } from "../node_modules/libbarcode/lib/native.js";
import { label, labels, LabelError } from "libbarcode";

function* numbered(count, request = { type: "code128" }) {
  for (let i = 0; i < count; ++i) {
    yield { ...request, text: `number ${i}` };
  }
}

async function* asynchronously(requests) {
  for (const request of requests) {
    await undefined;
    yield request;
  }
}

async function textsOf(made) {
  const texts = [];
  for await (const { report, data } of made) {
    assert.equal(data.length, report.bytes);
    texts.push(report.text);
  }
  return texts;
}

const expected = (count) => Array.from({ length: count }, (_, i) => `number ${i}`);
const bad = { type: "jan8", text: "x" };

// Requests that remember how far they were read, and whether they were closed.
function watched(requests) {
  const iterator = requests[Symbol.iterator]();
  const source = { read: 0, closed: 0 };
  source[Symbol.iterator] = () => ({
    next: () => {
      ++source.read;
      return iterator.next();
    },
    return: () => {
      ++source.closed;
      return { done: true };
    },
  });
  return source;
}

for (const workers of [undefined, 1, 2, 7]) {
  test(`labels in order, ${workers ?? "default"} workers`, async () => {
    for (const count of [0, 1, 2, 63, 64, 65, 1000]) {
      assert.deepEqual(await textsOf(labels(numbered(count), { workers })), expected(count));
      assert.deepEqual(await textsOf(labels(asynchronously(numbered(count)), { workers })), expected(count));
    }
    assert.deepEqual(await textsOf(labels([...numbered(10)], { workers })), expected(10));
  });
}

test("labels of very different cost keep their order", async () => {
  const requests = Array.from({ length: 300 }, (_, i) =>
    i % 7 === 0 ? { type: "qr", text: `${i}`, module: 60 } : { type: "code39", text: `${i}`, format: "svg" });
  const texts = await textsOf(labels(requests, { workers: 3 }));
  assert.deepEqual(texts, requests.map(({ text }) => text));
});

test("labels keep their bytes, in an ArrayBuffer of their own each", async () => {
  const requests = Array.from({ length: 600 }, (_, i) => ({ type: "qr", text: `number ${i}`, format: i % 2 ? "svg" : "png" }));
  // Larger than the others of a chunk together.
  const large = { type: "qr", text: "y".repeat(2000), format: "svg" };
  requests.splice(400, 0, large, { ...large, module: 2 }, large);
  const made = [];
  for await (const result of labels(requests, { workers: 2 })) {
    made.push(result);
  }
  assert.equal(new Set(made.map(({ data }) => data.buffer)).size, requests.length);
  for (const [i, { data, mediaType, report }] of made.entries()) {
    const same = label(requests[i]);
    assert.equal(data.buffer.byteLength, data.length);
    assert.deepEqual(data, same.data);
    assert.equal(mediaType, same.mediaType);
    assert.deepEqual(report, same.report);
  }
});

test("several at a time do not mix", async () => {
  const streams = Array.from({ length: 8 }, async (_, k) => {
    const texts = [];
    for await (const { data, report } of labels(numbered(300, { type: "code128", module: 1 + k }), { workers: 1 + (k % 3) })) {
      assert.equal(report.module, 1 + k);
      assert.equal(data.length, report.bytes);
      texts.push(report.text);
    }
    return texts;
  });
  for (const texts of await Promise.all(streams)) {
    assert.deepEqual(texts, expected(300));
  }
});

test("others get threads of the pool in the meantime", async () => {
  let isOver = false;
  const end = performance.now() + 60_000; // without which nobody would be told that they get none
  const drawing = [1, 2].map(async () => {
    for await (const { data } of labels(numbered(Infinity), { workers: 4 })) {
      assert.ok(data.length > 0);
      if (isOver || performance.now() > end) {
        break;
      }
    }
  });
  await delay(100);
  const reading = Array.from({ length: 5 }, () => readFile(new URL(import.meta.url)));
  const over = Promise.all(drawing).then(() => "over");
  assert.notEqual(await Promise.race([Promise.all(reading), over]), "over");
  isOver = true;
  await over;
});

test("labels that nobody wants any more are not made", async () => {
  const lanes = createLanes(1);
  const slow = JSON.stringify({ type: "qr", text: "y".repeat(2000), module: 40 });
  // However late it is stopped: the thread lets go after a while, and goes on when the event loop has had its turn.
  const all = Array.from({ length: 200 }, () => makeLabels(slow, lanes));
  stopLanes(lanes);
  const made = (await Promise.all(all)).filter(([answer]) => answer !== "");
  assert.ok(made.length <= 50, `${made.length} are made`);
});

test("labels that nobody wants any more are not made, in the middle of a chunk either", async () => {
  const lanes = createLanes(1);
  const slow = JSON.stringify({ type: "qr", text: "y".repeat(2000), module: 40 });
  const first = makeLabels("{}", lanes);
  const others = makeLabels(Array(64).fill(slow).join("\n"), lanes);
  await first;
  await delay(1);
  stopLanes(lanes);
  const [answers] = await others;
  assert.ok(answers.split("\n").length <= 32, answers);
});

test("a chunk that takes long is left in the middle, and goes on", async () => {
  const lanes = createLanes(3);
  const requests = [...numbered(200, { type: "code39", format: "svg" })].map((request, i) => ({ ...request, text: `${i}`,
    ...(i % 10 === 0 ? { type: "qr", format: "png", module: 40 } : {}) }));
  const chunks = Array.from({ length: 8 }, () => makeLabels(requests.map((request) => JSON.stringify(request)).join("\n"), lanes,
    new ArrayBuffer(1 << 16)));
  for (const made of await Promise.all(chunks)) {
    const outcomes = new Outcomes(made, requests.length);
    for (const request of requests) {
      const { data, report } = outcomes.take();
      assert.equal(report.text, request.text);
      assert.equal(report.bytes, data.length);
    }
    assert.ok(made[1] > 0);
  }
});

test("an error is raised in its place and ends the labels", async () => {
  const source = watched([...numbered(100), bad, ...numbered(100000)]);
  const made = labels(source, { workers: 2 });
  const texts = [];
  await assert.rejects(async () => {
    for await (const { report } of made) {
      texts.push(report.text);
    }
  }, (error) => error instanceof LabelError && error.code === "bad_text" && error.field === "text");
  assert.deepEqual(texts, expected(100));
  assert.deepEqual(await made.next(), { value: undefined, done: true });
  assert.equal(source.closed, 1);
  assert.ok(source.read < 1000, `${source.read} were read`);
});

test("errors stand in their places", async () => {
  const requests = [...numbered(5), bad, { type: "qr", text: "\ud800" }, null, { type: "qr", text: {} }, ...numbered(5)];
  const made = [];
  for await (const result of labels(requests, { errors: "yield" })) {
    made.push(result);
  }
  assert.deepEqual(made.map((result) => result.code), [...Array(5), "bad_text", "bad_text", "bad_request", "bad_value",
    ...Array(5)]);
  assert.ok(made[5] instanceof LabelError && made[6] instanceof LabelError);
  assert.ok(made[7] instanceof TypeError && made[8] instanceof TypeError);
});

test("refusals cost no chunk of labels its size", async () => {
  const workers = 2;
  let ahead = 0;
  // A chunk that had to wait for a processor may be followed by small ones.
  for (let trial = 0; trial < 20 && ahead <= 4 * workers; ++trial) {
    const source = watched((function* () {
      yield* numbered(1000, { type: "code39", format: "svg", show_text: false });
      yield* Array(2000).fill(null);
    })());
    const made = labels(source, { workers, errors: "yield" });
    let taken = 0;
    while (taken < 2000) {
      const { value } = await made.next();
      ++taken;
      assert.equal(value instanceof TypeError, taken > 1000);
    }
    await delay(10);
    ahead = source.read - taken;
    await made.return();
  }
  assert.ok(ahead > 4 * workers, `${ahead} were read ahead`);
});

test("refusals need no thread", async () => {
  const slow = JSON.stringify({ type: "qr", text: "y".repeat(2000), module: 40 });
  const threads = Number(process.env.UV_THREADPOOL_SIZE ?? 4);
  let before = Infinity;
  // On a busy machine this thread may be the one that waits.
  for (let trial = 0; trial < 20 && before > 0; ++trial) {
    let made = 0;
    const all = Array.from({ length: threads }, () => makeLabels(slow, createLanes(1)).then(() => ++made));
    for await (const result of labels([null, null, null], { errors: "yield" })) {
      assert.ok(result instanceof TypeError);
    }
    before = made;
    await Promise.all(all);
  }
  assert.equal(before, 0);
});

test("without memory for a room labels are made all the same", async () => {
  const { ArrayBuffer } = globalThis;
  const made = labels(numbered(200));
  globalThis.ArrayBuffer = function () {
    throw new RangeError("Array buffer allocation failed");
  };
  try {
    assert.deepEqual(await textsOf(made), expected(200));
  } finally {
    globalThis.ArrayBuffer = ArrayBuffer;
  }
});

test("requests are told apart from what they become later", async () => {
  const request = { type: "qr", text: "" };
  function* changing() {
    for (let i = 0; i < 200; ++i) {
      request.text = `number ${i}`;
      yield request;
    }
  }
  assert.deepEqual(await textsOf(labels(changing())), expected(200));
});

test("reading does not run ahead of a slow reader", async () => {
  for (const asynchronous of [false, true]) {
    const source = watched(numbered(Infinity));
    const made = labels(asynchronous ? asynchronously(source) : source, { workers: 2 });
    assert.equal(source.read, 0);
    for (let i = 0; i < 2000; ++i) {
      await made.next();
    }
    await delay(50);
    assert.ok(source.read - 2000 <= 2 * 2 * 64 + 1, `${source.read - 2000} were read ahead`);
    await made.return();
    assert.equal(source.closed, 1);
  }
});

test("memory does not grow with the labels", async () => {
  let most = 0;
  let count = 0;
  // 600 MB in all.
  const captioned = { type: "code128", format: "svg", caption: "@".repeat(80), module: 40, height: 200, text_scale: 0.25 };
  for await (const { data } of labels(numbered(30000, captioned))) {
    assert.ok(data.length > 20_000);
    if (++count % 1000 === 0) {
      most = Math.max(most, process.memoryUsage().rss);
    }
  }
  assert.equal(count, 30000);
  assert.ok(most < 400e6, `${most} bytes`);
});

test("leaving the loop closes the source", async () => {
  const source = watched(numbered(Infinity));
  for await (const { report } of labels(source)) {
    if (report.text === "number 3") {
      break;
    }
  }
  assert.equal(source.closed, 1);
  let isClosed = false;
  async function* endless() {
    try {
      for (;;) {
        yield { type: "qr", text: "a" };
      }
    } finally {
      isClosed = true;
    }
  }
  for await (const { report } of labels(endless())) {
    assert.equal(report.text, "a");
    break;
  }
  await delay(20);
  assert.ok(isClosed);
});

test("return() ends at once though the source is silent", async () => {
  const source = { [Symbol.asyncIterator]: () => ({ next: () => new Promise(() => {}), return: () => new Promise(() => {}) }) };
  const made = labels(source);
  const waiting = [made.next(), made.next()];
  assert.deepEqual(await made.return("over"), { value: "over", done: true });
  for (const call of waiting) {
    assert.deepEqual(await call, { value: undefined, done: true });
  }
  assert.deepEqual(await made.next(), { value: undefined, done: true });
  await assert.rejects(made.throw(new Error("mine")), /mine/);
});

test("labels come as requests come", async () => {
  let take;
  async function* slow() {
    for (let i = 0; i < 5; ++i) {
      const isTaken = new Promise((resolve) => {
        take = resolve;
      });
      yield { type: "qr", text: `number ${i}` };
      await isTaken; // before the label of this one there is no other
    }
    await new Promise(() => {});
  }
  const made = labels(slow());
  for (let i = 0; i < 5; ++i) {
    assert.equal((await made.next()).value.report.text, `number ${i}`);
    take();
  }
  await made.return();
});

test("calls of next() at the same time are answered in order", async () => {
  const made = labels(numbered(20));
  const results = await Promise.all(Array.from({ length: 25 }, () => made.next()));
  assert.deepEqual(results.filter(({ done }) => !done).map(({ value }) => value.report.text), expected(20));
  assert.equal(results.filter(({ done }) => done).length, 5);
});

test("what the source throws comes after the labels before it", async () => {
  const thrown = new RangeError("mine");
  function* failing() {
    yield* numbered(150);
    throw thrown;
  }
  for (const source of [failing(), asynchronously(failing())]) {
    for (const errors of ["raise", "yield"]) {
      const made = labels(errors === "raise" ? source : failing(), { errors });
      const texts = [];
      await assert.rejects(async () => {
        for await (const { report } of made) {
          texts.push(report.text);
        }
      }, (error) => error === thrown);
      assert.deepEqual(texts, expected(150));
      assert.deepEqual(await made.next(), { value: undefined, done: true });
    }
  }
});

test("what a request throws ends the labels, and closes the source", async () => {
  const thrown = new RangeError("mine");
  const source = watched([...numbered(3), { type: "qr", get text() { throw thrown; } }, ...numbered(1000)]);
  const made = labels(source, { errors: "yield" });
  const texts = [];
  await assert.rejects(async () => {
    for await (const { report } of made) {
      texts.push(report.text);
    }
  }, (error) => error === thrown);
  assert.deepEqual(texts, expected(3));
  assert.equal(source.closed, 1);
});

test("hostile sources", async () => {
  const broken = [
    { [Symbol.iterator]: () => ({}) },
    { [Symbol.iterator]: () => ({ next: () => undefined }) },
    { [Symbol.asyncIterator]: () => ({ next: () => 42 }) },
    { [Symbol.asyncIterator]: () => ({ next: () => Promise.reject(new TypeError("mine")) }) },
  ];
  for (const source of broken) {
    await assert.rejects(labels(source).next(), TypeError);
  }
  assert.throws(() => labels({ [Symbol.iterator]: () => { throw new RangeError("mine"); } }), /mine/);
});

test("wrong arguments", () => {
  for (const source of [undefined, null, 42, "requests", {}, Symbol("a"), () => {}]) {
    assert.throws(() => labels(source), TypeError);
  }
  for (const workers of [0, -1, 1.5, NaN, Infinity, 1025]) {
    assert.throws(() => labels([], { workers }), RangeError);
  }
  for (const options of [{ workers: "2" }, { workers: 2n }, { errors: "ignore" }, { errors: null }, null, 4, "raise"]) {
    assert.throws(() => labels([], options), TypeError);
  }
});

test("a stream of Node takes them", async () => {
  const texts = [];
  for await (const { report } of Readable.from(labels(numbered(300)))) {
    texts.push(report.text);
  }
  assert.deepEqual(texts, expected(300));
});

test("a source may call the labels that read it", async () => {
  for (const when of [1, 3, 50, 99]) {
    const inner = [];
    const made = labels({
      i: 0,
      [Symbol.iterator]() {
        return this;
      },
      next() {
        const i = this.i++;
        if (i === when) {
          inner.push(made.next(), made.next());
        }
        return { value: { type: "code128", text: `number ${i}` }, done: i === 100 };
      },
    });
    const texts = [];
    for await (const { report } of made) {
      texts.push(report.text);
    }
    const others = (await Promise.all(inner)).map(({ value }) => value.report.text);
    assert.equal(others.length, 2);
    const order = (all) => all.map((text) => Number(text.slice(7)));
    assert.deepEqual(order(texts), order(texts).sort((a, b) => a - b));
    assert.deepEqual(order([...texts, ...others]).sort((a, b) => a - b), order(expected(100)));
  }
});

test("a source may end the labels that read it", async () => {
  let closed = 0;
  let ended;
  const made = labels((function* () {
    try {
      yield { type: "qr", text: "a" };
      ended = made.return("over");
      yield* numbered(10);
    } finally {
      ++closed;
    }
  })());
  let count = 0;
  for await (const { report } of made) {
    assert.equal(report.text, "a");
    ++count;
  }
  assert.ok(count <= 1);
  assert.deepEqual(await ended, { value: "over", done: true });
  assert.equal(closed, 1);
});

test("a source of promises may end the labels that read it", async () => {
  let closed = 0;
  let ended;
  const made = labels((function* () {
    try {
      yield Promise.resolve({ type: "qr", text: "a" });
      ended = made.return("over");
      for (;;) {
        yield Promise.resolve({ type: "qr", text: "b" });
      }
    } finally {
      ++closed;
    }
  })());
  for await (const { report } of made) {
    assert.equal(report.text, "a");
  }
  assert.deepEqual(await ended, { value: "over", done: true });
  assert.equal(closed, 1);
});

test("promises of requests are awaited", async () => {
  const requests = [...numbered(100)].map((request, i) => (i % 3 === 1 ? delay(i % 5, request) : request));
  assert.deepEqual(await textsOf(labels(requests)), expected(100));
  const rejected = Promise.reject(new RangeError("mine"));
  rejected.catch(() => {}); // until it is reached
  const failing = [...numbered(5), rejected];
  const texts = [];
  await assert.rejects(async () => {
    for await (const { report } of labels(failing)) {
      texts.push(report.text);
    }
  }, /mine/);
  assert.deepEqual(texts, expected(5));
});

test("a source that is slow lets go of the thread", async () => {
  let turns = 0;
  let read = 0; // in this turn of the event loop
  let most = 0;
  let isOver = false;
  setImmediate(function turn() {
    ++turns;
    read = 0;
    if (!isOver) {
      setImmediate(turn);
    }
  });
  function* slow() {
    for (const request of numbered(200)) {
      most = Math.max(most, ++read);
      const end = performance.now() + 10;
      while (performance.now() < end);
      yield request;
    }
  }
  assert.deepEqual(await textsOf(labels(slow(), { workers: 4 })), expected(200));
  isOver = true;
  assert.ok(most <= 4, `${most} requests in one of ${turns} turns of the event loop`);
});

test("long requests do not pile up", async () => {
  const long = "\u0001".repeat(1 << 20);
  let mostAhead = 0;
  let read = 0;
  let taken = 0;
  function* requests() {
    yield* numbered(3000);
    for (let i = 0; i < 1000; ++i) {
      mostAhead = Math.max(mostAhead, ++read - taken);
      yield { type: "qr", text: long, caption: long, foreground: long };
    }
  }
  for await (const result of labels(requests(), { workers: 1, errors: "yield" })) {
    taken += result instanceof LabelError ? 1 : 0;
  }
  assert.equal(taken, 1000);
  assert.ok(mostAhead <= 8, `${mostAhead} were read ahead`);
});

test("a reader that is slow lets go of the thread", async () => {
  const streams = 2;
  let turns = 0;
  let given = 0; // in this turn of the event loop
  let most = 0;
  let isOver = false;
  setImmediate(function turn() {
    ++turns;
    given = 0;
    if (!isOver) {
      setImmediate(turn);
    }
  });
  const taken = await Promise.all(Array.from({ length: streams }, async () => {
    let count = 0;
    for await (const { data } of labels(numbered(1000, { type: "code128", format: "svg" }), { workers: 4 })) {
      assert.ok(data.length > 0);
      const end = performance.now() + 1;
      while (performance.now() < end);
      ++count;
      most = Math.max(most, ++given);
    }
    return count;
  }));
  isOver = true;
  assert.deepEqual(taken, Array(streams).fill(1000));
  assert.ok(most <= 32, `${most} labels in one of ${turns} turns of the event loop`);
});
