// Labels of many requests, in their order: a request is read when there is room for its label, and labels are made in
// chunks, each by one call that runs on a thread of Node's pool. A thread that has made one goes on with the next that
// waits: the event loop takes its time.

import { availableParallelism, cpus } from "node:os";

import { Outcomes } from "./label.js";
import * as native from "./native.js";
import { isRefusal, requestText } from "./request.js";

// Of requests that wait for a worker, and of a chunk: characters after which no more are taken.
const longestTexts = 1 << 18;
// A source that is slow leaves time for what else is due.
const readingMilliseconds = 4;
// Long enough that handing it over costs little, short enough that large pictures do not pile up.
const chunkMicroseconds = 4000;
const largestChunk = 64;
// What waits for the reader, made or being made, for each worker; in chunks.
const chunksPerWorker = 2;
// For the pictures of a chunk. Larger rooms come where they are needed, and those beyond the most are not kept.
const roomSize = 1 << 16;
const largestRoom = 1 << 20;
const mostWorkers = 1024;
const threadsOfThePool = 4; // unless the user says otherwise
// For all streams, in each turn of the event loop. Where labels are made as fast as they are taken, a loop that awaits
// them would never let go of the thread.
const givingMilliseconds = 4;

let turnEnd = undefined; // of the turn of the event loop, once a label is given in it
const nextTurns = []; // of the streams that wait for a turn; in order, one has the next

function isTurnOver() {
  if (turnEnd === undefined) {
    turnEnd = performance.now() + givingMilliseconds;
    setImmediate(beginTurn);
  }
  return performance.now() > turnEnd;
}

function beginTurn() {
  turnEnd = undefined;
  if (nextTurns.length > 0) {
    isTurnOver();
    nextTurns.shift()();
  }
}

function processors() {
  return availableParallelism?.() ?? cpus().length; // node 18.14 has the first
}

function workersOf(value) {
  const workers = value ?? Math.min(processors(), threadsOfThePool);
  if (typeof workers !== "number") {
    throw new TypeError(`The option "workers" must be a number, not of type ${typeof workers}.`);
  }
  if (!Number.isInteger(workers) || workers < 1 || workers > mostWorkers) {
    throw new RangeError(`The option "workers" must be a whole number from 1 to ${mostWorkers}.`);
  }
  return workers;
}

function raisesErrors(value) {
  if (value !== undefined && value !== "raise" && value !== "yield") {
    throw new TypeError('The option "errors" must be "raise" or "yield".');
  }
  return value !== "yield";
}

function isIterable(value) {
  return typeof value === "object" && value !== null &&
    (typeof value[Symbol.asyncIterator] === "function" || typeof value[Symbol.iterator] === "function");
}

// The text of a request, or what is wrong with it.
function requestOrRefusal(request) {
  try {
    return requestText(request);
  } catch (error) {
    if (isRefusal(error)) {
      return error;
    }
    throw error;
  }
}

// Undefined when memory is exhausted: there may be enough of it for the labels.
function newRoom() {
  try {
    return new ArrayBuffer(roomSize);
  } catch {
    return undefined;
  }
}

// Of a request's text; what is wrong with one has none.
function lengthOf(request) {
  return typeof request === "string" ? request.length : 0;
}

function isPromise(value) {
  return typeof value?.then === "function";
}

// The outcomes of some requests, and in their places the refusals of the others.
class OutcomesAndRefusals {
  #outcomes;
  #requests;
  #taken = 0;

  constructor(outcomes, requests) {
    this.#outcomes = outcomes;
    this.#requests = requests;
    this.length = requests.length;
  }

  take() {
    const request = this.#requests[this.#taken];
    ++this.#taken;
    return typeof request === "string" ? this.#outcomes.take() : request;
  }
}

export class LabelStream {
  #source;
  #sourceIsAsync; // its calls return promises
  #requestsAreAwaited;
  #isReading = false;
  #isRead = false; // the source has ended, or is not wanted any more
  #sourceError = undefined; // { error } that the source has thrown
  #workers;
  #lanes;
  #raises;
  #requests = []; // read, but not yet given to the workers: texts and refusals
  #requestsLength = 0; // in characters
  #isDispatchDue = false;
  #given = 0; // chunks that are being made or wait for it
  #chunkSize = 1;
  #chunks = []; // in order; { results, room } when they are made
  #rooms = []; // ArrayBuffers of chunks whose labels are taken
  #taken = 0; // of the first chunk
  #inHand = 0; // requests that are read and whose labels are not yet taken
  #readers = []; // calls of next() that wait
  #isTurnDue = false;

  constructor(requests, options = {}) {
    if (!isIterable(requests)) {
      throw new TypeError("labels() takes an iterable or an async iterable of requests.");
    }
    if (typeof options !== "object" || options === null) {
      throw new TypeError("The options of labels() must be an object.");
    }
    this.#workers = workersOf(options.workers);
    this.#raises = raisesErrors(options.errors);
    this.#lanes = native.createLanes(this.#workers);
    this.#sourceIsAsync = typeof requests[Symbol.asyncIterator] === "function";
    this.#requestsAreAwaited = this.#sourceIsAsync;
    this.#source = this.#sourceIsAsync ? requests[Symbol.asyncIterator]() : requests[Symbol.iterator]();
  }

  [Symbol.asyncIterator]() {
    return this;
  }

  next() {
    const chunk = this.#chunks[0];
    if (chunk?.results !== undefined && this.#readers.length === 0 && !isTurnOver()) {
      const result = this.#take(chunk);
      if (!this.#raises || !(result instanceof Error)) {
        this.#read();
        return Promise.resolve({ value: result, done: false });
      }
      return new Promise((resolve, reject) => this.#give({ resolve, reject }, result));
    }
    return new Promise((resolve, reject) => {
      this.#readers.push({ resolve, reject });
      this.#serve();
    });
  }

  async return(value) {
    await this.#stop();
    return { value, done: true };
  }

  async throw(error) {
    await this.#stop();
    throw error;
  }

  // Gives what is made to those who wait, and sees that more is made.
  #serve() {
    this.#answer();
    this.#read();
  }

  #answer() {
    while (this.#readers.length > 0) {
      const chunk = this.#chunks[0];
      if (chunk?.results !== undefined) {
        if (isTurnOver()) {
          this.#answerNextTurn();
          return;
        }
        this.#give(this.#readers.shift(), this.#take(chunk));
      } else if (chunk === undefined && this.#requests.length === 0 && this.#isRead) {
        this.#giveEnd(this.#readers.shift());
      } else {
        return;
      }
    }
  }

  #answerNextTurn() {
    if (!this.#isTurnDue) {
      this.#isTurnDue = true;
      nextTurns.push(() => {
        this.#isTurnDue = false;
        this.#serve();
      });
    }
  }

  #take(chunk) {
    const result = chunk.results.take();
    ++this.#taken;
    --this.#inHand;
    if (this.#taken === chunk.results.length) {
      this.#chunks.shift();
      this.#taken = 0;
      this.#keepRoom(chunk.room);
    }
    return result;
  }

  #keepRoom(room) {
    if (room !== undefined && room.byteLength <= largestRoom) {
      this.#rooms.push(room);
    }
  }

  #give(reader, result) {
    if (this.#raises && result instanceof Error) {
      const fail = () => reader.reject(result);
      this.#stop().then(fail, fail);
    } else {
      reader.resolve({ value: result, done: false });
    }
  }

  #giveEnd(reader) {
    if (this.#sourceError === undefined) {
      reader.resolve({ value: undefined, done: true });
      return;
    }
    reader.reject(this.#sourceError.error);
    this.#sourceError = undefined;
  }

  // Reads when a whole chunk has room, so that reading does not go on one by one.
  #read() {
    const most = chunksPerWorker * this.#workers * this.#chunkSize;
    if (this.#isRead || this.#isReading || this.#inHand > most - this.#chunkSize || !this.#hasRoom(most)) {
      return;
    }
    this.#isReading = true; // until it is over: a source may call next() and return() itself
    if (this.#requestsAreAwaited) {
      this.#readAsync(most);
    } else {
      this.#readSync(most);
    }
  }

  #hasRoom(most) {
    return !this.#isRead && this.#inHand < most && this.#requestsLength < this.#workers * longestTexts;
  }

  #readSync(most) {
    const end = performance.now() + readingMilliseconds;
    let isLate = false;
    try {
      while (!isLate && this.#hasRoom(most)) {
        const item = this.#source.next();
        if (isPromise(item.value)) {
          this.#requestsAreAwaited = true; // as it is to a loop that awaits
          this.#dispatch();
          this.#readAsync(most, item);
          return;
        }
        this.#accept(item);
        if (this.#requests.length >= this.#chunkSize) {
          this.#dispatch();
        }
        isLate = performance.now() > end;
      }
    } catch (error) {
      this.#fail(error);
    }
    this.#dispatch();
    if (isLate) {
      setImmediate(() => this.#readOn());
    } else {
      this.#isReading = false;
    }
    this.#answer();
  }

  #readOn() {
    this.#isReading = false;
    this.#serve();
  }

  // `first`: what is already taken from the source.
  async #readAsync(most, first) {
    try {
      let item = first;
      while (this.#hasRoom(most)) {
        item ??= await this.#source.next();
        const { value, done } = item;
        item = undefined;
        const request = isPromise(value) ? await value : value;
        this.#accept({ value: request, done });
        this.#dispatchSoon();
      }
    } catch (error) {
      this.#fail(error);
    }
    this.#readOn();
  }

  #accept({ value, done }) {
    if (this.#isRead) {
      return; // not wanted any more
    }
    if (done) {
      this.#isRead = true;
      return;
    }
    let request;
    try {
      request = requestOrRefusal(value);
    } catch (error) {
      // The source does not know: it is told as a loop would tell it.
      this.#closeSource().catch(() => {});
      throw error;
    }
    if (this.#isRead) {
      return; // a getter of the request has ended it
    }
    this.#requests.push(request);
    this.#requestsLength += lengthOf(request);
    ++this.#inHand;
  }

  // The labels before it come first.
  #fail(error) {
    if (!this.#isRead) {
      this.#isRead = true;
      this.#sourceError = { error };
    }
  }

  // What comes at the same time goes together.
  #dispatchSoon() {
    if (!this.#isDispatchDue) {
      this.#isDispatchDue = true;
      setImmediate(() => {
        this.#isDispatchDue = false;
        this.#dispatch();
      });
    }
  }

  #dispatch() {
    while (this.#given < chunksPerWorker * this.#workers && this.#requests.length > 0) {
      const chunk = { results: undefined, room: undefined };
      this.#chunks.push(chunk);
      this.#make(chunk, this.#nextRequests());
    }
  }

  // As many as a chunk has, fewer when they are long.
  #nextRequests() {
    let count = 0;
    let length = 0;
    while (count < Math.min(this.#chunkSize, this.#requests.length) && length < longestTexts) {
      length += lengthOf(this.#requests[count]);
      ++count;
    }
    this.#requestsLength -= length;
    return this.#requests.splice(0, count);
  }

  async #make(chunk, requests) {
    const texts = requests.filter((request) => typeof request === "string");
    ++this.#given;
    if (texts.length > 0) {
      await this.#makeTexts(chunk, texts);
    } else {
      await undefined; // as the others: refusals are not given before this is over
    }
    if (texts.length < requests.length) {
      chunk.results = new OutcomesAndRefusals(chunk.results, requests);
    }
    --this.#given;
    this.#dispatch();
    this.#serve();
  }

  async #makeTexts(chunk, texts) {
    try {
      const made = await native.makeLabels(texts.join("\n"), this.#lanes, this.#rooms.pop() ?? newRoom());
      this.#adapt(texts.length, made[1]);
      chunk.results = new Outcomes(made, texts.length);
      chunk.room = made[2];
    } catch (error) {
      chunk.results = { length: texts.length, take: () => error };
    }
  }

  #adapt(count, microseconds) {
    const wanted = Math.floor((chunkMicroseconds * count) / Math.max(microseconds, 1));
    this.#chunkSize = Math.max(1, Math.min(wanted, 2 * this.#chunkSize, largestChunk));
  }

  async #stop() {
    const isOpen = !this.#isRead;
    this.#isRead = true;
    this.#sourceError = undefined;
    native.stopLanes(this.#lanes);
    this.#requests = [];
    this.#requestsLength = 0;
    this.#chunks = [];
    this.#rooms = [];
    this.#taken = 0;
    this.#inHand = 0;
    for (const reader of this.#readers.splice(0)) {
      reader.resolve({ value: undefined, done: true });
    }
    if (isOpen) {
      await this.#closeSource();
    }
  }

  // An asynchronous source that is asked for its next request answers that first, which may take for ever; any other is
  // closed when it has answered.
  async #closeSource() {
    if (this.#sourceIsAsync && this.#isReading) {
      Promise.resolve(this.#source.return?.()).catch(() => {});
      return;
    }
    if (this.#isReading) {
      await undefined;
    }
    await this.#source.return?.();
  }
}
