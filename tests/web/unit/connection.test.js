import assert from "node:assert/strict";
import { afterEach, beforeEach, test } from "node:test";
import { CameraUnreachable, RequestedError, SessionError } from "../../../web/camera_client.js";
import { Connection } from "../../../web/connection.js";

// Node 18 has none.
globalThis.CustomEvent ??= class extends Event {
  constructor(type, { detail }) {
    super(type);
    this.detail = detail;
  }
};

/// A camera whose polls are run by hand.
class FakeCamera {
  sessionId = "";
  polls = [];
  replies = {};

  poll(call, options) {
    const poll = { call, options, running: true, paused: false };
    this.polls.push(poll);
    return {
      stop: () => (poll.running = false),
      pause: () => (poll.paused = true),
      resume: () => (poll.paused = false),
      now: () => {},
    };
  }

  /// Lets every poll that runs ask once.
  async turn() {
    for (const poll of this.polls.filter(({ running, paused }) => running && !paused)) {
      await Promise.resolve(poll.call({})).then(poll.options.onResult, poll.options.onError);
    }
  }

  async #reply(command) {
    const reply = this.replies[command];
    if (reply instanceof Error) {
      throw reply;
    }
    return typeof reply === "function" ? reply() : reply;
  }

  getCamStatus = () => this.#reply("GetCamStatus");
  heartbeatConfirmation = () => this.#reply("HeartbeatConfirmation");
  sessionRenewal = () => this.#reply("SessionRenewal");
}

let camera;
let page;
let now;
let connection;
let events;
const intervals = [];
const { setInterval: realSetInterval } = globalThis;

beforeEach(() => {
  globalThis.setInterval = (call) => intervals.push(call);
  intervals.length = 0;
  camera = new FakeCamera();
  camera.replies = {
    GetCamStatus: { TC: "01:00:00.00" },
    HeartbeatConfirmation: { StudioTally: "Program" },
    SessionRenewal: {},
  };
  page = new EventTarget();
  page.hidden = false;
  now = 0;
  connection = new Connection(camera, { page, now: () => now });
  events = [];
  for (const type of ["state", "tally", "session", "status"]) {
    connection.addEventListener(type, ({ detail }) => events.push([type, detail]));
  }
});

afterEach(() => {
  globalThis.setInterval = realSetInterval;
});

const last = (type) => events.filter(([of]) => of === type).at(-1)?.[1];
const tick = () => intervals.forEach((call) => call());

async function startLoggedIn() {
  connection.start();
  await connection.logIn("id");
  await camera.turn();
}

test("without a session id it knows the tally and asks for a login", async () => {
  connection.start();
  await camera.turn();
  assert.equal(last("session"), "none");
  assert.equal(last("tally"), "Program");
  assert.equal(last("state").text, "live");
  assert.equal(last("status"), undefined);
});

test("a session id from before is tried once the camera answers", async () => {
  camera.sessionId = "stored";
  connection.start();
  assert.equal(last("session"), undefined);
  await camera.turn();
  await camera.turn();
  assert.equal(last("session"), "valid");
});

for (const Refusal of [SessionError, RequestedError]) {
  test(`a session id from before that is refused with a ${Refusal.name} is lost`, async () => {
    camera.sessionId = "stored";
    camera.replies.SessionRenewal = new Refusal("SessionRenewal");
    connection.start();
    await camera.turn();
    await camera.turn();
    assert.equal(last("session"), "lost");
  });
}

test("a session id from before is tried again if the camera does not answer", async () => {
  camera.sessionId = "stored";
  camera.replies.SessionRenewal = new CameraUnreachable("SessionRenewal", "http", "error", { status: 500 });
  connection.start();
  await camera.turn();
  assert.equal(last("session"), undefined);
  camera.replies.SessionRenewal = {};
  await camera.turn();
  await camera.turn();
  assert.equal(last("session"), "valid");
});

test("logged in it reports the status", async () => {
  await startLoggedIn();
  assert.equal(connection.hasSession, true);
  assert.deepEqual(last("status"), { TC: "01:00:00.00" });
  assert.deepEqual(last("state"), { state: "live", text: "live" });
  assert.equal(last("tally"), "Program");
});

test("says how old the last answer is, and the tally is unknown by then", async () => {
  await startLoggedIn();
  now = 1900;
  tick();
  assert.equal(last("state").text, "live");
  assert.equal(last("tally"), "Program");
  now = 4000;
  tick();
  assert.deepEqual(last("state"), { state: "late", text: "last answer 4 s ago" });
  assert.equal(last("tally"), "unknown");
  await camera.turn();
  assert.equal(last("state").text, "live");
  assert.equal(last("tally"), "Program");
});

test("an unreachable camera is lost, with the reason, and its tally unknown at once", async () => {
  await startLoggedIn();
  camera.replies.GetCamStatus = new CameraUnreachable("GetCamStatus", "timeout", "no reply");
  await camera.turn();
  assert.deepEqual(last("state"), { state: "lost", text: "lost and retrying: no reply" });
  assert.equal(last("tally"), "unknown");
});

test("a status that takes as long as a silent daemon's is none", async () => {
  await startLoggedIn();
  camera.replies.GetCamStatus = () => {
    now += 5000;
    return { TC: "00:00:00:00" };
  };
  await camera.turn();
  assert.deepEqual(last("status"), { TC: "01:00:00.00" });
  assert.equal(last("state").state, "lost");
});

test("a lost session stops the polls of the session, not that of the tally", async () => {
  await startLoggedIn();
  connection.noteExchange({ command: "GetCamStatus", status: 200, ms: 1, error: new SessionError("GetCamStatus") });
  assert.equal(last("session"), "lost");
  assert.deepEqual(camera.polls.map(({ running }) => running), [true, false, false]);
  connection.noteExchange({ command: "SetZoomCtrl", status: 200, ms: 1, error: new SessionError("SetZoomCtrl") });
  assert.equal(events.filter(([type]) => type === "session").length, 3);
});

test("a refused login keeps the session id", async () => {
  await startLoggedIn();
  camera.replies.SessionRenewal = new SessionError("SessionRenewal");
  await assert.rejects(connection.logIn("other"), SessionError);
  assert.equal(camera.sessionId, "id");
});

test("hidden it pauses the polls but renews the session", async () => {
  await startLoggedIn();
  page.hidden = true;
  page.dispatchEvent(new Event("visibilitychange"));
  assert.deepEqual(camera.polls.map(({ paused }) => paused), [true, true, false]);
  assert.equal(last("tally"), "unknown");
  page.hidden = false;
  page.dispatchEvent(new Event("visibilitychange"));
  assert.deepEqual(camera.polls.map(({ paused }) => paused), [false, false, false]);
});

test("events come only when something has changed", async () => {
  await startLoggedIn();
  const before = events.length;
  tick();
  await camera.turn();
  assert.deepEqual(events.slice(before).map(([type]) => type), ["status"]);
});
