import assert from "node:assert/strict";
import { test } from "node:test";
import { CommandQueue } from "../../../web/command_queue.js";

class Unanswered extends Error {}
class Refused extends Error {}

/// A queue whose calls are answered by hand, and whose pauses end by hand.
function makeQueue() {
  const sent = [];
  const pauses = [];
  const errors = [];
  const queue = new CommandQueue({
    wasAnswered: (error) => error instanceof Refused,
    onError: (kind, error) => errors.push([kind, error]),
    sleep: (ms) => new Promise((resolve) => pauses.push({ ms, end: resolve })),
  });
  const call = (name) => (options) =>
    new Promise((resolve, reject) => sent.push({ name, options, answer: resolve, fail: reject }));
  return { queue, sent, pauses, errors, call, names: () => sent.map(({ name }) => name) };
}

const settled = () => new Promise((resolve) => setImmediate(resolve));

test("a command is sent at once", () => {
  const { queue, names, call } = makeQueue();
  queue.send("Iris", call("open"));
  assert.deepEqual(names(), ["open"]);
  assert.equal(queue.isBusy("Iris"), true);
});

test("while one is under way only the latest one of its kind waits", async () => {
  const { queue, sent, names, call } = makeQueue();
  ["first", "second", "third"].forEach((name) => queue.send("Zoom", call(name)));
  assert.deepEqual(names(), ["first"]);
  sent[0].answer();
  await settled();
  assert.deepEqual(names(), ["first", "third"]);
  sent[1].answer();
  await settled();
  assert.equal(queue.isBusy("Zoom"), false);
});

test("kinds do not wait for each other", () => {
  const { queue, names, call } = makeQueue();
  queue.send("Zoom", call("zoom"));
  queue.send("Iris", call("iris"));
  assert.deepEqual(names(), ["zoom", "iris"]);
});

test("a failed command is reported and the next one is sent", async () => {
  const { queue, sent, names, errors, call } = makeQueue();
  queue.send("Iris", call("first"));
  queue.send("Iris", call("second"));
  const error = new Unanswered();
  sent[0].fail(error);
  await settled();
  assert.deepEqual(errors, [["Iris", error]]);
  assert.deepEqual(names(), ["first", "second"]);
});

test("a stop overtakes the command under way and drops the one that waits", async () => {
  const { queue, sent, names, call } = makeQueue();
  queue.send("Zoom", call("run"));
  queue.send("Zoom", call("faster"));
  queue.stop("Zoom", call("stop"));
  assert.deepEqual(names(), ["run", "stop"]);
  sent[1].answer();
  await settled();
  assert.deepEqual(names(), ["run", "stop"]);
});

test("a stop is sent once more after the command that it has overtaken has ended", async () => {
  const { queue, sent, names, call } = makeQueue();
  queue.send("Zoom", call("run"));
  queue.stop("Zoom", call("stop"));
  sent[1].answer();
  await settled();
  sent[0].answer();
  await settled();
  assert.deepEqual(names(), ["run", "stop", "stop"]);
  sent[2].answer();
  await settled();
  assert.equal(queue.isBusy("Zoom"), false);
  assert.equal(names().length, 3);
});

test("a stop is repeated until it is answered", async () => {
  const { queue, sent, pauses, names, call } = makeQueue();
  queue.stop("Zoom", call("stop"));
  for (let attempt = 0; attempt < 4; ++attempt) {
    sent[attempt].fail(new Unanswered());
    await settled();
    pauses[attempt].end();
    await settled();
  }
  assert.equal(names().length, 5);
  assert.deepEqual(pauses.map(({ ms }) => ms), [250, 500, 1000, 2000]);
  assert.deepEqual(sent.map(({ options }) => options.timeout), [2000, 4000, 6000, 8000, 10000]);
  sent[4].answer();
  await settled();
  assert.equal(queue.isBusy("Zoom"), false);
  assert.equal(names().length, 5);
});

test("a refusal answers a stop", async () => {
  const { queue, sent, names, call } = makeQueue();
  queue.stop("Zoom", call("stop"));
  sent[0].fail(new Refused());
  await settled();
  assert.equal(queue.isBusy("Zoom"), false);
  assert.deepEqual(names(), ["stop"]);
});

test("a command after an unanswered stop waits until the stop is answered", async () => {
  const { queue, sent, pauses, names, call } = makeQueue();
  queue.stop("Zoom", call("stop"));
  queue.send("Zoom", call("run"));
  sent[0].fail(new Unanswered());
  await settled();
  assert.deepEqual(names(), ["stop"]);
  pauses[0].end();
  await settled();
  sent[1].answer();
  await settled();
  assert.deepEqual(names(), ["stop", "stop", "run"]);
});

test("a second stop drops what waits for an unanswered one", async () => {
  const { queue, sent, names, call } = makeQueue();
  queue.stop("Zoom", call("stop"));
  queue.send("Zoom", call("run"));
  queue.stop("Zoom", call("stop"));
  sent[0].answer();
  await settled();
  assert.deepEqual(names(), ["stop"]);
  assert.equal(queue.isBusy("Zoom"), false);
});
