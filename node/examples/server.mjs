// Labels over HTTP, with what Node brings and this package alone.
//
//     node server.mjs [PORT]
//
//     GET  /label?type=qr&text=hello&format=svg    a picture; the fields are those of a request
//     POST /label                                  the same, the request as JSON
//     GET  /types                                  the symbologies and their fields
//
// A label that is refused is status 400 with the error as JSON. The same request makes the same bytes: pictures may be
// kept, and bear an ETag.

import { createHash } from "node:crypto";
import { realpathSync } from "node:fs";
import { createServer } from "node:http";
import { fileURLToPath } from "node:url";

import { LabelError, labelAsync, types, version } from "libbarcode";

const defaults = {
  maxUrl: 4096, // bytes
  maxBody: 16384,
  maxPixels: 4_000_000,
  maxWaiting: 64, // labels that are being made, or not yet sent
  maxPipelined: 4, // answers that a connection has not yet taken
  maxConnections: 256,
  timeout: 10_000, // milliseconds for a whole request, and for a client to take a part of the answer
};

class HttpError extends Error {
  constructor(status, code, message, headers = {}, field = "") {
    super(message);
    Object.assign(this, { status, code, headers, field });
  }
}

const symbologies = types();
const typesBody = jsonBody(symbologies);

// How the words of a query become the values of fields.
const kinds = new Map(symbologies.flatMap(({ options }) => options.map(({ name, kind }) => [name, kind])));
const booleans = new Map([["true", true], ["1", true], ["false", false], ["0", false]]);

function fieldValue(name, word) {
  const kind = kinds.get(name);
  if (kind === "boolean") {
    return booleans.get(word) ?? word;
  }
  const isNumber = kind === "integer" || kind === "number" || kind === "quiet_zone";
  return isNumber && /^-?\d+(\.\d+)?$/.test(word) ? Number(word) : word;
}

function urlOf(message) {
  try {
    const url = new URL(message.url, "http://localhost");
    decodeURIComponent(url.search); // throws where searchParams would put U+FFFD
    if (/^[!-~]*$/.test(message.url)) {
      return url;
    }
  } catch {
    // said below
  }
  throw new HttpError(400, "bad_request", "The URL is none, or what its percent signs encode is no UTF-8.");
}

function standsTwice(field) {
  return new HttpError(400, "bad_value", "The field stands twice; give it once.", {}, field);
}

function requestOfQuery(query) {
  const request = Object.create(null);
  for (const [name, word] of query) {
    if (name in request) {
      throw standsTwice(name);
    }
    request[name] = fieldValue(name, word);
  }
  return request;
}

async function readBody(message, limit) {
  const tooLarge = () =>
    new HttpError(413, "too_large", `A request has at most ${limit} bytes.`, { connection: "close" });
  if (Number(message.headers["content-length"] ?? 0) > limit) {
    throw tooLarge();
  }
  const chunks = [];
  let length = 0;
  for await (const chunk of message) {
    length += chunk.length;
    if (length > limit) {
      throw tooLarge();
    }
    chunks.push(chunk);
  }
  return Buffer.concat(chunks);
}

function isObject(value) {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

// Of two members of one name JSON.parse drops the first. Text is valid JSON: a string before a colon is a name.
function refuseTwice(text) {
  const names = new Set();
  for (const [, string, colon] of text.matchAll(/("(?:[^"\\]|\\.)*")(\s*:)?/g)) {
    const name = colon === undefined ? undefined : JSON.parse(string);
    if (names.has(name)) {
      throw standsTwice(name);
    }
    if (name !== undefined) {
      names.add(name);
    }
  }
}

function parsed(body) {
  try {
    const text = new TextDecoder("utf-8", { fatal: true }).decode(body);
    return { text, request: JSON.parse(text) };
  } catch {
    throw new HttpError(400, "bad_request", "The body is no JSON in UTF-8.");
  }
}

async function requestOfBody(message, limit) {
  if (!/^application\/json\s*(;|$)/i.test(message.headers["content-type"] ?? "")) {
    throw new HttpError(415, "bad_request", "Send the request as application/json.");
  }
  const { text, request } = parsed(await readBody(message, limit));
  if (isObject(request)) {
    refuseTwice(text);
  }
  return request;
}

// An SVG file costs the same whatever its size, and all formats have the same geometry: it is made first and measured.
async function limitedLabel(request, maxPixels) {
  const measured = await labelAsync(isObject(request) ? { ...request, format: "svg" } : request);
  const { width, height } = measured.report;
  if (width * height > maxPixels) {
    const message = `The picture would have ${width} x ${height} pixels; ${maxPixels} in all are allowed.`;
    throw new HttpError(400, "too_large", message);
  }
  const { format } = request;
  return typeof format === "string" && format.toLowerCase() === "svg" ? measured : labelAsync(request);
}

function etagOf(data) {
  return `"${createHash("sha256").update(data).digest("base64url").slice(0, 22)}"`;
}

// Whether the client has it already: then it is told so.
function isKnown(message, response, headers) {
  const known = message.method !== "POST" && (message.headers["if-none-match"] ?? "").includes(headers.etag);
  if (known) {
    response.writeHead(304, headers).end();
  }
  return known;
}

function sendPicture(message, response, { data, mediaType, warnings }) {
  const headers = {
    etag: etagOf(data),
    "cache-control": "public, max-age=86400",
    "content-security-policy": "default-src 'none'; style-src 'unsafe-inline'",
    "x-content-type-options": "nosniff",
  };
  if (warnings.length > 0) {
    headers["x-label-warnings"] = warnings.map(({ code }) => code).join(", ");
  }
  if (isKnown(message, response, headers)) {
    return;
  }
  response.writeHead(200, { ...headers, "content-type": mediaType, "content-length": data.length });
  response.end(message.method === "HEAD" ? undefined : data);
}

function jsonBody(value) {
  return Buffer.from(`${JSON.stringify(value)}\n`);
}

function sendJson(message, response, status, body, headers = {}) {
  response.writeHead(status, {
    ...headers,
    "content-type": "application/json",
    "content-length": body.length,
    "x-content-type-options": "nosniff",
  });
  response.end(message.method === "HEAD" ? undefined : body);
}

function sendError(message, response, error) {
  const isRefusal = error instanceof LabelError || (error instanceof TypeError && "field" in error);
  if (!isRefusal && !(error instanceof HttpError)) {
    console.error(error);
    error = new HttpError(500, "internal", "The server has failed.");
  }
  const { status = 400, headers, code, field, message: text, needed } = error;
  sendJson(message, response, status, jsonBody({ error: { code, field, message: text, needed } }), headers);
}

// Waits until the answer is sent, or nobody waits for it any more. Of answers that are still to come a connection that
// is closed says nothing: it is asked itself.
function whenSent({ socket }, response) {
  return new Promise((resolve) => {
    const end = () => {
      response.off("close", end);
      socket.off("close", end);
      resolve();
    };
    response.on("close", end);
    socket.on("close", end);
  });
}

const methods = { "/label": ["GET", "HEAD", "POST"], "/types": ["GET", "HEAD"] };

export function createLabelServer(options = {}) {
  const limits = { ...defaults, ...options };
  const etag = `"${version}"`;
  const waiting = new WeakMap(); // how many answers a connection has not yet taken
  let inHand = 0;

  async function answer(message, response, sent) {
    if (message.url.length > limits.maxUrl) {
      throw new HttpError(414, "too_large", `A URL has at most ${limits.maxUrl} bytes; send the request with POST.`);
    }
    const { pathname, searchParams } = urlOf(message);
    const allowed = Object.hasOwn(methods, pathname) ? methods[pathname] : undefined;
    if (allowed === undefined) {
      throw new HttpError(404, "not_found", "There are /label and /types.");
    }
    if (!allowed.includes(message.method)) {
      throw new HttpError(405, "bad_method", `Use ${allowed.join(", ")}.`, { allow: allowed.join(", ") });
    }
    if (pathname === "/types") {
      if (!isKnown(message, response, { etag })) {
        sendJson(message, response, 200, typesBody, { etag });
      }
      return;
    }
    const isPost = message.method === "POST";
    const request = isPost ? await requestOfBody(message, limits.maxBody) : requestOfQuery(searchParams);
    if (inHand >= limits.maxWaiting) {
      throw new HttpError(503, "busy", "Too many labels are in hand; try again.", { "retry-after": "1" });
    }
    ++inHand;
    try {
      sendPicture(message, response, await limitedLabel(request, limits.maxPixels));
    } finally {
      sent.then(() => --inHand);
    }
  }

  const server = createServer({ connectionsCheckingInterval: limits.timeout / 4 }, (message, response) => {
    // Requests may come before answers are taken. Who does not take these is not served any more: they fill memory.
    const { socket } = message;
    const count = waiting.get(socket) ?? 0;
    if (socket.destroyed || count >= limits.maxPipelined) {
      socket.destroy();
      return;
    }
    waiting.set(socket, count + 1);
    const sent = whenSent(message, response);
    sent.then(() => waiting.set(socket, waiting.get(socket) - 1));
    answer(message, response, sent).catch((error) => {
      if (response.headersSent || response.destroyed) {
        response.destroy();
      } else {
        sendError(message, response, error);
      }
    });
  });
  server.timeout = 2 * limits.timeout; // a request that is late gets its answer before
  server.requestTimeout = limits.timeout;
  server.headersTimeout = limits.timeout;
  server.keepAliveTimeout = 5000;
  server.maxConnections = limits.maxConnections;
  return server;
}

// Packages are often links to where they are.
function isProgram() {
  try {
    return realpathSync(process.argv[1]) === realpathSync(fileURLToPath(import.meta.url));
  } catch {
    return false;
  }
}

if (isProgram()) {
  const server = createLabelServer();
  server.listen(Number(process.argv[2] ?? 8080), "127.0.0.1", () => {
    const { address, port } = server.address();
    console.log(`http://${address}:${port}/label?type=qr&text=hello`);
  });
}
