// Loads the module of this package, and with it the label library: the one beside it, or else the system's.

import { constants } from "node:os";
import { fileURLToPath } from "node:url";

const path = fileURLToPath(new URL("../native/barcode_label.node", import.meta.url));

// Node has a zlib of its own among its symbols, which compresses otherwise. Where the library needs the system's, it is
// to get that one: the same request makes the same bytes in every host.
const flags = constants.dlopen.RTLD_NOW | (constants.dlopen.RTLD_DEEPBIND ?? 0);

const module = { exports: {} };
process.dlopen(module, path, flags);

export const { createLanes, makeLabel, makeLabels, scratch, stopLanes, types, version } = module.exports;

// As Node reads it.
function threadsOfThePool() {
  const threads = process.env.UV_THREADPOOL_SIZE;
  return threads === undefined ? 4 : Math.min(Math.max(Number.parseInt(threads, 10) || 1, 1), 1024);
}

export const threads = threadsOfThePool();
module.exports.useLanes(threads);

// A process that ends waits for its threads.
process.on("exit", module.exports.endLanes);
