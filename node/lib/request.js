// Requests as JSON. The library judges what JSON can say; the rest is judged here.

import { Buffer } from "node:buffer";
import { types } from "node:util";

import { LabelError } from "./label_error.js";

// No field holds as much: the library refuses or leaves out a longer text as it does its beginning. A multiple of four,
// as Base64 wants it.
const longestText = 1 << 16;
// No field is called as much, and errors quote less.
const longestName = 128;
// More than there are fields: one of so many members is unknown, and the library does not go beyond the first.
const mostMembers = 64;

// The errors of values that are no part of a request in any case; they have the members of a LabelError.
const refusals = new WeakSet();

function typeError(code, field, message) {
  const error = Object.assign(new TypeError(message), { code, field });
  refusals.add(error);
  return error;
}

function kindOf(value) {
  if (value === null) {
    return "null";
  }
  if (typeof value !== "object") {
    return typeof value;
  }
  return Array.isArray(value) ? "array" : "object";
}

const loneSurrogate = /\p{Surrogate}/u;

// The beginning of a text, not cut in the middle of a character.
function cut(text, length) {
  return text.slice(0, /[\ud800-\udbff]/.test(text[length - 1]) ? length - 1 : length);
}

function refuseLoneSurrogates(field, value) {
  if (loneSurrogate.test(value)) {
    const message = `The field "${field}" has half of a surrogate pair, which is no character; remove it or give its other half.`;
    throw LabelError.of(field === "text" ? "bad_text" : "bad_value", field, message);
  }
}

function stringText(field, value) {
  if (value.length > longestText) {
    return stringText(field, cut(value, longestText));
  }
  const text = JSON.stringify(value);
  // JSON.stringify writes whole pairs as they are.
  if (text.includes("\\ud")) {
    refuseLoneSurrogates(field, value);
  }
  return text;
}

// What an array says of itself: a class of the caller's own may say something else.
const { get: bufferOf } = Object.getOwnPropertyDescriptor(Object.getPrototypeOf(Uint8Array.prototype), "buffer");
const { get: offsetOf } = Object.getOwnPropertyDescriptor(Object.getPrototypeOf(Uint8Array.prototype), "byteOffset");
const { get: lengthOf } = Object.getOwnPropertyDescriptor(Object.getPrototypeOf(Uint8Array.prototype), "length");

function bytesText(bytes) {
  try {
    const length = Math.min(lengthOf.call(bytes), longestText);
    return `"${Buffer.from(bufferOf.call(bytes), offsetOf.call(bytes), length).toString("base64")}"`;
  } catch {
    throw typeError("bad_value", "text", 'The bytes of the field "text" are no longer there: their buffer is detached.');
  }
}

function valueText(field, value) {
  switch (typeof value) {
    case "string":
      return stringText(field, value);
    case "boolean":
      return String(value);
    case "number":
      if (!Number.isFinite(value)) {
        throw LabelError.of("bad_value", field, `The field "${field}" must be a finite number, not ${value}.`);
      }
      return String(value);
    default: {
      const wanted = field === "text" ? "a string or a Uint8Array" : "a string, a number or a boolean";
      const message = `The field "${field}" must be ${wanted}, not of type ${kindOf(value)}.`;
      throw typeError("bad_value", field, message);
    }
  }
}

// The names of fields as they begin a member: all that there are, and whatever else comes first.
const names = new Map();
const mostNames = 64;

function nameText(field) {
  let text = names.get(field);
  if (text === undefined) {
    // Half of a surrogate pair is no JSON; no field has one in its name.
    text = `${JSON.stringify(field.replace(/\p{Surrogate}/gu, "\ufffd"))}:`;
    if (names.size < mostNames) {
      names.set(field, text);
    }
  }
  return text;
}

function memberText(field, value) {
  if (field === "text" && types.isUint8Array(value)) {
    return `"text_base64":${bytesText(value)}`;
  }
  return nameText(field) + valueText(field, value);
}

// label(request) and label(type, text, fields) are the same.
export function requestOf(words) {
  const [first, text, fields] = words;
  if (words.length < 2 || typeof first !== "string") {
    return first;
  }
  if (fields !== undefined && kindOf(fields) !== "object") {
    throw typeError("bad_request", "", `The fields beside type and text are one object, not of type ${kindOf(fields)}.`);
  }
  return { ...fields, type: first, text };
}

// Whether the JSON of these members is a request's as it stands: nothing in it has to be judged or written otherwise.
function areOrdinary(members) {
  let count = 0;
  for (const name in members) {
    const value = members[name];
    switch (typeof value) {
      case "string":
        if (value.length > longestText) {
          return false;
        }
        break;
      case "number":
        if (!Number.isFinite(value)) {
          return false;
        }
        break;
      case "boolean":
      case "undefined":
        break;
      default:
        return false;
    }
    if (name.length > longestName || ++count > mostMembers) {
      return false;
    }
  }
  return members.toJSON === undefined;
}

// A request's own members, each read once.
function membersOf(request) {
  if (typeof request !== "object" || request === null || Array.isArray(request)) {
    const message = `A request is one object, { type: "qr", text: "hello" }, not of type ${kindOf(request)}.`;
    throw typeError("bad_request", "", message);
  }
  return { ...request };
}

// The JSON of a request; throws what is wrong with it.
export function requestText(request) {
  const members = membersOf(request);
  if (areOrdinary(members)) {
    const text = JSON.stringify(members);
    if (!text.includes("\\ud")) { // half of a surrogate pair, or what looks like one
      return text;
    }
  }
  return membersText(members);
}

const quote = 0x22;
const backslash = 0x5c;
const letters = { brace: 0x7b, comma: 0x2c, colon: 0x3a, endBrace: 0x7d };

// Writes a text of ASCII that JSON holds as it is, and returns where it ends; undefined where it is no such text.
function putPlain(bytes, begin, text) {
  let at = begin;
  for (let i = 0; i < text.length; ++i) {
    const letter = text.charCodeAt(i);
    if (letter < 0x20 || letter > 0x7e || letter === quote || letter === backslash) {
      return undefined;
    }
    bytes[at++] = letter;
  }
  return at;
}

function putQuoted(bytes, begin, text) {
  bytes[begin] = quote;
  const end = putPlain(bytes, begin + 1, text);
  if (end !== undefined) {
    bytes[end] = quote;
    return end + 1;
  }
  return undefined;
}

function putValue(bytes, begin, value) {
  switch (typeof value) {
    case "string":
      return value.length <= longestPlain ? putQuoted(bytes, begin, value) : undefined;
    case "boolean":
      return putPlain(bytes, begin, value ? "true" : "false");
    case "number":
      return Number.isFinite(value) ? putPlain(bytes, begin, String(value)) : undefined;
    default:
      return undefined;
  }
}

// Most requests are short. So many members of this length have room in 64 KiB.
const longestPlain = 256;

// Writes the JSON of a request whose texts are plain and short, which is several times cheaper than to make a text of it
// and hand that over. Returns its length; 0 where there is more to it.
function putMembers(bytes, begin, members) {
  const names = Object.keys(members);
  if (names.length > mostMembers) {
    return 0;
  }
  let at = begin;
  for (const name of names) {
    const value = members[name];
    if (value === undefined || value === null) {
      continue;
    }
    if (name.length > longestName) {
      return 0;
    }
    bytes[at] = at === begin ? letters.brace : letters.comma;
    at = putQuoted(bytes, at + 1, name);
    if (at === undefined) {
      return 0;
    }
    bytes[at] = letters.colon;
    at = putValue(bytes, at + 1, value);
    if (at === undefined) {
      return 0;
    }
  }
  if (at === begin) {
    return 0;
  }
  bytes[at] = letters.endBrace;
  return at + 1 - begin;
}

// The JSON of a request: its length where it has been written to `bytes`, which have 64 KiB, at `begin`; or else its
// text. Throws what is wrong with it.
export function putRequest(bytes, begin, request) {
  const members = membersOf(request);
  return putMembers(bytes, begin, members) || membersText(members);
}

function membersText(request) {
  let text = "{";
  let members = 0;
  for (const name of Object.keys(request)) {
    const value = request[name];
    if (value !== undefined && value !== null) {
      const field = name.length > longestName ? cut(name, longestName) : name;
      text += text.length === 1 ? memberText(field, value) : `,${memberText(field, value)}`;
      if (++members === mostMembers) {
        break;
      }
    }
  }
  return `${text}}`;
}

// Whether requestText has thrown it for what the request holds, and not a getter of the caller's own.
export function isRefusal(error) {
  return error instanceof LabelError || refusals.has(error);
}
