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
import { createServer } from "node:http";
import { pathToFileURL } from "node:url";

import { LabelError, labelAsync, types, version } from "libbarcode";

const defaults = {
  maxUrl: 4096, // bytes
  maxBody: 16384,
  maxPixels: 4_000_000,
  maxWaiting: 64, // labels in hand
  maxConnections: 256,
  timeout: 10_000, // milliseconds for a whole request
};

class HttpError extends Error {
  constructor(status, code, message, headers = {}, field = "") {
    super(message);
    Object.assign(this, { status, code, headers, field });
  }
}

// How the words of a query become the values of fields.
const kinds = new Map(types().flatMap(({ options }) => options.map(({ name, kind }) => [name, kind])));
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
    return new URL(message.url, "http://localhost");
  } catch {
    throw new HttpError(400, "bad_request", "The URL is none.");
  }
}

function requestOfQuery(query) {
  const request = Object.create(null);
  for (const [name, word] of query) {
    if (name in request) {
      throw new HttpError(400, "bad_value", "The field stands twice; give it once.", {}, name);
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

async function requestOfBody(message, limit) {
  if (!/^application\/json\s*(;|$)/i.test(message.headers["content-type"] ?? "")) {
    throw new HttpError(415, "bad_request", "Send the request as application/json.");
  }
  const body = await readBody(message, limit);
  try {
    return JSON.parse(new TextDecoder("utf-8", { fatal: true }).decode(body));
  } catch {
    throw new HttpError(400, "bad_request", "The body is no JSON in UTF-8.");
  }
}

// An SVG file costs the same whatever its size, and all formats have the same geometry: it is made first and measured.
async function limitedLabel(request, maxPixels) {
  const isObject = typeof request === "object" && request !== null && !Array.isArray(request);
  const measured = await labelAsync(isObject ? { ...request, format: "svg" } : request);
  const { width, height } = measured.report;
  if (width * height > maxPixels) {
    const message = `The picture would have ${width} x ${height} pixels; ${maxPixels} in all are allowed.`;
    throw new HttpError(400, "too_large", message);
  }
  return String(request.format).toLowerCase() === "svg" ? measured : labelAsync(request);
}

function etagOf(data) {
  return `"${createHash("sha256").update(data).digest("base64url").slice(0, 22)}"`;
}

function sendPicture(message, response, { data, mediaType, warnings }) {
  const etag = etagOf(data);
  const headers = {
    etag,
    "cache-control": "public, max-age=86400",
    "content-security-policy": "default-src 'none'; style-src 'unsafe-inline'",
    "x-content-type-options": "nosniff",
  };
  if (warnings.length > 0) {
    headers["x-label-warnings"] = warnings.map(({ code }) => code).join(", ");
  }
  if (message.method !== "POST" && (message.headers["if-none-match"] ?? "").includes(etag)) {
    response.writeHead(304, headers).end();
    return;
  }
  response.writeHead(200, { ...headers, "content-type": mediaType, "content-length": data.length });
  response.end(message.method === "HEAD" ? undefined : data);
}

function sendJson(message, response, status, value, headers = {}) {
  const body = Buffer.from(`${JSON.stringify(value)}\n`);
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
  sendJson(message, response, status, { error: { code, field, message: text, needed } }, headers);
}

const methods = { "/label": ["GET", "HEAD", "POST"], "/types": ["GET", "HEAD"] };

export function createLabelServer(options = {}) {
  const limits = { ...defaults, ...options };
  const etag = `"${version}"`;
  let inHand = 0;

  async function answer(message, response) {
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
      sendJson(message, response, 200, types(), { etag });
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
      --inHand;
    }
  }

  const server = createServer({ connectionsCheckingInterval: limits.timeout / 4 }, (message, response) => {
    answer(message, response).catch((error) => {
      if (response.headersSent || response.destroyed) {
        response.destroy();
      } else {
        sendError(message, response, error);
      }
    });
  });
  server.requestTimeout = limits.timeout;
  server.headersTimeout = limits.timeout;
  server.keepAliveTimeout = 5000;
  server.maxConnections = limits.maxConnections;
  return server;
}

if (process.argv[1] !== undefined && import.meta.url === pathToFileURL(process.argv[1]).href) {
  const server = createLabelServer();
  server.listen(Number(process.argv[2] ?? 8080), "127.0.0.1", () => {
    const { address, port } = server.address();
    console.log(`http://${address}:${port}/label?type=qr&text=hello`);
  });
}
