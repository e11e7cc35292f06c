// What the page knows about the camera and how well it knows it: polls the status and the studio
// tally, keeps the session alive, and says when what it shows is no longer true.

import { CameraUnreachable, InvalidReply, SessionError } from "./camera_client.js";
import { repairReply } from "./repair_reply.js";
import { reasonInWords } from "./words.js";

const STATUS_INTERVAL = 250;
const TALLY_INTERVAL = 500;
/// A session lives for 30 s after a renewal.
const RENEWAL_INTERVAL = 10_000;
const LONGEST_INTERVAL = 5000;

/// After this time without an answer the page says how old its picture is; from then on
/// the tally is unknown, too.
const LATE = 2000;

/// The handler answers "Success" even when the camera's control daemon stays silent, but only after
/// 5 s, and with nothing but zeros.
const SILENT = 4500;

/// Events, each a CustomEvent:
///   status   detail: the data of GetCamStatus
///   tally    detail: "Off", "Program", "Preview" or "unknown"
///   state    detail: {state, text}; the state is "connecting", "live", "late", "lost" or "paused"
///   session  detail: "none", "valid" or "lost"
///   latency  detail: milliseconds of the last call
export class Connection extends EventTarget {
  #camera;
  #page;
  #now;
  #polls = {};
  #last;
  #failure;
  #status;
  #shown = {};

  /// @param page  the document, whose visibility decides whether it polls
  /// @param now   returns milliseconds
  constructor(camera, { page = document, now = () => performance.now() } = {}) {
    super();
    this.#camera = camera;
    this.#page = page;
    this.#now = now;
    page.addEventListener("visibilitychange", () => this.#followVisibility());
  }

  /// Begins to poll. If the client has a `sessionId` from before, it is tried as soon as the camera
  /// answers.
  start() {
    this.#polls.tally = this.#poll(
      TALLY_INTERVAL,
      (options) => this.#camera.heartbeatConfirmation(options),
      (data) => this.#takeTally(data),
    );
    setInterval(() => this.#showState(), TALLY_INTERVAL);
    if (!this.#camera.sessionId) {
      this.#emit("session", "none");
    }
    this.#followVisibility();
  }

  /// Calls a listener with the detail of each event of a type.
  on(type, listener) {
    this.addEventListener(type, ({ detail }) => listener(detail));
  }

  /// The last status that the camera has reported.
  get status() {
    return this.#status;
  }

  get hasSession() {
    return this.#shown.session === "valid";
  }

  /// Tries a session id. Rejects with the client's error, and then keeps the present session.
  async logIn(sessionId) {
    const before = this.#camera.sessionId;
    this.#camera.sessionId = sessionId;
    try {
      await this.#camera.sessionRenewal({ update: 1 });
    } catch (error) {
      this.#camera.sessionId = before;
      throw error;
    }
    this.#startSession();
  }

  /// Ends the session in the camera, too.
  async logOut() {
    await this.#camera.sessionRenewal({ update: 0 });
    this.#endSession("none");
  }

  /// To be called with each exchange of the camera's client.
  noteExchange({ ms, error, status, command }) {
    if (status !== undefined) {
      this.#emit("latency", ms);
    }
    // The server may let a request pass that carries an older id; what counts is the present one.
    if (error instanceof SessionError && command !== "SessionRenewal") {
      this.#endSession("lost");
    }
  }

  /// Asks for the status now, for example after a command has changed something.
  refresh() {
    this.#polls.status?.now();
    this.#polls.tally?.now();
  }

  #startSession() {
    this.#stopSession();
    this.#emit("session", "valid");
    this.#polls.status = this.#poll(
      STATUS_INTERVAL,
      (options) => this.#readStatus(options),
      (data) => this.#takeStatus(data),
    );
    // Goes on while the page is hidden: an operator who looks elsewhere stays logged in.
    this.#polls.renewal = this.#camera.poll(
      (options) => this.#camera.sessionRenewal({ update: 1 }, options),
      {
        interval: RENEWAL_INTERVAL,
        onError: (error) => error instanceof SessionError && this.#endSession("lost"),
      },
    );
    this.#followVisibility();
  }

  #poll(interval, call, onResult) {
    const onError = (error) => this.#fail(error);
    return this.#camera.poll(call, { interval, maxInterval: LONGEST_INTERVAL, onResult, onError });
  }

  async #tryStoredSession() {
    try {
      await this.logIn(this.#camera.sessionId);
    } catch (error) {
      if (!(error instanceof CameraUnreachable)) {
        this.#emit("session", "lost");
      }
    }
  }

  #stopSession() {
    this.#polls.status?.stop();
    this.#polls.renewal?.stop();
    delete this.#polls.status;
    delete this.#polls.renewal;
  }

  #endSession(how) {
    if (!this.hasSession) {
      return;
    }
    this.#stopSession();
    this.#emit("session", how);
  }

  async #readStatus(options) {
    const begin = this.#now();
    let data;
    try {
      data = await this.#camera.getCamStatus(options);
    } catch (error) {
      data = error instanceof InvalidReply ? repairReply(error.reply) : undefined;
      if (data === undefined) {
        throw error;
      }
    }
    if (this.#now() - begin >= SILENT) {
      throw new CameraUnreachable("GetCamStatus", "silent", "the camera does not answer its web server");
    }
    return data;
  }

  #takeStatus(data) {
    this.#status = data;
    this.#noteAnswer();
    this.dispatchEvent(new CustomEvent("status", { detail: data }));
  }

  #takeTally(data) {
    if (this.#shown.session === undefined) {
      this.#tryStoredSession();
    }
    if (!this.hasSession) {
      this.#noteAnswer();
    }
    this.#shown.tallyAt = this.#now();
    this.#shown.reported = data.StudioTally;
    this.#showState();
  }

  #noteAnswer() {
    this.#last = this.#now();
    this.#failure = undefined;
    this.#showState();
  }

  #fail(error) {
    if (!(error instanceof SessionError)) {
      this.#failure = error;
      this.#showState();
    }
  }

  #showState() {
    const state = this.#state();
    this.#emit("state", state, state.text);
    const isFresh = this.#now() - this.#shown.tallyAt < LATE && state.state === "live";
    this.#emit("tally", isFresh ? this.#shown.reported : "unknown");
  }

  #state() {
    if (this.#page.hidden) {
      return { state: "paused", text: "paused while hidden" };
    }
    if (this.#failure !== undefined) {
      return { state: "lost", text: `lost and retrying: ${reasonInWords(this.#failure)}` };
    }
    if (this.#last === undefined) {
      return { state: "connecting", text: "connecting" };
    }
    const age = this.#now() - this.#last;
    if (age < LATE) {
      return { state: "live", text: "live" };
    }
    return { state: "late", text: `last answer ${Math.round(age / 1000)} s ago` };
  }

  #followVisibility() {
    for (const poll of [this.#polls.status, this.#polls.tally]) {
      if (this.#page.hidden) {
        poll?.pause();
      } else {
        poll?.resume();
      }
    }
    this.#showState();
  }

  /// Emits an event if it differs from the last one of its kind.
  #emit(type, detail, key = detail) {
    if (this.#shown[type] !== key) {
      this.#shown[type] = key;
      this.dispatchEvent(new CustomEvent(type, { detail }));
    }
  }
}
