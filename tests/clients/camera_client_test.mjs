// The JavaScript client against a web server that misbehaves and, at the address in CAMERA_URL with
// the session CAMERA_SESSION, the simulated camera.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createServer } from "node:http";
import { after, test } from "node:test";

import * as client from "../../web/camera_client.js";

const { Camera, CameraUnreachable, DisableError, InvalidReply, InvalidValue, RequestedError } =
  client;

const SUCCESS = '{"Response":{"Requested":"MonitorStart","Result":"Success"}}';
const WITHOUT_SESSION = [
  "HeartbeatConfirmation",
  "SetTallyControlWithPriority",
  "SetStudioTallyWithoutSession",
];

// A web server that answers what a test tells it to, and keeps what it was sent.

const posted = [];
const answers = [];

const server = createServer((request, response) => {
  const pieces = [];
  request.on("data", (piece) => pieces.push(piece));
  request.on("end", () => {
    posted.push({ path: request.url, body: Buffer.concat(pieces).toString() });
    answers.shift()(response);
  });
});
await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
const url = `http://127.0.0.1:${server.address().port}`;
after(() => {
  server.closeAllConnections();
  server.close();
});

const answer = (body, status = 200) =>
  answers.push((response) => response.writeHead(status).end(body));
const staySilent = () => answers.push(() => {});
const hangUp = () => answers.push((response) => response.destroy());
const breakOff = () =>
  answers.push((response) => {
    response.writeHead(200, { "Content-Length": 1000 });
    response.write('{"Response":{"Requested":"GetCamStatus","Result":"Success"');
    setTimeout(() => response.destroy(), 20);
  });

function fresh() {
  posted.length = 0;
  answers.length = 0;
  return new Camera(url, { sessionId: "some-id" });
}

async function errorOf(promise) {
  try {
    await promise;
  } catch (error) {
    return error;
  }
  throw new assert.AssertionError({ message: "no error" });
}

// Every command.

const calls = readFileSync(new URL("calls.table", import.meta.url), "utf8")
  .split("\n")
  .filter((line) => line !== "" && !line.startsWith("#"))
  .map((line) => line.split("|").map((part) => part.trim()))
  .map(([command, params, , javascript, state]) => ({ command, params, javascript, state }));

function call(camera, javascript) {
  return new Function("camera", `return camera.${javascript};`)(camera);
}

function expectedRequest({ command, params }, session) {
  const members = [`"Command":"${command}"`];
  if (!WITHOUT_SESSION.includes(command)) {
    members.push(`"SessionID":"${session}"`);
  }
  if (params !== "") {
    members.push(`"Params":${params}`);
  }
  return `{"Request":{${members.join(",")}}}`;
}

test("every command has a call", () => {
  const names = client.COMMANDS.map((row) => row.name);
  assert.deepEqual(calls.map((row) => row.command).sort(), names.sort());
  assert.equal(calls.length, 68);
});

for (const row of calls) {
  test(`sends exactly the bytes of ${row.command}`, async () => {
    const camera = fresh();
    answer(`{"Response":{"Requested":"${row.command}","Result":"Success"}}`);
    assert.deepEqual(await call(camera, row.javascript), {});
    const body = expectedRequest(row, "some-id");
    assert.deepEqual(posted, [{ path: "/cgi-bin/camera_remote.cgi", body }]);
  });
}

const { CAMERA_URL, CAMERA_SESSION } = process.env;

for (const row of calls) {
  test(`the camera takes ${row.command}`, async () => {
    if (row.state) {
      const { ok } = await fetch(`${CAMERA_URL}/simulator/state`, { method: "PATCH", body: row.state });
      assert.ok(ok);
    }
    const exchanges = [];
    const onExchange = (exchange) => exchanges.push(exchange);
    const camera = new Camera(CAMERA_URL, { sessionId: CAMERA_SESSION, onExchange });
    const data = await call(camera, row.javascript);
    const hasData = /^(Get|Available|PageChange|Heartbeat)/.test(row.command);
    assert.equal(Object.keys(data).length > 0, hasData);
    assert.equal(exchanges.length, 1);
    const [exchange] = exchanges;
    assert.equal(exchange.command, row.command);
    assert.equal(exchange.status, 200);
    assert.equal(exchange.request, expectedRequest(row, CAMERA_SESSION));
    assert.ok(exchange.reply.startsWith(`{"Response":{"Requested":"${row.command}","Result":"Success"`));
    assert.ok(exchange.ms > 0);
  });
}

test("what was set is read back", async () => {
  const camera = new Camera(`${CAMERA_URL}/`, { sessionId: CAMERA_SESSION });
  const udp = { dstAddress: "10.0.0.5", dstPort: 6000, pcrJitter: 0 };
  await camera.setStreamingServerSettingsUDP({ id: 2, alias: "Bühne", ...udp });
  assert.deepEqual(await camera.getStreamingServerSettings({ id: 2 }), {
    Alias: "Bühne",
    Type: "UDP",
    Udp: { DstAddress: "10.0.0.5", DstPort: 6000, PcrJitter: 0 },
  });
});

test("the camera reads what passes the check", async () => {
  const camera = new Camera(CAMERA_URL, { sessionId: CAMERA_SESSION });
  for (const alias of ["ID:Alias", "DstAddress", "{[:]", "Type", "é", "'"]) {
    const udp = { dstAddress: "10.0.0.1", dstPort: 1, pcrJitter: 2 };
    await camera.setStreamingServerSettingsUDP({ id: 1, alias, ...udp });
    assert.deepEqual(await camera.getStreamingServerSettings({ id: 1 }), {
      Alias: alias,
      Type: "UDP",
      Udp: { DstAddress: "10.0.0.1", DstPort: 1, PcrJitter: 2 },
    });
  }
});

test("refusals of the handler", async () => {
  const camera = new Camera(CAMERA_URL, { sessionId: CAMERA_SESSION });
  const refusal = await errorOf(camera.setWebKeyEvent({ kind: "Iris", key: "Sideways" }));
  assert.ok(refusal instanceof RequestedError);
  assert.equal(refusal.byCamera, false);
  assert.equal(refusal.command, "SetWebKeyEvent");
  await assert.rejects(camera.send("NoSuchCommand"), client.CommandError);
  await assert.rejects(camera.send("SetNTPServer"), RequestedError);
  await assert.rejects(new Camera(CAMERA_URL).monitorStart(), client.SessionError);
  const stranger = new Camera(CAMERA_URL, { sessionId: "of-yesterday" });
  await assert.rejects(stranger.getCamStatus(), client.SessionError);
  assert.equal((await stranger.heartbeatConfirmation()).VideoOutput, "On");
  stranger.sessionId = CAMERA_SESSION;
  assert.equal((await stranger.getSystemInfo()).ApiVersion, "1.08.0");
});

// Errors.

for (const word of [
  "RequestedError",
  "DisableError",
  "SessionError",
  "FormatError",
  "CommandError",
]) {
  test(`a ${word} is an error of its name`, async () => {
    const camera = fresh();
    answer(`{"Response":{"Result":"${word}"}}`);
    const bare = await errorOf(camera.getCamStatus());
    assert.ok(bare instanceof client[word]);
    assert.ok(bare instanceof client.CameraError);
    assert.deepEqual([bare.name, bare.byCamera, bare.data], [word, false, undefined]);
    answer(`{"Response":{"Requested":"GetCamStatus","Result":"${word}","Data":{"A":1}}}`);
    const full = await errorOf(camera.getCamStatus());
    assert.ok(full instanceof client[word]);
    assert.deepEqual([full.byCamera, full.data], [true, { A: 1 }]);
  });
}

const BROKEN_LABEL =
  '{"Response":{"Requested":"GetCamStatus","Result":"Success","Data":{"Iris":{"Letter":"F"2"}}}}';

for (const [title, body, status, reason] of [
  ["an error page", "<h1>Internal Server Error</h1>", 500, "http"],
  ["a page that is not there", "", 404, "http"],
  ["success with another number", SUCCESS, 201, "http"],
  ["nothing", "", 200, "empty"],
  ["another page", "<html></html>", 200, "reply"],
  ["other JSON", '{"status":"ok"}', 200, "reply"],
  ["a list", "[]", 200, "reply"],
  ["null", "null", 200, "reply"],
  ["no object", '{"Response":"Success"}', 200, "reply"],
  ["data that are no object", '{"Response":{"Result":"Success","Data":[]}}', 200, "reply"],
  ["another word", '{"Response":{"Result":"Sucess"}}', 200, "reply"],
  ["the name of a method", '{"Response":{"Result":"constructor"}}', 200, "reply"],
]) {
  test(`not an answer of the camera: ${title}`, async () => {
    const camera = fresh();
    answer(body, status);
    const error = await errorOf(camera.getCamStatus());
    assert.ok(error instanceof CameraUnreachable);
    assert.equal(error.reason, reason);
    assert.equal(error.status, reason === "http" ? status : undefined);
  });
}

test("a label that breaks the JSON is told apart", async () => {
  const camera = fresh();
  answer(BROKEN_LABEL);
  const error = await errorOf(camera.getCamStatus());
  assert.ok(error instanceof InvalidReply);
  assert.ok(!(error instanceof CameraUnreachable));
  assert.equal(error.reply, BROKEN_LABEL);
  answer(BROKEN_LABEL.replace("Success", "DisableError"));
  await assert.rejects(camera.getCamStatus(), DisableError);
});

test("connections that fail", async () => {
  const camera = fresh();
  for (const fail of [hangUp, breakOff]) {
    fail();
    const error = await errorOf(camera.monitorStart());
    assert.ok(error instanceof CameraUnreachable);
    assert.equal(error.reason, "network");
    assert.ok(error.cause);
  }
  const closed = createServer();
  await new Promise((resolve) => closed.listen(0, "127.0.0.1", resolve));
  const { port } = closed.address();
  await new Promise((resolve) => closed.close(resolve));
  const error = await errorOf(new Camera(`http://127.0.0.1:${port}`).monitorStart());
  assert.equal(error.reason, "network");
});

for (const [ofCamera, ofCall] of [[200], [undefined, 200], [60_000, 200]]) {
  test(`a silent camera times out: ${ofCamera}, ${ofCall}`, async () => {
    fresh();
    staySilent();
    const camera = new Camera(url, { timeout: ofCamera });
    const start = performance.now();
    const error = await errorOf(camera.monitorStart({ timeout: ofCall }));
    assert.ok(error instanceof CameraUnreachable);
    assert.equal(error.reason, "timeout");
    assert.match(error.message, /no reply within 200 ms/);
    assert.ok(performance.now() - start >= 199);
  });
}

test("an abort rejects with its reason and not with an error of the camera", async () => {
  const camera = fresh();
  staySilent();
  const abort = new AbortController();
  const promise = errorOf(camera.setZoomCtrl({ position: 1 }, { signal: abort.signal }));
  abort.abort(new Error("enough"));
  assert.equal((await promise).message, "enough");
  assert.equal((await errorOf(camera.monitorStart({ signal: abort.signal }))).message, "enough");
});

test("the hook sees what went wrong", async () => {
  fresh();
  const exchanges = [];
  const camera = new Camera(url, { onExchange: (exchange) => exchanges.push(exchange) });
  answer("no", 500);
  const error = await errorOf(camera.monitorStart());
  assert.equal(exchanges.length, 1);
  const { ms, ...rest } = exchanges[0];
  const request = '{"Request":{"Command":"MonitorStart","SessionID":""}}';
  assert.deepEqual(rest, { command: "MonitorStart", request, status: 500, reply: "no", error });
});

test("keepalive reaches fetch", async (context) => {
  const camera = fresh();
  answer(SUCCESS);
  answer(SUCCESS);
  const seen = context.mock.method(globalThis, "fetch");
  await camera.monitorStart({ keepalive: true });
  await camera.monitorStart();
  assert.deepEqual(
    seen.mock.calls.map(({ arguments: [, options] }) => options.keepalive),
    [true, false],
  );
});

// Requests.

test("the order of the members is fixed", async () => {
  const camera = fresh();
  answer(SUCCESS);
  answer(SUCCESS);
  answer(SUCCESS);
  await camera.send("SetPresetZoomPosition", { Position: 5, Other: "x", ID: "A" });
  await camera.send("SetWebFtp1UploadASelect", { block10: 1, block2: -1 });
  await camera.send("Unknown", { B: 1, A: 2 });
  assert.deepEqual(
    posted.map(({ body }) => body),
    [
      '{"Request":{"Command":"SetPresetZoomPosition","SessionID":"some-id",' +
        '"Params":{"ID":"A","Position":5,"Other":"x"}}}',
      '{"Request":{"Command":"SetWebFtp1UploadASelect","SessionID":"some-id",' +
        '"Params":{"block2":-1,"block10":1}}}',
      '{"Request":{"Command":"Unknown","SessionID":"some-id","Params":{"B":1,"A":2}}}',
    ],
  );
});

for (const text of [
  "a b", " a", "a\t", "a\n", "a\r", "a\v", "a\f", 'a"', "a,b", "a}", "a\\", "\0", "a\u0001",
  "\u001f", "\u007f", "\ud800", "a\udc00",
]) {
  test(`a text that the wire cannot carry is not sent: ${JSON.stringify(text)}`, async () => {
    const camera = fresh();
    await assert.rejects(camera.setNTPServer({ address: text }), InvalidValue);
    await assert.rejects(new Camera(url, { sessionId: text }).getCamStatus(), InvalidValue);
    await assert.rejects(camera.send(text), InvalidValue);
    assert.deepEqual(posted, []);
  });
}

for (const [title, send, message] of [
  ["another type", (camera) => camera.setZoomCtrl({ position: "500" }), /position must be a whole/],
  ["a fraction", (camera) => camera.setZoomCtrl({ position: 2.5 }), /not 2.5/],
  ["no number", (camera) => camera.setZoomCtrl({ position: NaN }), /not NaN/],
  ["a truth value", (camera) => camera.setZoomCtrl({ position: true }), /not true/],
  ["nothing", (camera) => camera.setNTPServer({ address: null }), /address must be a text/],
  ["a missing one", (camera) => camera.setNTPServer(), /address must be .*, not undefined/],
  ["an unknown one", (camera) => camera.setNTPServer({ adress: "a" }), /no parameter adress/],
  ["one of none", (camera) => camera.send("MonitorStart", { A: {} }), /A must be/],
  ["too large", (camera) => camera.setZoomCtrl({ position: 65536 }), /from 0 to 65535/],
  ["too small", (camera) => camera.setZoomCtrl({ position: -1 }), /from 0 to 65535/],
  ["too long", (camera) => camera.setNTPServer({ address: "ü".repeat(16) }), /at most 30 bytes/],
  ["another word", (camera) => camera.setCamCtrl({ camCtrl: "Stpo" }), /one of "Rec", "Stop"/],
  ["beyond 32 bits", (camera) => camera.send("X", { A: 2 ** 31 }), /A must be/],
  ["a list", (camera) => camera.send("X", { A: [1] }), /A must be/],
  ["clip 0", (camera) => camera.setWebFtp1UploadASelect({ clips: [0] }), /from 1 to 4000/],
  ["clip 4001", (camera) => camera.setWebFtp1UploadASelect({ clips: [4001] }), /not 4001/],
  ["a clip as text", (camera) => camera.setWebFtp1UploadASelect({ clips: ["1"] }), /not "1"/],
  ["no clips", (camera) => camera.setWebFtp1UploadASelect({ clips: 5 }), /a list of clip/],
]) {
  test(`a value that would be taken for another is not sent: ${title}`, async () => {
    await assert.rejects(send(fresh()), (error) => {
      assert.ok(error instanceof InvalidValue);
      assert.match(error.message, message);
      return true;
    });
    assert.deepEqual(posted, []);
  });
}

test("a value that holds the name of a later parameter is not sent", async () => {
  const camera = fresh();
  const rest = { dstPort: 1, pcrJitter: 0 };
  const misread = { id: 1, alias: "DstPort", dstAddress: "10.0.0.1", ...rest };
  await assert.rejects(
    camera.setStreamingServerSettingsUDP(misread),
    /DstPort cannot be sent: .* would read "10.0.0.1"/,
  );
  assert.deepEqual(posted, []);
});

test("a poll of the camera", async () => {
  const camera = new Camera(CAMERA_URL, { sessionId: CAMERA_SESSION });
  const status = await new Promise((resolve, reject) => {
    const results = [];
    const poll = camera.poll((options) => camera.getCamStatus(options), {
      interval: 5,
      onError: reject,
      onResult(result) {
        if (results.push(result) === 5) {
          poll.stop();
          resolve(result);
        }
      },
    });
  });
  assert.equal(status.Mode, "Camera");
});
