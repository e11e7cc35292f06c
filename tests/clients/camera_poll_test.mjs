// The polls of the JavaScript client, on a clock that the test moves: a program of its own, for this
// clock stands still for everything else, too.

import assert from "node:assert/strict";
import { test } from "node:test";

import { Camera, CameraUnreachable, DisableError } from "../../web/camera_client.js";

function fakeClock(context) {
  let timers = [];
  let now = 0;
  context.mock.method(globalThis, "setTimeout", (callback, delay) => {
    const timer = { callback, at: now + delay };
    timers.push(timer);
    return timer;
  });
  context.mock.method(globalThis, "clearTimeout", (timer) => {
    timers = timers.filter((other) => other !== timer);
  });
  return {
    waits: () => timers.map(({ at }) => at - now),
    async advance(milliseconds) {
      now += milliseconds;
      const due = timers.filter(({ at }) => at <= now);
      timers = timers.filter(({ at }) => at > now);
      due.forEach(({ callback }) => callback());
      await settled();
    },
  };
}

/// Until all promises that can settle have settled.
const settled = () => new Promise((resolve) => setImmediate(resolve));

/// A function to poll whose calls the test ends one by one.
function pollable() {
  const pending = [];
  const fn = ({ signal }) =>
    new Promise((resolve, reject) => pending.push({ resolve, reject, signal }));
  return {
    fn,
    pending,
    async answer(result) {
      pending.shift().resolve(result);
      await settled();
    },
    async fail(error) {
      pending.shift().reject(error);
      await settled();
    },
  };
}

const lost = () => new CameraUnreachable("GetCamStatus", "network", "gone");

test("a poll never overlaps and waits after each answer", async (context) => {
  const clock = fakeClock(context);
  const { fn, pending, answer: reply } = pollable();
  const results = [];
  const onResult = (result) => results.push(result);
  const poll = new Camera().poll(fn, { interval: 500, onResult });
  await settled();
  assert.equal(pending.length, 1);
  await clock.advance(60_000);
  poll.now();
  await settled();
  assert.equal(pending.length, 1);
  await reply("first");
  assert.deepEqual(results, ["first"]);
  assert.equal(pending.length, 0);
  assert.deepEqual(clock.waits(), [500]);
  await clock.advance(499);
  assert.equal(pending.length, 0);
  await clock.advance(1);
  assert.equal(pending.length, 1);
  await reply("second");
  assert.deepEqual(results, ["first", "second"]);
  poll.now();
  await settled();
  assert.equal(pending.length, 1);
  assert.deepEqual(clock.waits(), []);
  poll.stop();
});

test("a poll slows down while the camera is unreachable", async (context) => {
  const clock = fakeClock(context);
  const { fn, answer: reply, fail } = pollable();
  const errors = [];
  const onError = (error) => errors.push(error);
  const poll = new Camera().poll(fn, { interval: 1000, maxInterval: 5000, onError });
  await settled();
  const waits = [];
  for (let round = 0; round < 4; ++round) {
    await fail(lost());
    waits.push(...clock.waits());
    await clock.advance(5000);
  }
  await reply("back");
  waits.push(...clock.waits());
  assert.deepEqual(waits, [2000, 4000, 5000, 5000, 1000]);
  assert.equal(errors.length, 4);
  await clock.advance(1000);
  await fail(new DisableError("GetCamStatus", "DisableError"));
  assert.deepEqual(clock.waits(), [1000]);
  assert.equal(errors.length, 5);
  poll.stop();
});

test("a stopped poll aborts its request and reports nothing more", async (context) => {
  const clock = fakeClock(context);
  const abort = new AbortController();
  for (const stop of [(poll) => poll.stop(), () => abort.abort()]) {
    const { fn, pending, answer: reply } = pollable();
    const results = [];
    const onResult = (result) => results.push(result);
    const poll = new Camera().poll(fn, { onResult, signal: abort.signal });
    await settled();
    stop(poll);
    assert.equal(pending[0].signal.aborted, true);
    await reply("late");
    poll.resume();
    poll.now();
    await settled();
    assert.deepEqual([results, pending, clock.waits()], [[], [], []]);
  }
  const { fn, pending } = pollable();
  new Camera().poll(fn, { signal: abort.signal });
  await settled();
  assert.deepEqual(pending, []);
});

test("a paused poll waits for resume", async (context) => {
  const clock = fakeClock(context);
  const { fn, pending, answer: reply } = pollable();
  const results = [];
  const poll = new Camera().poll(fn, { onResult: (result) => results.push(result) });
  await settled();
  poll.pause();
  await reply("under way");
  assert.deepEqual(results, ["under way"]);
  assert.deepEqual(clock.waits(), []);
  poll.now();
  await settled();
  assert.equal(pending.length, 0);
  poll.resume();
  poll.resume();
  await settled();
  assert.equal(pending.length, 1);
  await reply("again");
  assert.deepEqual(clock.waits(), [1000]);
  poll.pause();
  assert.deepEqual(clock.waits(), []);
  poll.stop();
});
