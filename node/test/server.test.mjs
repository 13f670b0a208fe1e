import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtempSync, rmSync, symlinkSync } from "node:fs";
import { request as httpRequest } from "node:http";
import { connect } from "node:net";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { setTimeout as delay } from "node:timers/promises";
import { fileURLToPath } from "node:url";

import { label } from "libbarcode";

import { createLabelServer } from "../node_modules/libbarcode/examples/server.mjs";

let server;
let base;

before(async () => {
  server = createLabelServer({ timeout: 60_000 }).listen(0, "127.0.0.1");
  await once(server, "listening");
  base = `http://127.0.0.1:${server.address().port}`;
});

after(() => {
  server.closeAllConnections();
  server.close();
});

function get(path, options) {
  return fetch(`${base}${path}`, options);
}

function post(value, type = "application/json") {
  const body = typeof value === "string" ? value : JSON.stringify(value);
  return get("/label", { method: "POST", body, headers: { "content-type": type } });
}

async function expectError(response, status, code, field) {
  assert.equal(response.status, status);
  assert.match(response.headers.get("content-type"), /^application\/json/);
  const { error } = await response.json();
  assert.equal(error.code, code);
  if (field !== undefined) {
    assert.equal(error.field, field);
  }
  assert.match(error.message, /\.$/);
  return error;
}

test("a label by GET, and the same by POST", async () => {
  const byGet = await get("/label?type=jan13&text=490123456789&module=3&show_text=false&quiet_zone=12&text_scale=1.5");
  assert.equal(byGet.status, 200);
  assert.equal(byGet.headers.get("content-type"), "image/png");
  const request = { type: "jan13", text: "490123456789", module: 3, show_text: false, quiet_zone: 12, text_scale: 1.5 };
  const { data } = label(request);
  assert.deepEqual(new Uint8Array(await byGet.arrayBuffer()), data);
  const byPost = await post(request);
  assert.deepEqual(new Uint8Array(await byPost.arrayBuffer()), data);
});

test("every format has its type", async () => {
  for (const [format, mediaType] of [["svg", "image/svg+xml"], ["PDF", "application/pdf"]]) {
    const response = await get(`/label?type=qr&text=a&format=${format}`);
    assert.equal(response.headers.get("content-type"), mediaType);
    assert.equal(response.headers.get("x-content-type-options"), "nosniff");
    await response.arrayBuffer();
  }
});

test("pictures may be kept", async () => {
  const first = await get("/label?type=qr&text=a");
  await first.arrayBuffer();
  const etag = first.headers.get("etag");
  assert.match(first.headers.get("cache-control"), /max-age=\d+/);
  const second = await get("/label?type=qr&text=a", { headers: { "if-none-match": etag } });
  assert.equal(second.status, 304);
  assert.equal((await second.arrayBuffer()).byteLength, 0);
  const other = await get("/label?type=qr&text=b", { headers: { "if-none-match": etag } });
  assert.equal(other.status, 200);
  await other.arrayBuffer();
});

test("HEAD tells the length", async () => {
  const response = await get("/label?type=qr&text=a", { method: "HEAD" });
  assert.equal(Number(response.headers.get("content-length")), label({ type: "qr", text: "a" }).data.length);
});

test("a warning is told", async () => {
  const response = await get("/label?type=matrix2of5&text=123");
  assert.equal(response.headers.get("x-label-warnings"), "no_reader");
  await response.arrayBuffer();
});

test("the symbologies", async () => {
  const response = await get("/types");
  assert.equal((await response.json()).length, 19);
  const headers = { "if-none-match": response.headers.get("etag") };
  assert.equal((await get("/types", { headers })).status, 304);
});

test("what the library refuses is told with field and sentence", async () => {
  await expectError(await get("/label?type=jan13&text=4901234567895"), 400, "bad_text", "text");
  await expectError(await get("/label?text=a"), 400, "bad_value", "type");
  await expectError(await get("/label?type=qr&text=a&colour=red"), 400, "unknown_field", "colour");
  await expectError(await get("/label?type=qr&text=a&module=0x10"), 400, "bad_value", "module");
  await expectError(await get("/label?type=qr&text=a&module="), 400, "bad_value", "module");
  await expectError(await get("/label?type=qr&text=a&text=b"), 400, "bad_value", "text");
  await expectError(await get("/label?type=qr&text=a&__proto__=b"), 400, "unknown_field", "__proto__");
  await expectError(await get("/label?type=qr&text=%E9"), 400, "bad_request");
  await expectError(await get("/label?type=qr&te%ffxt=a"), 400, "bad_request");
  const error = await expectError(await get("/label?type=qr&text=hello&width=20&height=20"), 400, "too_small", "width");
  assert.ok(error.needed.width > 20);
});

test("hostile bodies", async () => {
  for (const body of ["", "{", "\ufeff{", "nan", '{"type": "qr", "text": "a"', "[".repeat(10000)]) {
    await expectError(await post(body), 400, "bad_request");
  }
  for (const body of ["null", "42", '"qr"', "[]", "true"]) {
    await expectError(await post(body), 400, "bad_request");
  }
  await expectError(await post('{"type": "qr", "text": {"a": 1}}'), 400, "bad_value", "text");
  await expectError(await post('{"type": "qr", "text": "\\ud800"}'), 400, "bad_text", "text");
  await expectError(await post('{"type": "qr", "text": "a", "__proto__": {"module": 9}}'), 400, "bad_value", "__proto__");
  for (const format of [{ toString: 1 }, ["svg"], 1, true]) {
    await expectError(await post({ type: "qr", text: "a", format }), 400, "bad_value", "format");
  }
  await expectError(await post('{"type": "qr", "text": "a", "te\\u0078t": "b"}'), 400, "bad_value", "text");
  assert.equal((await post('{"type": "qr", "text": "\\\\\\"text\\":", "caption": "text"}')).status, 200);
  await expectError(await post('{"type": "qr", "text": "a"}', "text/plain"), 415, "bad_request");
  const invalid = get("/label", { method: "POST", body: new Uint8Array([0x22, 0xff, 0x22]),
    headers: { "content-type": "application/json" } });
  await expectError(await invalid, 400, "bad_request");
});

test("what is too large is refused", async () => {
  await expectError(await get(`/label?type=qr&text=${"a".repeat(5000)}`), 414, "too_large");
  await expectError(await post({ type: "qr", text: "a".repeat(20000) }), 413, "too_large");
  await expectError(await get("/label?type=qr&text=a&module=100"), 400, "too_large");
  await expectError(await get("/label?type=qr&text=a&width=3000&height=3000"), 400, "too_large");
  await expectError(await get("/label?type=code128&text=hello&format=svg&height=10000&module=100"), 400, "too_large");
  await expectError(await get("/label?type=qr&text=a&width=100000&height=10000"), 400, "too_large");
});

test("a body without a length is counted as it comes", async () => {
  const request = httpRequest(`${base}/label`, { method: "POST", headers: { "content-type": "application/json" } });
  request.on("error", () => {}); // the server closes the connection
  const response = once(request, "response");
  for (let i = 0; i < 30; ++i) {
    request.write("x".repeat(1000));
  }
  const [{ statusCode }] = await response;
  assert.equal(statusCode, 413);
  request.destroy();
});

test("other paths and methods", async () => {
  await expectError(await get("/"), 404, "not_found");
  await expectError(await get("/__proto__"), 404, "not_found");
  await expectError(await get("/label/../etc/passwd"), 404, "not_found");
  const response = await get("/label", { method: "DELETE" });
  assert.equal(response.headers.get("allow"), "GET, HEAD, POST");
  await expectError(response, 405, "bad_method");
});

test("too many at a time are told to come again", async () => {
  const busy = createLabelServer({ maxWaiting: 2 }).listen(0, "127.0.0.1");
  await once(busy, "listening");
  const url = `http://127.0.0.1:${busy.address().port}/label?type=jan13&text=490123456789&module=8&height=1000`;
  const answers = await Promise.all(Array.from({ length: 40 }, () => fetch(url)));
  const statuses = answers.map(({ status }) => status);
  await Promise.all(answers.map((answer) => answer.arrayBuffer()));
  assert.ok(statuses.includes(200));
  assert.ok(statuses.includes(503));
  assert.ok(statuses.every((status) => status === 200 || status === 503));
  busy.closeAllConnections();
  busy.close();
});

// The answer, as far as it goes, to bytes that are sent as they are.
async function raw(bytes, port = server.address().port) {
  const socket = connect(port, "127.0.0.1");
  socket.on("error", () => {});
  let answer = "";
  socket.on("data", (chunk) => {
    answer += chunk.toString("latin1");
  });
  socket.write(bytes);
  await once(socket, "close");
  return answer;
}

// Who does not read: `count` requests at once, each a line of `path`.
async function fill(to, path, count) {
  const socket = connect(to.address().port, "127.0.0.1");
  socket.on("error", () => {});
  socket.pause();
  socket.write(`GET ${path} HTTP/1.1\r\nHost: a\r\n\r\n`.repeat(count));
  await once(socket, "connect");
  return socket;
}

// Runs with a server of its own, and what opens connections to it; ends them all.
async function withServer(limits, run) {
  const own = createLabelServer(limits).listen(0, "127.0.0.1");
  await once(own, "listening");
  const sockets = [];
  const open = async (path, count) => {
    sockets.push(await fill(own, path, count));
    return sockets.at(-1);
  };
  try {
    await run(own.address().port, open, own);
  } finally {
    sockets.forEach((socket) => socket.destroy());
    own.closeAllConnections();
    own.close();
  }
}

test("clients that do not take their answers are not served any more", () => withServer({}, async (port, open) => {
  const before = process.memoryUsage().rss;
  await Promise.all(Array.from({ length: 16 }, () => open("/types", 2000)));
  const { status } = await fetch(`http://127.0.0.1:${port}/label?type=qr&text=a`, { signal: AbortSignal.timeout(60_000) });
  assert.equal(status, 200);
  const { rss } = process.memoryUsage();
  assert.ok(rss - before < 150e6, `${rss - before} bytes`);
}));

// Opens a connection that does not read, and asks on it for labels of 2 MB each, until one waits: the system takes some
// of them.
async function fillUntilOneWaits(open, own) {
  const path = `/label?type=qr&text=x&format=svg&width=100000&height=1000&caption=${"@".repeat(9000)}`;
  const responses = [];
  let peer;
  own.once("connection", (socket) => {
    peer = socket;
  });
  own.on("request", (_, response) => responses.push(response));
  const socket = await open(path, 1);
  for (let count = 1; count <= 8; ++count) {
    while (!peer?.destroyed && (responses.length < count || !responses[count - 1].writableEnded)) {
      await delay(10);
    }
    for (let turn = 0; turn < 30 && !responses[count - 1]?.writableFinished; ++turn) {
      await delay(10);
    }
    if (peer.destroyed || !responses[count - 1].writableFinished) {
      return;
    }
    socket.write(`GET ${path} HTTP/1.1\r\nHost: a\r\n\r\n`);
  }
  assert.fail("the system has taken all of them");
}

const generous = { maxWaiting: 1, maxPixels: 1e9, maxUrl: 16000 };
const statusOfLabel = async (port) => (await fetch(`http://127.0.0.1:${port}/label?type=qr&text=a`)).status;

test("answers that wait for their client are in hand", () =>
  withServer({ ...generous, timeout: 60_000 }, async (port, open, own) => {
    await fillUntilOneWaits(open, own);
    assert.equal(await statusOfLabel(port), 503);
  }));

test("answers do not wait for their client for ever", () =>
  withServer({ ...generous, timeout: 1000 }, async (port, open, own) => {
    await fillUntilOneWaits(open, own);
    const end = performance.now() + 60_000;
    while (await statusOfLabel(port) !== 200) {
      assert.ok(performance.now() < end);
      await delay(200);
    }
  }));

test("a few requests at once are answered in order", async () => {
  const paths = ["/types", "/label?type=qr&text=a", "/nothing"];
  const requests = paths.map((path) => `GET ${path} HTTP/1.1\r\nHost: a\r\n`);
  const answer = await raw(`${requests.join("\r\n")}Connection: close\r\n\r\n`);
  assert.deepEqual(answer.match(/HTTP\/1\.1 \d+/g), ["HTTP/1.1 200", "HTTP/1.1 200", "HTTP/1.1 404"]);
});

test("the server starts from a package that is a link", async () => {
  const folder = mkdtempSync(join(tmpdir(), "barcode-"));
  symlinkSync(fileURLToPath(new URL("../node_modules", import.meta.url)), join(folder, "node_modules"));
  const child = spawn(process.execPath, [join(folder, "node_modules/libbarcode/examples/server.mjs"), "0"]);
  const [line] = await Promise.race([once(child.stdout, "data"), once(child, "exit")]);
  child.kill();
  rmSync(folder, { recursive: true });
  assert.match(String(line), /^http:\/\/127\.0\.0\.1:\d+\//);
});

test("requests that are no HTTP, or never end", async () => {
  assert.match(await raw("nonsense\r\n\r\n"), /^HTTP\/1\.1 400 /);
  assert.match(await raw(`GET /label?${"a".repeat(20000)} HTTP/1.1\r\nHost: a\r\n\r\n`), /^HTTP\/1\.1 431 /);
  assert.match(await raw("GET http://[ HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n"), /^HTTP\/1\.1 400 /);
  await withServer({ timeout: 4000 }, async (port) => {
    const late = ["GET /label?type=qr&text=a HTTP/1.1\r\nHost: a\r\n",
      "POST /label HTTP/1.1\r\nHost: a\r\nContent-Type: application/json\r\nContent-Length: 9\r\n\r\n{"];
    for (const answer of await Promise.all(late.map((bytes) => raw(bytes, port)))) {
      assert.match(answer, /^HTTP\/1\.1 408 /);
    }
  });
  assert.equal((await get("/label?type=qr&text=a")).status, 200);
});
