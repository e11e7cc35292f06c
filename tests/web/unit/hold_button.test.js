import assert from "node:assert/strict";
import { beforeEach, test } from "node:test";
import { HoldButton } from "../../../web/hold_button.js";

/// A button 100 wide and 50 high at 0, 0; its right end is the fast one.
class Button extends EventTarget {
  dataset = { outer: "right" };
  captured = [];
  classList = { add() {}, remove() {} };
  getBoundingClientRect = () => ({ left: 0, right: 100, top: 0, bottom: 50 });
  setPointerCapture(id) {
    this.captured.push(id);
  }
}

let button;
let page;
let log;
let hold;

beforeEach(() => {
  button = new Button();
  page = { window: new EventTarget(), document: new EventTarget() };
  log = [];
  hold = new HoldButton(button, { run: (speed) => log.push(speed), stop: () => log.push("stop"), page });
});

function send(target, type, values = {}) {
  const event = new Event(type, { cancelable: true });
  target.dispatchEvent(Object.assign(event, { button: 0, pointerId: 1, clientX: 50, clientY: 25, ...values }));
  return event;
}

test("pressing runs it and releasing stops it", () => {
  send(button, "pointerdown", { clientX: 100 });
  send(button, "pointerup");
  assert.deepEqual(log, [1, "stop"]);
  assert.deepEqual(button.captured, [1]);
});

test("farther out is faster, in eighths", () => {
  send(button, "pointerdown", { clientX: 0 });
  send(button, "pointermove", { clientX: 30 });
  send(button, "pointermove", { clientX: 31 });
  send(button, "pointermove", { clientX: 100 });
  assert.deepEqual(log, [1 / 8, 3 / 8, 1]);
});

test("the outer end of a left half is on its left", () => {
  button.dataset.outer = "left";
  send(button, "pointerdown", { clientX: 0 });
  assert.deepEqual(log, [1]);
});

for (const [side, place] of Object.entries({
  left: { clientX: -1 }, right: { clientX: 101 }, top: { clientY: -1 }, bottom: { clientY: 51 },
})) {
  test(`dragging off its ${side} stops it, once`, () => {
    send(button, "pointerdown");
    send(button, "pointermove", place);
    send(button, "pointermove");
    send(button, "pointerup", place);
    assert.deepEqual(log, [4 / 8, "stop"]);
  });
}

for (const type of ["pointercancel", "lostpointercapture", "blur"]) {
  test(`${type} stops it`, () => {
    send(button, "pointerdown");
    send(button, type);
    assert.deepEqual(log, [4 / 8, "stop"]);
  });
}

for (const [target, type] of [["window", "blur"], ["window", "pagehide"], ["document", "visibilitychange"]]) {
  test(`${type} of the ${target} stops it`, () => {
    send(button, "pointerdown");
    send(page[target], type);
    assert.deepEqual(log, [4 / 8, "stop"]);
  });
}

test("a button that becomes disabled lets go", () => {
  send(button, "pointerdown");
  hold.release();
  hold.release();
  assert.deepEqual(log, [4 / 8, "stop"]);
});

test("nothing is stopped that was not held", () => {
  send(button, "pointerup");
  send(page.window, "blur");
  send(page.document, "visibilitychange");
  assert.deepEqual(log, []);
});

test("other mouse buttons and a second finger do nothing", () => {
  send(button, "pointerdown", { button: 2 });
  send(button, "pointerdown");
  send(button, "pointerdown", { pointerId: 2 });
  send(button, "pointermove", { pointerId: 2, clientX: 100 });
  assert.deepEqual(log, [4 / 8]);
});

for (const key of [" ", "Enter"]) {
  test(`the key "${key}" runs it at half speed until it is released`, () => {
    assert.equal(send(button, "keydown", { key }).defaultPrevented, true);
    send(button, "keydown", { key, repeat: true });
    send(button, "keyup", { key: "Shift" });
    send(button, "keyup", { key });
    assert.deepEqual(log, [0.5, "stop"]);
  });
}

test("other keys do nothing", () => {
  assert.equal(send(button, "keydown", { key: "Tab" }).defaultPrevented, false);
  assert.deepEqual(log, []);
});

test("a long touch opens no menu", () => {
  assert.equal(send(button, "contextmenu").defaultPrevented, true);
});
