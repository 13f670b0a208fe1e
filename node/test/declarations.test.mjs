// index.d.ts says what the library says: a field, word or type that only one of them has fails here.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";

import { label, types } from "libbarcode";

const declarations = readFileSync(new URL(import.meta.resolve("libbarcode").replace(/js$/, "d.ts")), "utf-8");
const all = types();

function bodyOf(declaration) {
  const begin = declarations.indexOf(declaration);
  assert.notEqual(begin, -1, declaration);
  return declarations.slice(begin, declarations.indexOf("\n}", begin));
}

const bodies = `${bodyOf("export interface LabelRequest")}\n${bodyOf("export interface LabelFields")}`;
const declared = new Map([...bodies.matchAll(/^ {2}(\w+)\??: (.*);$/gm)]
  .map(([, name, type]) => [name, type]));

const options = new Map();
for (const { options: ofType } of all) {
  for (const { name, kind, values = [] } of ofType) {
    const option = options.get(name) ?? { kind, values: new Set() };
    values.forEach((value) => option.values.add(value));
    options.set(name, option);
  }
}

const sorted = (values) => [...values].sort();

test("the fields of a request", () => {
  assert.deepEqual(sorted(declared.keys()), sorted([...options.keys(), "type", "text", "text_base64"]));
});

test("their types and words", () => {
  const typeOf = { string: "string", boolean: "boolean", integer: "number", number: "number", color: "string" };
  for (const [name, { kind, values }] of options) {
    const type = declared.get(name).replace(/ \| null$/, "");
    const words = sorted([...type.matchAll(/"([^"]*)"/g)].map(([, word]) => word));
    if (words.length > 0) {
      assert.deepEqual(words, sorted(values), name);
    } else if (kind === "integer" && values.size > 0) {
      assert.deepEqual(type.split(" | ").map(Number), [...values], name);
    } else if (kind !== "keyword" || name !== "code_size") {
      assert.equal(type, typeOf[kind], name);
    }
  }
});

test("the names of the symbologies", () => {
  const names = [...declarations.match(/export type LabelType =([^;]*);/)[1].matchAll(/"([^"]+)"/g)].map(([, name]) => name);
  assert.deepEqual(names, all.map(({ name }) => name));
});

test("the members of reports and of types()", () => {
  const membersOf = (name) => sorted([...bodyOf(`export interface ${name} `).matchAll(/^ {2}(\w+)\??:/gm)].map(([, member]) => member));
  const { report } = label({ type: "qr", text: "a", dpi: 300 });
  assert.deepEqual(membersOf("LabelReport"), sorted(Object.keys(report)));
  assert.deepEqual(membersOf("TypeDescription"), sorted(Object.keys(all[0])));
  const members = new Set(all.flatMap((type) => type.options.flatMap(Object.keys)));
  assert.deepEqual(membersOf("LabelOption"), sorted(members));
});
