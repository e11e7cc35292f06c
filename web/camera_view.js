// The view that operates the camera. Its markup says what each control does:
//
//   data-text="Iris.Letter"            shows a text of the status
//   data-word="Iris.Status"            the same in the operator's words
//   data-key="Iris.Open1"              presses a key of a control
//   data-hold="Iris.Open"              runs a seesaw as long as it is held
//   data-slider="IrisBar"              moves a bar
//   data-enable="Iris.Open1"           the flag that enables it, if it is not that of its key
//   data-pressed="Iris.Status=Auto"    it is pressed while the status says so ("|" separates words)
//   data-label="Gain.L"                the camera's own label, which follows its `data-name`

import { byId, element, setText, valueAt } from "./dom.js";
import { HoldButton } from "./hold_button.js";
import { PaintPad } from "./paint_pad.js";
import { setUpPresets } from "./presets.js";
import { inWords } from "./words.js";

const USER_BUTTONS = [
  ...Array.from({ length: 11 }, (_, i) => ({ key: `Sw${i + 1}`, flag: `Sw${i + 1}`, name: `User ${i + 1}` })),
  // The camera spells it in two ways.
  { key: "LensRet", flag: "LenzRet", name: "Lens return" },
];

/// Speeds of the switches are one byte.
const FASTEST = 255;

export function setUpCamera(remote) {
  const view = byId("camera");
  makeUserButtons();
  const updates = [
    showTexts(view),
    setUpKeys(remote, view),
    setUpHolds(remote, view),
    setUpSliders(remote, view),
    setUpZoomSlider(remote),
    setUpPaint(remote),
    setUpRecording(remote),
    setUpPresets(remote),
  ];
  setUpTally(remote, view);
  remote.connection.addEventListener("status", ({ detail }) => {
    updates.forEach((update) => update(detail));
    // Last, so that nothing which an update has made is forgotten.
    enable(view, detail);
  });
  disableAll(view);
  return {};
}

function makeUserButtons() {
  byId("user-buttons").append(
    ...USER_BUTTONS.map(({ key, flag, name }) =>
      element("button", {
        type: "button",
        textContent: name,
        "data-key": `User.${key}`,
        "data-enable": `User.${flag}`,
        "data-label": `User.${flag}`,
        "data-default": name,
      }),
    ),
  );
}

function showTexts(view) {
  const texts = [...view.querySelectorAll("[data-text]")];
  const words = [...view.querySelectorAll("[data-word]")];
  const labels = [...view.querySelectorAll("[data-label]")];
  const toggles = [...view.querySelectorAll("[data-pressed]")].map((button) => {
    const [path, values] = button.dataset.pressed.split("=");
    return { button, path, values: values.split("|") };
  });
  return (status) => {
    texts.forEach((shown) => setText(shown, valueAt(status, shown.dataset.text)));
    words.forEach((shown) => setText(shown, inWords(valueAt(status, shown.dataset.word))));
    labels.forEach((shown) => setText(shown, labelFor(shown.dataset, status)));
    for (const { button, path, values } of toggles) {
      button.ariaPressed = String(values.includes(valueAt(status, path)));
    }
  };
}

function labelFor({ label, name, default: otherwise }, status) {
  const text = valueAt(status.ButtonLetter, label);
  return name === undefined ? text || otherwise : `${name} ${text}`.trim();
}

function enable(view, status) {
  for (const control of view.querySelectorAll("[data-enable], [data-key]")) {
    const flag = control.dataset.enable ?? control.dataset.key;
    control.disabled = valueAt(status.Enable, flag) === 0;
  }
  for (const notice of document.querySelectorAll("[data-allowed]")) {
    notice.hidden = status.AllowedPage[notice.dataset.allowed] !== 0;
  }
}

/// Until the camera has said what can be used.
function disableAll(view) {
  for (const control of view.querySelectorAll("[data-enable], [data-key]")) {
    control.disabled = true;
  }
}

function setUpKeys({ camera, queue }, view) {
  for (const button of view.querySelectorAll("[data-key]")) {
    const [kind, key] = button.dataset.key.split(".");
    button.addEventListener("click", () =>
      queue.send(kind, () =>
        kind === "User" || kind === "Menu"
          ? camera.setWebButtonEvent({ kind, button: key })
          : camera.setWebKeyEvent({ kind, key }),
      ),
    );
  }
  return () => {};
}

function setUpHolds({ camera, queue }, view) {
  const holds = [...view.querySelectorAll("[data-hold]")].map((button) => {
    const [kind, direction] = button.dataset.hold.split(".");
    const operate = kind === "Zoom" ? zoomSwitch(camera) : seesaw(camera, `${kind}Seesaw`);
    const hold = new HoldButton(button, {
      run: (part) => queue.send(kind, () => operate(direction, Math.round(part * FASTEST))),
      // `keepalive` lets it outlive the page.
      stop: () => queue.stop(kind, (options) => operate("Stop", 0, { ...options, keepalive: true })),
    });
    return { hold, flag: button.dataset.enable };
  });
  return (status) => {
    for (const { hold, flag } of holds) {
      if (valueAt(status.Enable, flag) === 0) {
        hold.release();
      }
    }
  };
}

const zoomSwitch = (camera) => (direction, speed, options) =>
  camera.zoomSwitchOperation({ direction, speed }, options);

const seesaw = (camera, kind) => (direction, speed, options) =>
  camera.seesawSwitchOperation({ kind, direction, speed }, options);

/// Bars whose position the camera does not report.
function setUpSliders({ camera, queue }, view) {
  for (const slider of view.querySelectorAll("[data-slider]")) {
    const kind = slider.dataset.slider;
    slider.addEventListener("input", () =>
      queue.send(kind, () => camera.setWebSliderEvent({ kind, position: slider.valueAsNumber })),
    );
  }
  return () => {};
}

function setUpZoomSlider({ camera, queue }) {
  const slider = byId("zoom-slider");
  const shown = byId("zoom-display");
  slider.addEventListener("input", () =>
    queue.send("Zoom", () => camera.setZoomCtrl({ position: slider.valueAsNumber })),
  );
  const isMoved = watchMoving(slider);
  return (status) => {
    const position = Number(status.ZoomPosition);
    setText(shown, `${status.ZoomDisplayValue}`);
    if (!isMoved() && !queue.isBusy("Zoom")) {
      // The scale is the camera's own.
      slider.max = Math.max(slider.max, position);
      slider.value = position;
    }
  };
}

/// Tells whether somebody is moving a slider, which must not be moved away from the finger then.
function watchMoving(slider) {
  let moving = false;
  slider.addEventListener("pointerdown", () => (moving = true));
  for (const type of ["pointerup", "pointercancel", "blur"]) {
    slider.addEventListener(type, () => (moving = false));
  }
  return () => moving;
}

function setUpPaint({ camera, queue }) {
  const red = byId("paint-red");
  const blue = byId("paint-blue");
  const pad = new PaintPad(byId("paint-pad"), (part) =>
    queue.send("White paint", () =>
      camera.setWebXYFieldEvent({
        kind: "WhPaintRB",
        xPosition: Math.round(part.red * 255),
        yPosition: Math.round(part.blue * 255),
      }),
    ),
  );
  const sliders = [
    { slider: red, kind: "WhPaintR", isMoved: watchMoving(red) },
    { slider: blue, kind: "WhPaintB", isMoved: watchMoving(blue) },
  ];
  for (const { slider, kind } of sliders) {
    slider.addEventListener("input", () => {
      const position = slider.valueAsNumber & 0xffff; // below zero as a number of 16 bits
      queue.send(kind, () => camera.setWebSliderEvent({ kind, position }));
    });
  }
  return ({ Whb, Enable }) => {
    const scales = [Whb.WhPaintRScale, Whb.WhPaintBScale];
    const positions = [Whb.WhPaintRPosition, Whb.WhPaintBPosition];
    sliders.forEach(({ slider, kind, isMoved }, i) => {
      slider.min = -scales[i];
      slider.max = scales[i];
      if (!isMoved() && !queue.isBusy(kind)) {
        slider.value = positions[i];
      }
    });
    const [partRed, partBlue] = positions.map((position, i) => (position + scales[i]) / (2 * scales[i] || 1));
    pad.show({ red: partRed, blue: partBlue });
    pad.disabled = Enable.Whb.WhPaintRP === 0;
  };
}

function setUpRecording({ camera, queue, attempt }) {
  const button = byId("record");
  button.addEventListener("click", () => {
    if (button.ariaPressed === "true") {
      queue.stop("Record", (options) => camera.setCamCtrl({ camCtrl: "Stop" }, options));
    } else {
      queue.send("Record", () => camera.setCamCtrl({ camCtrl: "Rec" }));
    }
  });
  byId("monitor-start").addEventListener("click", () => attempt("Live picture", () => camera.monitorStart()));
  byId("monitor-stop").addEventListener("click", () => attempt("Live picture", () => camera.monitorStop()));
  return (status) => {
    button.ariaPressed = String(status.Status === "Rec" || status.Status === "RecPause");
    button.disabled = status.Status === "NoCard";
    showSlot("A", byId("slot-a"), status.SlotA);
    showSlot("B", byId("slot-b"), status.SlotB);
    setText(byId("battery"), batteryText(status.Battery));
    setText(byId("network"), networkText(status));
  };
}

function showSlot(name, card, slot) {
  const lines = [
    `Slot ${name}: ${inWords(slot.Status)}`,
    slot.Status === "NoCard" ? "" : remainText(slot),
    slot.Status === "NoCard" ? "" : `${slot.ClipNum} clips${slot.Protect === "Lock" ? ", locked" : ""}`,
  ];
  if (card.children.length === 0) {
    card.append(element("strong"), element("p", { className: "letter small" }), element("p"));
  }
  card.dataset.status = slot.Status;
  card.classList.toggle("warn", slot.RemainWarn !== 0 && slot.Status !== "NoCard");
  lines.forEach((line, i) => setText(card.children[i], line));
}

const remainText = ({ Remain }) => (Remain === "-1" ? "remaining unknown" : `${Remain} min left`);

function batteryText({ Info, Level, Value }) {
  const units = { Time: `${Value} min`, Capacity: `${Value} %`, Voltage: `${Number(Value) / 10} V` };
  return `${units[Info] ?? Value}, level ${Level}`;
}

function networkText({ NetAdaptorStatus, NetAdaptorType }) {
  const state = inWords(NetAdaptorStatus);
  return NetAdaptorType === "Unknown" ? state : `${inWords(NetAdaptorType)}, ${state}`;
}

function setUpTally({ camera, queue }, view) {
  const onClick = (attribute, call) => {
    for (const button of view.querySelectorAll(`[data-${attribute}]`)) {
      button.addEventListener("click", () =>
        queue.send(attribute, () => call(button.getAttribute(`data-${attribute}`))),
      );
    }
  };
  onClick("studio-tally", (indication) => camera.setStudioTally({ indication }));
  onClick("tally-priority", (priority) => camera.setTallyLampPriority({ priority }));
  onClick("tally-lamp", (sw) =>
    byId("tally-take").checked
      ? camera.setTallyControlWithPriority({ sw })
      : camera.setTallyLampCtrl({ sw }),
  );
}
