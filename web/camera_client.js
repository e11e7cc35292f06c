// The camera's remote-control API, for browsers and for Node 18 or later.
//
//   import { Camera } from "./camera_client.js";
//
//   const camera = new Camera("http://127.0.0.1:8080", { sessionId: "rv130-session" });
//   await camera.setZoomCtrl({ position: 500 });
//   const status = await camera.getCamStatus();
//
// There is one method for each command, made from the table in camera_commands.js. Its name and
// those of its parameters are the API's own with a lower-case start: SetNTPServer becomes
// `setNTPServer`, ID becomes `id`, OKMark becomes `okMark`. A method resolves to the reply's `Data`,
// or to {} if the reply has none, and rejects with one of the errors below.

import { COMMANDS } from "./camera_commands.js";

export { COMMANDS };

const PATH = "/cgi-bin/camera_remote.cgi";

/// Milliseconds; longer than the camera waits for its own parts (5 s).
const DEFAULT_TIMEOUT = 10_000;

const COMMANDS_BY_NAME = new Map(COMMANDS.map((row) => [row.name, row]));

/// The name of a method or of a method's parameter.
export function methodName(apiName) {
  return apiName.replace(/^[A-Z]+(?![a-z])|^[A-Z]/, (start) => start.toLowerCase());
}

// Errors.

/// A value that cannot be sent: of the wrong type, or a text with a character that the camera does
/// not read. Thrown before anything is sent.
export class InvalidValue extends TypeError {
  name = "InvalidValue";
}

/// Base of all errors of an exchange with the camera; `command` names the command.
export class CameraError extends Error {
  constructor(command, message, options) {
    super(`${command}: ${message}`, options);
    this.name = new.target.name;
    this.command = command;
  }
}

/// Base of the refusals. `byCamera` is true if the camera itself has refused. Otherwise the checks in
/// front of it have, and nothing was sent or stored. `data` is the data of the reply, if it has any;
/// do not rely on it.
export class Refusal extends CameraError {
  constructor(command, byCamera, data) {
    super(command, new.target.reason);
    this.byCamera = byCamera;
    this.data = data;
  }
}

/// The request makes no sense to the camera (`byCamera`), or a parameter is missing or refused.
export class RequestedError extends Refusal {
  static reason = "the camera refuses the request or one of its parameters";
}

/// The camera refuses the request in its present state; try again later.
export class DisableError extends Refusal {
  static reason = "not available in the camera's present state";
}

/// The session is not the one that is logged in: log in again and set `camera.sessionId`.
export class SessionError extends Refusal {
  static reason = "not logged in, or another client has logged in since";
}

/// The camera finds no command or no session id in the request.
export class FormatError extends Refusal {
  static reason = "the camera finds no command or no session id in the request";
}

/// The camera does not know the command.
export class CommandError extends Refusal {
  static reason = "the camera does not know this command";
}

const REFUSALS = { RequestedError, DisableError, SessionError, FormatError, CommandError };

/// The camera has answered, but a text in the reply (a label with a quote or a backslash, for
/// example) makes it invalid JSON. The command was carried out; its data cannot be read. `reply` is
/// the text.
export class InvalidReply extends CameraError {
  constructor(command, reply, cause) {
    super(command, "a text in the camera's reply makes it invalid JSON", { cause });
    this.reply = reply;
  }
}

/// The camera has not answered. `reason` says why: "network" (no connection), "timeout", "http" (the
/// web server answers with an error; `status` is its number, 500 if the camera's own parts are
/// down), "empty" (no reply text) or "reply" (a text that is not a reply of this API).
export class CameraUnreachable extends CameraError {
  constructor(command, reason, message, { status, cause } = {}) {
    super(command, message, { cause });
    this.reason = reason;
    this.status = status;
  }
}

// Requests. The camera does not parse them as JSON, it scans them: white space ends a request, a
// value ends at the first quote, comma or brace, and a member is found by the first occurrence of
// its name. So requests are compact, in a fixed order, and free of whatever the scan would misread.

/// What a text cannot hold. The camera would take a backslash, but it prints texts as they are, so
/// every reply with that text would be invalid JSON.
const FORBIDDEN = /[\u0000-\u0020\u007f",}\\]|\p{Surrogate}/u;

const SMALLEST_NUMBER = -(2 ** 31);
const LARGEST_NUMBER = 2 ** 31 - 1;
/// The blocks of an upload selection may also be unsigned.
const LARGEST_BLOCK = 2 ** 32 - 1;

const CLIPS_PER_BLOCK = 32;
const BLOCKS = 125;
const LARGEST_CLIP = BLOCKS * CLIPS_PER_BLOCK;

function checkText(name, text) {
  const found = FORBIDDEN.exec(text);
  if (found) {
    throw new InvalidValue(
      `${name} cannot hold ${describe(found[0])} (character ${found.index + 1}): ` +
        'white space, control characters, quote, comma, "}" and backslash cannot be sent',
    );
  }
}

function describe(character) {
  const code = character.codePointAt(0);
  return /[",}\\]/.test(character) ? character : `U+${code.toString(16).padStart(4, "0")}`;
}

function serializeValue(name, value) {
  if (typeof value === "string") {
    checkText(name, value);
    return `"${value}"`;
  }
  const largest = /^block\d+$/.test(name) ? LARGEST_BLOCK : LARGEST_NUMBER;
  if (!Number.isInteger(value) || value < SMALLEST_NUMBER || value > largest) {
    throw new InvalidValue(
      `${name} must be a text or a whole number from ${SMALLEST_NUMBER} to ${largest}, not ${show(value)}`,
    );
  }
  return String(value);
}

function serializeRequest(name, sessionId, params) {
  const values = Object.entries(params ?? {});
  const members = [`"Command":${serializeValue("Command", name)}`];
  if (sessionId !== undefined) {
    members.push(`"SessionID":${serializeValue("SessionID", sessionId)}`);
  }
  if (params) {
    const texts = values.map(([key, value]) => `"${key}":${serializeValue(key, value)}`);
    members.push(`"Params":{${texts.join(",")}}`);
  }
  const request = `{"Request":{${members.join(",")}}}`;
  values.forEach(([key, value]) => checkScan(request, key, String(value)));
  return request;
}

/// Checks that the camera's scan for a parameter finds the parameter and not another one's value
/// that holds its name.
function checkScan(request, name, value) {
  const params = request.slice(request.indexOf('"Params":') + '"Params":'.length);
  const colon = params.indexOf(":", params.indexOf(name) + name.length);
  const read = /^:"?([^",}]*)/.exec(params.slice(colon))[1];
  if (read !== value) {
    throw new InvalidValue(
      `${name} cannot be sent: another value holds the word "${name}", and the camera would read ` +
        `"${read}"`,
    );
  }
}

/// A method's parameters under their names on the wire, in the order of the table; throws for what
/// the camera would not take as it is.
function wireParameters(row, params) {
  const names = Object.keys(row.parameters);
  const known = names.map(methodName);
  const unknown = Object.keys(params).filter((name) => !known.includes(name));
  if (unknown.length > 0) {
    const list = known.length > 0 ? `its parameters are ${known.join(", ")}` : "it has none";
    throw new InvalidValue(`${row.name} has no parameter ${unknown[0]}; ${list}`);
  }
  return Object.assign({}, ...names.map((name) => wireParameter(row, name, params[methodName(name)])));
}

function wireParameter(row, name, value) {
  const kind = row.parameters[name];
  if (!KINDS[kind.type].allows(value, kind)) {
    const allowed = KINDS[kind.type].describe(kind);
    throw new InvalidValue(`${row.name}: ${methodName(name)} must be ${allowed}, not ${show(value)}`);
  }
  return kind.type === "clips" ? clipBlocks(value) : { [name]: value };
}

/// What may be sent for each kind of parameter. The camera takes other words, too, but for something
/// else, truncates longer texts and keeps the low bits of larger numbers.
const KINDS = {
  number: {
    allows: (value, { smallest, largest }) =>
      Number.isInteger(value) && value >= smallest && value <= largest,
    describe: ({ smallest, largest }) => `a whole number from ${smallest} to ${largest}`,
  },
  word: {
    allows: (value, { words }) => words.includes(value),
    describe: ({ words }) => `one of ${words.map(show).join(", ")}`,
  },
  text: {
    allows: (value, { longest }) =>
      typeof value === "string" && new TextEncoder().encode(value).length <= longest,
    describe: ({ longest }) => (longest < Infinity ? `a text of at most ${longest} bytes` : "a text"),
  },
  clips: {
    allows: Array.isArray,
    describe: () => "a list of clip numbers",
  },
};

const show = (value) => (typeof value === "string" ? JSON.stringify(value) : String(value));

/// The bitmap of an upload selection: clip 1 is the lowest bit of block0, clip 33 that of block1.
/// Blocks without a clip are left out.
/// @param clips  numbers from 1 to 4000, in any order
export function clipBlocks(clips) {
  const blocks = new Map();
  for (const clip of [...clips].sort((a, b) => a - b)) {
    if (!Number.isInteger(clip) || clip < 1 || clip > LARGEST_CLIP) {
      throw new InvalidValue(`a clip is a whole number from 1 to ${LARGEST_CLIP}, not ${show(clip)}`);
    }
    const block = `block${Math.floor((clip - 1) / CLIPS_PER_BLOCK)}`;
    const bit = 1 << (clip - 1) % CLIPS_PER_BLOCK;
    blocks.set(block, ((blocks.get(block) ?? 0) | bit) >>> 0);
  }
  return Object.fromEntries(blocks);
}

// Replies.

const isObject = (value) => typeof value === "object" && !Array.isArray(value);

const ENVELOPE = /^\{"Response":\{(?:"Requested":"[^"]*",)?"Result":"([A-Za-z]+)"/;

/// The data of a reply that reports success; throws for any other one.
function readReply(command, text) {
  if (text === "") {
    throw new CameraUnreachable(command, "empty", "the reply is empty");
  }
  let response;
  let cause;
  try {
    response = JSON.parse(text)?.Response;
  } catch (error) {
    cause = error;
    response = { Requested: command, Result: ENVELOPE.exec(text)?.[1] };
  }
  const { Requested, Result, Data } = response ?? {};
  if (Object.hasOwn(REFUSALS, Result)) {
    throw new REFUSALS[Result](command, Requested !== undefined, Data);
  }
  if (Result !== "Success" || !isObject(Data ?? {})) {
    throw new CameraUnreachable(command, "reply", "this is not a reply of the API", { cause });
  }
  if (cause) {
    throw new InvalidReply(command, text, cause);
  }
  return Data ?? {};
}

// The client.

/// One camera. Stateless but for the session id, so several requests may be under way at a time.
export class Camera {
  /// @param baseUrl    address of the camera's web server; "" in a page that comes from there
  /// @param sessionId  as issued by the login; may also be set later
  /// @param timeout    milliseconds until a request is given up; by default a time that suits the
  ///                   command
  /// @param onExchange called after each exchange with {command, request, reply, status, ms, error}:
  ///                   request and reply as texts (with all passwords), the HTTP status and, if the
  ///                   method rejects, its error. What is missing is undefined
  constructor(baseUrl = "", { sessionId = "", timeout, onExchange } = {}) {
    this.url = baseUrl.replace(/\/+$/, "") + PATH;
    this.sessionId = sessionId;
    this.timeout = timeout;
    this.onExchange = onExchange;
  }

  /// Sends any command, also one that is not in the table.
  /// @param command  its name in the API
  /// @param params   its parameters under their names in the API; numbers and texts
  /// @param signal, timeout, keepalive  as with the methods
  async send(command, params, { signal, timeout, keepalive = false } = {}) {
    const row = COMMANDS_BY_NAME.get(command);
    const sessionId = row?.needsSession === false ? undefined : this.sessionId;
    const request = serializeRequest(command, sessionId, inOrder(row, params));
    const limit = timeout ?? this.timeout ?? row?.timeout ?? DEFAULT_TIMEOUT;
    const exchange = { command, request };
    const start = performance.now();
    try {
      await this.#post(exchange, { signal, timeout: limit, keepalive });
      return readReply(command, exchange.reply);
    } catch (error) {
      exchange.error = error;
      throw error;
    } finally {
      exchange.ms = performance.now() - start;
      this.onExchange?.(exchange);
    }
  }

  /// Calls `fn` again and again. The next call begins some time after the previous one has ended,
  /// so calls never overlap; while the camera is unreachable that time doubles each time.
  /// @param fn           called with {signal}, to be passed on to a method, so that `stop` can
  ///                     abort the request
  /// @param interval     milliseconds between an answer and the next call
  /// @param maxInterval  the same, at most, while the camera is unreachable
  /// @param onResult     receives what `fn` resolves to
  /// @param onError      receives the error that `fn` rejects with
  /// @param signal       an AbortSignal that stops the poll
  /// @return a `Poll`
  poll(fn, options) {
    return new Poll(fn, options);
  }

  async #post(exchange, { signal, timeout, keepalive }) {
    const { command } = exchange;
    signal?.throwIfAborted();
    const abort = new AbortController();
    const timer = setTimeout(() => abort.abort(), timeout);
    const forward = () => abort.abort();
    signal?.addEventListener("abort", forward);
    try {
      const response = await fetch(this.url, {
        method: "POST",
        headers: { "Content-Type": "application/json" },
        body: exchange.request,
        cache: "no-store",
        keepalive,
        signal: abort.signal,
      });
      exchange.status = response.status;
      exchange.reply = await response.text();
    } catch (cause) {
      signal?.throwIfAborted();
      if (abort.signal.aborted) {
        throw new CameraUnreachable(command, "timeout", `no reply within ${timeout} ms`, { cause });
      }
      throw new CameraUnreachable(command, "network", "no connection to the camera", { cause });
    } finally {
      clearTimeout(timer);
      signal?.removeEventListener("abort", forward);
    }
    const { status } = exchange;
    if (status !== 200) {
      const message = `the web server answers with HTTP status ${status}`;
      throw new CameraUnreachable(command, "http", message, { status });
    }
  }
}

/// The parameters in the order of the table, then those that are not in it. A command that has
/// parameters is never sent without any: the camera would store zeros.
function inOrder(row, params) {
  const names = wireNames(row);
  if (names.length === 0) {
    return params;
  }
  const known = names.filter((name) => Object.hasOwn(params ?? {}, name));
  return Object.assign({}, ...known.map((name) => ({ [name]: params[name] })), params);
}

/// Of the blocks of a selection the camera finds only those in ascending order.
function wireNames(row) {
  const names = Object.keys(row?.parameters ?? {});
  return names.includes("Clips") ? Array.from({ length: BLOCKS }, (_, i) => `block${i}`) : names;
}

// The methods. Those of commands without parameters take the options alone. Options: `signal` (an
// AbortSignal; the method then rejects with its reason), `timeout` in milliseconds, and `keepalive`,
// which lets the request outlive the page, for a stop command while the page is being unloaded.
for (const row of COMMANDS) {
  const hasParameters = Object.keys(row.parameters).length > 0;
  const method = hasParameters
    ? async function (params = {}, options) {
        return this.send(row.name, wireParameters(row, params), options);
      }
    : async function (options) {
        return this.send(row.name, undefined, options);
      };
  Object.defineProperty(Camera.prototype, methodName(row.name), { value: method });
}

/// A call that is repeated until it is stopped; made by `Camera.poll`.
export class Poll {
  #fn;
  #options;
  #abort = new AbortController();
  #delay;
  #timer;
  #calling = false;
  #paused = false;

  constructor(fn, { interval = 1000, maxInterval = 5000, onResult, onError, signal } = {}) {
    this.#fn = fn;
    this.#options = { interval, maxInterval, onResult, onError };
    this.#delay = interval;
    if (signal?.aborted) {
      this.stop();
    }
    signal?.addEventListener("abort", () => this.stop(), { signal: this.#abort.signal });
    this.#call();
  }

  /// Ends the poll for good and aborts the call under way; nothing is reported any more.
  stop() {
    clearTimeout(this.#timer);
    this.#abort.abort();
  }

  /// Makes no further calls until `resume`. The result of the one under way is still reported.
  pause() {
    this.#paused = true;
    clearTimeout(this.#timer);
  }

  /// Goes on after `pause`, at once.
  resume() {
    if (this.#paused) {
      this.#paused = false;
      this.#call();
    }
  }

  /// Calls at once instead of after the rest of the interval.
  now() {
    clearTimeout(this.#timer);
    this.#call();
  }

  async #call() {
    if (this.#calling || this.#paused || this.#abort.signal.aborted) {
      return;
    }
    this.#calling = true;
    try {
      await this.#callOnce();
    } finally {
      // Also after an exception in a callback.
      this.#calling = false;
      if (!this.#paused && !this.#abort.signal.aborted) {
        this.#timer = setTimeout(() => this.#call(), this.#delay);
      }
    }
  }

  async #callOnce() {
    const { interval, maxInterval, onResult, onError } = this.#options;
    const outcome = await Promise.resolve({ signal: this.#abort.signal })
      .then(this.#fn)
      .then((result) => ({ result }), (error) => ({ error }));
    const lost = outcome.error instanceof CameraUnreachable;
    this.#delay = lost ? Math.min(this.#delay * 2, maxInterval) : interval;
    if (this.#abort.signal.aborted) {
      return;
    }
    if ("error" in outcome) {
      onError?.(outcome.error);
    } else {
      onResult?.(outcome.result);
    }
  }
}
