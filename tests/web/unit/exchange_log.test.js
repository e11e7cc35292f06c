import assert from "node:assert/strict";
import { test } from "node:test";
import { asCurl, ExchangeLog, maskSecrets } from "../../../web/exchange_log.js";

const commands = (log, options) => log.entries(options).map(({ command }) => command);

test("keeps the last 100 exchanges, latest first", () => {
  const log = new ExchangeLog();
  for (let i = 0; i < 120; ++i) {
    log.add({ command: `Command${i}` });
  }
  const kept = commands(log, { withPolls: true });
  assert.equal(kept.length, 100);
  assert.equal(kept[0], "Command119");
  assert.equal(kept[99], "Command20");
});

test("polls do not push out the others", () => {
  const log = new ExchangeLog();
  log.add({ command: "SetZoomCtrl" });
  for (let i = 0; i < 100; ++i) {
    log.add({ command: "GetCamStatus" });
  }
  assert.deepEqual(commands(log, { withPolls: false }), ["SetZoomCtrl"]);
  assert.equal(commands(log, { withPolls: true }).includes("SetZoomCtrl"), false);
});

test("tells of every change", () => {
  const log = new ExchangeLog();
  let changes = 0;
  log.addEventListener("change", () => ++changes);
  log.add({ command: "GetSystemInfo" });
  log.add({ command: "GetCamStatus" });
  assert.equal(changes, 2);
});

test("masks passwords and stream keys and nothing else", () => {
  assert.equal(
    maskSecrets('{"Username":"op","Password":"secret","StreamKey":"abcd","StreamId":"cam"}'),
    '{"Username":"op","Password":"••••","StreamKey":"••••","StreamId":"cam"}',
  );
  assert.equal(maskSecrets('{"Password":""}'), '{"Password":"••••"}');
});

test("quotes a request for the shell", () => {
  assert.equal(
    asCurl("http://camera/cgi-bin/camera_remote.cgi", `{"Alias":"it's"}`),
    `curl --data '{"Alias":"it'\\''s"}' 'http://camera/cgi-bin/camera_remote.cgi'`,
  );
});
