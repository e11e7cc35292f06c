// The view that operates the camera. Most of its controls are made by camera_controls.js; here is
// what only one of them does.

import { setUpControls, setUpSlider } from "./camera_controls.js";
import { byId, element, onClick, setText } from "./dom.js";
import { PaintPad } from "./paint_pad.js";
import { inWords } from "./words.js";

/// Clears the zoom position of a preset.
const NOT_SET = 65535;

export function setUpCamera(remote) {
  const showPresets = setUpPresets(remote);
  const updates = [
    setUpControls(remote, byId("camera")),
    showPresets,
    setUpZoomSlider(remote),
    setUpPaint(remote),
    setUpRecording(remote),
    showAllowed,
  ];
  setUpTally(remote);
  remote.connection.on("status", (detail) => updates.forEach((update) => update(detail)));
  return {};
}

function showAllowed({ AllowedPage }) {
  for (const notice of document.querySelectorAll("[data-allowed]")) {
    notice.hidden = AllowedPage[notice.dataset.allowed] !== 0;
  }
}

function setUpZoomSlider({ camera, queue }) {
  const slider = byId("zoom-slider");
  slider.oninput = () =>
    queue.send("Zoom", () => camera.setZoomCtrl({ position: slider.valueAsNumber }));
  const isMoved = watchMoving(slider);
  return ({ ZoomPosition }) => {
    if (!isMoved() && !queue.isBusy("Zoom")) {
      // The scale is the camera's own.
      slider.max = Math.max(slider.max, ZoomPosition);
      slider.value = ZoomPosition;
    }
  };
}

/// Tells whether a slider is being dragged, which must not be moved away from the finger then.
function watchMoving(slider) {
  let moving = false;
  slider.addEventListener("pointerdown", () => (moving = true));
  for (const type of ["pointerup", "pointercancel", "blur"]) {
    slider.addEventListener(type, () => (moving = false));
  }
  return () => moving;
}

function setUpPaint(remote) {
  const { camera, queue } = remote;
  const scales = { Red: 0, Blue: 0 };
  // The field counts from 0; the positions run from minus to plus their scale.
  const pad = new PaintPad(byId("paint-pad"), ({ red, blue }) =>
    queue.send("White paint", () =>
      camera.setWebXYFieldEvent({
        kind: "WhPaintRB",
        xPosition: Math.round(red * 2 * scales.Red),
        yPosition: Math.round(blue * 2 * scales.Blue),
      }),
    ),
  );
  const sliders = ["Red", "Blue"].map((color) => {
    const slider = byId(`paint-${color.toLowerCase()}`);
    const kind = `WhPaint${color[0]}`;
    setUpSlider(remote, slider, kind);
    return { color, slider, kind, isMoved: watchMoving(slider) };
  });
  return ({ Whb, Enable }) => {
    const [red, blue] = sliders.map(({ color, slider, kind, isMoved }) => {
      const [scale, position] = [Whb[`${kind}Scale`], Whb[`${kind}Position`]];
      scales[color] = scale;
      slider.min = -scale;
      slider.max = scale;
      if (!isMoved() && !queue.isBusy(kind)) {
        slider.value = position;
      }
      return (position + scale) / (2 * scale || 1);
    });
    pad.show({ red, blue });
    pad.disabled = Enable.Whb.WhPaintRP === 0;
  };
}

function setUpRecording({ camera, queue }) {
  const button = byId("record");
  button.onclick = () => {
    if (button.ariaPressed === "true") {
      queue.stop("Record", (options) => camera.setCamCtrl({ camCtrl: "Stop" }, options));
    } else {
      queue.send("Record", () => camera.setCamCtrl({ camCtrl: "Rec" }));
    }
  };
  onClick("monitor-start", () => queue.send("Live picture", () => camera.monitorStart()));
  onClick("monitor-stop", () => queue.send("Live picture", () => camera.monitorStop()));
  return (status) => {
    button.ariaPressed = status.Status === "Rec" || status.Status === "RecPause";
    button.disabled = status.Status === "NoCard";
    showSlot("A", byId("slot-a"), status.SlotA);
    showSlot("B", byId("slot-b"), status.SlotB);
    setText("battery", batteryText(status.Battery));
    setText("network", networkText(status));
  };
}

function showSlot(name, card, { Status, Remain, ClipNum, Protect, RemainWarn }) {
  const hasCard = Status !== "NoCard";
  const remain = Remain === "-1" ? "remaining time unknown" : `${Remain} min left`;
  const lines = [
    `Slot ${name}: ${inWords(Status)}`,
    hasCard ? remain : "",
    hasCard ? `${ClipNum} clips${Protect === "Lock" ? ", locked" : ""}` : "",
  ];
  if (card.children.length === 0) {
    card.append(element("strong"), element("p", { className: "letter small" }), element("p"));
  }
  card.dataset.status = Status;
  card.classList.toggle("warn", RemainWarn !== 0 && hasCard);
  lines.forEach((line, i) => setText(card.children[i], line));
}

function batteryText({ Info, Level, Value }) {
  const texts = { Time: `${Value} min`, Capacity: `${Value} %`, Voltage: `${Number(Value) / 10} V` };
  return `${texts[Info] ?? Value}, level ${Level}`;
}

function networkText({ NetAdaptorStatus, NetAdaptorType }) {
  const state = inWords(NetAdaptorStatus);
  return NetAdaptorType === "Unknown" ? state : `${inWords(NetAdaptorType)}, ${state}`;
}

function setUpTally({ camera, connection, queue }) {
  const make = (id, name, words, call) => {
    const buttons = words.map((word) => {
      const onclick = () => queue.send(name, () => call(word));
      return element("button", { "aria-label": `${name} ${word.toLowerCase()}`, onclick }, word);
    });
    byId(id).append(...buttons);
    return buttons;
  };
  const studio = make("studio-tally", "Studio tally", ["Off", "Preview", "Program"], (indication) =>
    camera.setStudioTally({ indication }),
  );
  connection.on("tally", (word) =>
    studio.forEach((button) => (button.ariaPressed = button.textContent === word)),
  );
  make("tally-lamp", "Tally lamp", ["On", "Off"], (sw) =>
    byId("tally-take").checked ? camera.setTallyControlWithPriority({ sw }) : camera.setTallyLampCtrl({ sw }),
  );
  make("tally-priority", "Tally lamp by", ["Camera", "Web"], (priority) => camera.setTallyLampPriority({ priority }));
}

/// The zoom positions of the buttons A, B and C.
function setUpPresets({ camera, connection, queue, attempt }) {
  const rows = ["A", "B", "C"].map((id, i) => ({
    id,
    recall: makeButton(`Preset ${id}`),
    store: makeButton(`Store ${id}`, { "data-enable": "Zoom.Preset" }),
    clear: makeButton(`Clear ${id}`, { "data-enable": "Zoom.Clear" }),
    flag: `Preset${i + 1}`,
    position: -1,
  }));

  async function read() {
    const positions = await attempt("Preset zoom", () => camera.getPresetZoomPosition());
    for (const row of rows) {
      row.position = positions?.[row.id] ?? -1;
      setText(row.recall, row.position < 0 ? `Preset ${row.id} –` : `Preset ${row.id} ${row.position}`);
    }
    enable(connection.status);
  }

  async function store(id, position) {
    await attempt(`Preset ${id}`, () => camera.setPresetZoomPosition({ id, position }));
    await read();
  }

  function enable(status) {
    for (const { recall, position, flag } of rows) {
      recall.disabled = position < 0 || status?.Enable.Zoom[flag] === 0;
    }
  }

  for (const row of rows) {
    byId("presets").append(element("div", {}, row.recall, row.store, row.clear));
    row.recall.onclick = () => queue.send("Zoom", () => camera.setZoomCtrl({ position: row.position }));
    row.store.onclick = () => store(row.id, Number(connection.status.ZoomPosition));
    row.clear.onclick = () => store(row.id, NOT_SET);
  }
  connection.on("session", (detail) => detail === "valid" && read());
  return enable;
}

function makeButton(name, attributes) {
  return element("button", { disabled: true, ...attributes }, name);
}
