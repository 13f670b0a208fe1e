import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { test } from "node:test";
import { inspect } from "node:util";
import { runInNewContext } from "node:vm";

import { label, labelAsync, LabelError, labels, types, version } from "libbarcode";

const jan = { type: "jan13", text: "490123456789" };
const pngSignature = [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a];

// The error that `call` throws; it must be of `type` and have code, field and a sentence.
function refusal(call, type = LabelError) {
  let error;
  assert.throws(call, (thrown) => {
    error = thrown;
    return true;
  });
  assert.ok(error instanceof type, String(error));
  assert.equal(typeof error.code, "string");
  assert.equal(typeof error.field, "string");
  assert.match(error.message, /^[A-Z].*\.$/u);
  return error;
}

async function refusalAsync(request, type = LabelError) {
  const error = await labelAsync(request).then(() => undefined, (reason) => reason);
  return refusal(() => {
    throw error;
  }, type);
}

test("a label has its picture, media type, report and warnings", () => {
  const { data, mediaType, report, warnings } = label(jan);
  assert.ok(data instanceof Uint8Array);
  assert.deepEqual([...data.subarray(0, 8)], pngSignature);
  assert.equal(data.buffer.byteLength, data.length);
  assert.equal(mediaType, "image/png");
  assert.equal(report.text, "4901234567894");
  assert.equal(report.bytes, data.length);
  assert.deepEqual(warnings, []);
});

test("the formats", () => {
  const mediaTypes = ["png", "svg", "pdf"].map((format) => label({ ...jan, format }).mediaType);
  assert.deepEqual(mediaTypes, ["image/png", "image/svg+xml", "application/pdf"]);
  assert.match(new TextDecoder().decode(label({ ...jan, format: "svg" }).data), /^<svg[^]*<\/svg>\s*$/);
});

test("warnings are those of the report", () => {
  const made = label({ type: "matrix2of5", text: "123" });
  assert.deepEqual(made.warnings.map(({ code }) => code), ["no_reader"]);
  assert.equal(made.warnings, made.report.warnings);
});

test("labelAsync makes the same", async () => {
  const made = await labelAsync(jan);
  const same = label(jan);
  assert.deepEqual(made.data, same.data);
  assert.deepEqual(made.report, same.report);
  assert.equal(made.mediaType, same.mediaType);
});

test("labels as JSON and on the console", () => {
  const made = label(jan);
  const { data, mediaType, report, warnings } = JSON.parse(JSON.stringify(made));
  assert.deepEqual(new Uint8Array(Buffer.from(data, "base64")), made.data);
  assert.deepEqual({ mediaType, report, warnings }, { mediaType: "image/png", report: made.report, warnings: [] });
  assert.match(inspect(made), /^Label \{[^]*mediaType: 'image\/png'[^]*display_text: '4901234567894'/);
});

test("a label is its own: later ones do not change it", () => {
  const first = label(jan);
  const copy = first.data.slice();
  for (let i = 0; i < 1000; ++i) {
    label({ type: "qr", text: String(i) });
  }
  assert.deepEqual(first.data, copy);
  first.data.fill(0);
  assert.deepEqual(label(jan).data, copy);
});

// A caption of so many characters: some 87 bytes each.
function captioned(length) {
  const caption = Array.from({ length }, (_, i) => String.fromCharCode(33 + ((i * i * 7 + i * 13) % 90))).join("");
  return { type: "code128", text: "A".repeat(80), caption, module: 40, height: 200, text_scale: 0.25, format: "svg" };
}

// Around 64 KiB, up to which pictures go another way.
test("small and large pictures in turns", async () => {
  const requests = [jan, { ...jan, format: "pdf" }, captioned(1500)];
  for (let length = 735; length < 765; ++length) {
    requests.push(captioned(length));
  }
  const made = await Promise.all(requests.map((request) => labelAsync(request)));
  assert.ok(made.some(({ data }) => data.length > 65400 && data.length <= 65532));
  assert.ok(made.some(({ data }) => data.length > 65532 && data.length < 65700));
  for (const i of [...requests.keys(), ...[...requests.keys()].reverse()]) {
    const { data, report, mediaType } = label(requests[i]);
    assert.deepEqual([data.length, data.buffer.byteLength, mediaType], [report.bytes, report.bytes, made[i].mediaType]);
    assert.deepEqual(data, made[i].data);
  }
});

test("requests that are plain and others are the same to the library", () => {
  const cases = [["a".repeat(256), "a".repeat(257)], ["~", "\u007f"], ["a b", "a\tb"], ["quote", 'quo"te'], ["slash/", "slash\\"],
    ["e", "é"], ["plain", "\u{1f600}"], ["x", "\u0000"]];
  for (const texts of cases) {
    for (const text of texts) {
      assert.equal(label({ type: "qr", text }).report.text, text);
      assert.equal(label({ type: "qr", text, caption: undefined, module: null }).report.text, text);
      assert.equal(label({ type: "qr", text: "a", caption: text, module: 2, strict: false, dpi: 300 }).report.text, "a");
    }
  }
  assert.equal(label({ type: undefined, ...jan, module: 3, text_scale: 1.25, strict: false }).report.module, 3);
  assert.equal(refusal(() => label({ type: undefined, text: null })).field, "type");
  assert.equal(refusal(() => label({ ...jan, ['na"me']: 1 })).field, 'na"me');
  assert.equal(refusal(() => label({ ...jan, nämé: 1 })).field, "nämé");
  assert.equal(refusal(() => label({ ...jan, module: 1e21 })).field, "module");
});

test("what others give all objects is no member of a request", () => {
  Object.prototype.module = 7;
  try {
    assert.equal(label(jan).report.module, label({ ...jan, module: null }).report.module);
    assert.notEqual(label(jan).report.module, 7);
  } finally {
    delete Object.prototype.module;
  }
  const expected = label(jan).data;
  Object.prototype.toJSON = () => "mine";
  try {
    assert.deepEqual(label(jan).data, expected);
  } finally {
    delete Object.prototype.toJSON;
  }
});

test("undefined and null count as absent", () => {
  assert.deepEqual(label({ ...jan, format: undefined, module: null }).data, label(jan).data);
});

test("a refused label is a LabelError", async () => {
  const request = { type: "jan13", text: "4901234567895" };
  for (const error of [refusal(() => label(request)), await refusalAsync(request)]) {
    assert.equal(error.name, "LabelError");
    assert.equal(error.code, "bad_text");
    assert.equal(error.field, "text");
    assert.equal(error.message, "The check digit is 5 but must be 4; correct it or leave it out.");
    assert.equal(error.report.type, "jan13");
    assert.ok(!("needed" in error));
    assert.match(error.stack, /^LabelError: The check digit/);
  }
});

test("needed tells what would do", () => {
  const error = refusal(() => label({ type: "qr", text: "https://example.com/", width: 30, height: 30 }));
  assert.equal(error.code, "too_small");
  assert.deepEqual(error.needed, { width: 33, height: 33 });
});

test("texts of bytes", () => {
  const bytes = new Uint8Array([0x68, 0, 0xff, 0x6c]);
  const expected = label({ type: "qr", text_base64: "aAD/bA==" }).data;
  assert.deepEqual(label({ type: "qr", text: bytes }).data, expected);
  assert.deepEqual(label({ type: "qr", text: Buffer.from(bytes) }).data, expected);
  assert.deepEqual(label({ type: "qr", text: new Uint8Array([1, ...bytes, 2]).subarray(1, 5) }).data, expected);
  assert.equal(refusal(() => label({ type: "qr", text: new Uint8Array() })).code, "bad_text");
  assert.equal(refusal(() => label({ type: "qr", text: bytes, text_base64: "YQ==" })).code, "bad_value");
});

test("arrays of bytes that are not what they seem", async () => {
  class Lying extends Uint8Array {
    get length() {
      return 1e9;
    }
    get buffer() {
      return undefined;
    }
  }
  const { data } = label({ type: "qr", text: "AB" });
  assert.deepEqual(label({ type: "qr", text: new Lying([65, 66]) }).data, data);
  assert.deepEqual(label({ type: "qr", text: runInNewContext("new Uint8Array([65, 66])") }).data, data);
  const detached = new Uint8Array([65, 66]);
  structuredClone(detached.buffer, { transfer: [detached.buffer] });
  const broken = [detached, Object.create(Uint8Array.prototype), new Proxy(new Uint8Array(2), {})];
  for (const text of broken) {
    for (const error of [refusal(() => label({ type: "qr", text }), TypeError), await refusalAsync({ type: "qr", text }, TypeError)]) {
      assert.deepEqual([error.code, error.field], ["bad_value", "text"]);
    }
  }
  const made = [];
  for await (const result of labels(broken.map((text) => ({ type: "qr", text })), { errors: "yield" })) {
    made.push(result.code);
  }
  assert.deepEqual(made, ["bad_value", "bad_value", "bad_value"]);
});

// What this process has used of processors since then: how long it took says less, where others use them too.
function secondsSince(begin) {
  const { user, system } = process.cpuUsage(begin);
  return (user + system) / 1e6;
}

test("names and numbers of fields that are none", () => {
  const begin = process.cpuUsage();
  const long = "\u{1f600}".repeat(50_000_000);
  const error = refusal(() => label({ type: "qr", text: "a", [long]: 1 }));
  assert.equal(error.code, "unknown_field");
  assert.ok(error.field.length < 100);
  assert.ok(refusal(() => label({ type: "qr", text: "a", [long]: {} }), TypeError).message.length < 300);
  assert.ok(secondsSince(begin) < 5);
  const request = { type: "qr", text: "a" };
  for (let i = 0; i < 600; ++i) {
    request[`field ${i}`] = "x".repeat(1 << 20);
  }
  assert.equal(refusal(() => label(request)).field, "field 0");
  const fields = new Set(types().flatMap(({ options }) => options.map(({ name }) => name)));
  assert.ok(fields.size > 20 && fields.size < 60, `${fields.size}: requests are read as far as 64 members`);
});

test("characters beyond the first plane arrive whole", () => {
  assert.equal(label({ type: "qr", text: "a\u{1f600}b" }).report.text, "a\u{1f600}b");
});

test("NUL is data where the symbology holds it", () => {
  assert.equal(label({ type: "code128", text: "a\0b" }).report.text, "a\0b");
  assert.equal(label({ type: "qr", text: "\0" }).report.text, "\0");
  const error = refusal(() => label({ type: "code39", text: "A\0B" }));
  assert.equal(error.code, "bad_text");
  assert.match(error.message, /U\+0000/);
});

test("lone surrogates are refused", async () => {
  for (const text of ["\ud800", "a\udc00", "\udc00\ud800", "\ud83d\ude00\ud83d", `${"a".repeat(3000)}\udfff`]) {
    for (const error of [refusal(() => label({ type: "qr", text })), await refusalAsync({ type: "qr", text })]) {
      assert.equal(error.code, "bad_text");
      assert.equal(error.field, "text");
      assert.equal(error.report.ok, false);
    }
  }
  assert.equal(refusal(() => label({ type: "qr", text: "a", caption: "\ud800" })).field, "caption");
  assert.equal(refusal(() => label({ type: "\ud800", text: "a" })).field, "type");
  assert.equal(refusal(() => label({ type: "qr", text: "a", "\ud800": 1 })).code, "unknown_field");
  assert.equal(label({ type: "qr", text: "\\ud800" }).report.text, "\\ud800"); // six characters, none of them halved
});

test("a request that is no object is a TypeError", async () => {
  for (const request of [undefined, null, 42, "qr", true, 1n, Symbol("qr"), () => {}, [], [jan]]) {
    assert.equal(refusal(() => label(request), TypeError).code, "bad_request");
    assert.equal((await refusalAsync(request, TypeError)).code, "bad_request");
  }
});

test("type, text and fields are a request, too", async () => {
  const expected = label({ type: "qr", text: "hello", module: 3 }).data;
  assert.deepEqual(label("qr", "hello", { module: 3 }).data, expected);
  assert.deepEqual((await labelAsync("qr", "hello", { module: 3 })).data, expected);
  assert.deepEqual(label("qr", Buffer.from("hello"), { module: 3, type: "jan13", text: "1" }).data, expected);
  assert.deepEqual(label("qr", undefined, { module: 3, text_base64: "aGVsbG8=" }).data, expected);
  assert.equal(refusal(() => label("qr", undefined)).field, "text");
  assert.equal(refusal(() => label("nonsense", "hello")).code, "unknown_type");
  assert.equal(refusal(() => label("qr", "hello", { codeMode: "A" })).code, "unknown_field");
  assert.equal(refusal(() => label("qr", 42)).field, "text");
  for (const fields of [null, 42, "svg", [], () => {}]) {
    assert.equal(refusal(() => label("qr", "hello", fields), TypeError).code, "bad_request");
  }
});

test("a value that no field can have is a TypeError", async () => {
  const values = [{}, [], ["a"], 1n, Symbol("a"), () => {}, new Date(), new Map(), new String("a"), new ArrayBuffer(2),
    new Uint16Array(2), new Proxy({}, {})];
  for (const value of values) {
    for (const field of ["type", "text", "module", "caption", "nonsense"]) {
      const error = refusal(() => label({ ...jan, [field]: value }), TypeError);
      assert.equal(error.code, "bad_value");
      assert.equal(error.field, field);
    }
  }
  assert.equal(refusal(() => label({ ...jan, caption: new Uint8Array(2) }), TypeError).field, "caption");
  assert.equal((await refusalAsync({ type: "qr", text: {} }, TypeError)).field, "text");
});

test("what JSON can say is judged by the library", () => {
  const cases = [
    [{ type: 1, text: "a" }, "bad_value", "type"],
    [{ type: "qr", text: 42 }, "bad_value", "text"],
    [{ type: "qr", text: "a", module: "4" }, "bad_value", "module"],
    [{ type: "qr", text: "a", module: 1.5 }, "bad_value", "module"],
    [{ type: "qr", text: "a", module: NaN }, "bad_value", "module"],
    [{ type: "qr", text: "a", module: -Infinity }, "bad_value", "module"],
    [{ type: "qr", text: "a", module: 1e308 }, "bad_value", "module"],
    [{ type: "qr", text: "a", strict: 1 }, "bad_value", "strict"],
    [{ type: "qr", text: "a", codeMode: "A" }, "unknown_field", "codeMode"],
    [{ type: "qr", text: "a", code_mode: "A" }, "unknown_field", "code_mode"],
    [{ type: "qr", text: "a", 'quo"te\n': 1 }, "unknown_field", 'quo"te\n'],
    [{ type: "none", text: "a" }, "unknown_type", "type"],
    [{ type: "qr" }, "bad_value", "text"],
    [{ text: "a" }, "bad_value", "type"],
    [{}, "bad_value", "type"],
    [new Map([["type", "qr"]]), "bad_value", "type"],
    [JSON.parse('{"type": "qr", "text": "a", "__proto__": 1}'), "unknown_field", "__proto__"],
    [{ type: "qr", text: "a", toJSON: "x" }, "unknown_field", "toJSON"],
  ];
  for (const [request, code, field] of cases) {
    const error = refusal(() => label(request));
    assert.deepEqual([error.code, error.field], [code, field]);
  }
  assert.equal(label({ type: "qr", text: "a", module: -0 + 4 }).report.module, 4);
});

test("own members count, each is read once", () => {
  const reads = [];
  const request = new Proxy({ ...jan }, {
    get(target, name, receiver) {
      reads.push(name);
      return Reflect.get(target, name, receiver);
    },
  });
  assert.equal(label(request).report.text, "4901234567894");
  assert.deepEqual(reads, ["type", "text"]);
  assert.equal(label(Object.create({ format: "svg" }, Object.getOwnPropertyDescriptors(jan))).mediaType, "image/png");
  assert.equal(label(Object.assign(Object.create(null), jan)).report.type, "jan13");
});

test("what a caller's own objects throw comes through", async () => {
  const thrown = new RangeError("mine");
  const fail = () => {
    throw thrown;
  };
  const hostile = [
    { type: "qr", get text() { return fail(); } },
    new Proxy({}, { ownKeys: fail }),
    new Proxy({ type: "qr" }, { get: fail }),
    new Proxy({ type: "qr" }, { getOwnPropertyDescriptor: fail }),
  ];
  for (const request of hostile) {
    assert.throws(() => label(request), (error) => error === thrown);
    await assert.rejects(labelAsync(request), (error) => error === thrown);
  }
  const { proxy, revoke } = Proxy.revocable({}, {});
  revoke();
  assert.throws(() => label(proxy), TypeError);
});

test("100 MB of text are refused at once", async () => {
  const begin = process.cpuUsage();
  const large = 100_000_000;
  for (const text of ["a".repeat(large), "\0".repeat(large), "\u{1f600}".repeat(large / 4), new Uint8Array(large)]) {
    assert.equal(refusal(() => label({ type: "qr", text })).code, "too_long");
    assert.equal((await refusalAsync({ type: "code39", text })).code, "too_long");
  }
  assert.equal(refusal(() => label({ type: "qr", text_base64: "AAAA".repeat(large / 4) })).code, "too_long");
  assert.equal(refusal(() => label({ type: "a".repeat(large), text: "a" })).code, "unknown_type");
  const { warnings } = label({ type: "qr", text: "a", caption: "a".repeat(large) });
  assert.deepEqual(warnings.map(({ code }) => code), ["text_left_out"]);
  assert.ok(secondsSince(begin) < 20);
});

test("a long text that is not cut", () => {
  const text = "1".repeat(7089);
  assert.equal(label({ type: "qr", text, error_correction_level: "L", encode_mode: "NUMERIC" }).report.text, text);
  assert.equal(label({ type: "qr", text: "é".repeat(700) }).report.text.length, 700);
  // Around the length up to which the module needs no memory for a request.
  for (let length = 950; length < 1050; ++length) {
    assert.equal(label({ type: "qr", text: "€".repeat(length / 3), caption: "" }).report.text.length, Math.floor(length / 3));
  }
});

test("64 labels at the same time", async () => {
  const requests = Array.from({ length: 64 }, (_, i) => ({ type: "qr", text: `label ${i}`, module: 1 + (i % 10) }));
  const made = await Promise.all(requests.map(labelAsync));
  requests.forEach((request, i) => {
    assert.deepEqual(made[i].data, label(request).data);
  });
});

test("one that is refused does not disturb the others", async () => {
  const requests = Array.from({ length: 64 }, (_, i) => ({ type: "jan8", text: i % 2 ? "4901234" : "x" }));
  const settled = await Promise.allSettled(requests.map(labelAsync));
  assert.deepEqual(settled.map(({ status }) => status), requests.map((_, i) => (i % 2 ? "fulfilled" : "rejected")));
});

test("memory does not grow with the labels", () => {
  const script = `
    import { label } from "libbarcode";
    const make = (count) => {
      for (let i = 0; i < count; ++i) {
        try {
          label({ type: i % 3 ? "qr" : "jan8", text: "hello " + i, module: 20 });
        } catch {}
      }
      gc();
      return process.memoryUsage().rss;
    };
    const before = make(2000);
    console.log(make(8000) - before);`;
  const growth = Number(execFileSync(process.execPath, ["--expose-gc", "--input-type=module", "-e", script],
    { cwd: import.meta.dirname ?? new URL(".", import.meta.url).pathname, encoding: "utf-8" }));
  assert.ok(growth < 30e6, `${growth} bytes`);
});

test("types() and version", () => {
  const all = types();
  assert.equal(all.length, 19);
  assert.deepEqual(all.map(({ number }) => number), [...all.map(({ number }) => number)].sort((a, b) => a - b));
  assert.ok(all.find(({ name }) => name === "qr").options.some(({ name }) => name === "error_correction_level"));
  all.length = 0;
  assert.equal(types().length, 19);
  assert.match(version, /^\d+\.\d+\.\d+$/);
});
