// Uses the installed package. Arguments: the version that it must have, and its example of a server.

import assert from "node:assert/strict";

import { label, labelAsync, LabelError, labels, types, version } from "libbarcode";

const [expectedVersion, server] = process.argv.slice(2);
const request = { type: "jan13", text: "490123456789" };

assert.equal(version, expectedVersion);
assert.equal(types().length, 19);
for (const [format, mediaType] of [["png", "image/png"], ["svg", "image/svg+xml"], ["pdf", "application/pdf"]]) {
  const made = label({ ...request, format });
  assert.equal(made.mediaType, mediaType);
  assert.equal(made.data.length, made.report.bytes);
  assert.deepEqual((await labelAsync({ ...request, format })).data, made.data);
}
assert.throws(() => label({ type: "jan13", text: "x" }), (error) => error instanceof LabelError && error.field === "text");
let count = 0;
for await (const { report } of labels(Array(500).fill(request), { workers: 2 })) {
  assert.equal(report.text, "4901234567894");
  ++count;
}
assert.equal(count, 500);

if (server !== undefined) {
  const { createLabelServer } = await import(server);
  const listening = createLabelServer().listen(0, "127.0.0.1", async () => {
    const answer = await fetch(`http://127.0.0.1:${listening.address().port}/label?type=jan13&text=490123456789`);
    assert.equal(answer.status, 200);
    assert.deepEqual(new Uint8Array(await answer.arrayBuffer()), label(request).data);
    listening.closeAllConnections();
    listening.close();
  });
}
