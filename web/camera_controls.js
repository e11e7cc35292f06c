// The controls of the camera view, which its markup names in short:
//
//   data-value="Iris"               shows the letter and the status of a control
//   data-text="Iris.Letter"         shows a text of the status
//   data-word="Iris.Status"         the same in the operator's words
//   data-keys="Iris Auto=Auto ..."  buttons for keys of a control; after "=" the words of its status
//                                   with which the button is pressed, separated by "|"
//   data-status="Disptv"            where that status is, if not in "Status" of the control; after a
//                                   "." at the end comes the key's name
//   data-seesaw="Iris Close Open"   two buttons to hold, and buttons for three steps each way
//   data-slider="IrisBar"           moves a bar whose position the camera does not report
//   data-enable="Iris.Open1"        the flag that enables the element
//   data-flags="Disptv"             the control whose flags enable the keys, or the flags of the two
//                                   halves of a seesaw

import { element, setText, valueAt } from "./dom.js";
import { HoldButton } from "./hold_button.js";
import { inWords } from "./words.js";

/// The names of controls and keys where they are not the camera's own.
const NAMES = {
  Whb: "White balance",
  AeLevel: "AE level",
  MasterBlack: "Master black",
  Fullauto: "Full auto",
  Disptv: "Display",
  PushAuto: "Push auto",
  Faw: "Full auto",
  Alc: "ALC",
  Lolux: "Low light",
  Eei: "EEI",
  Sdi: "SDI",
  Hdmi: "HDMI",
};

/// Keys with a short text on the button, and what they are called.
const SHORT = {
  Down1: ["−", "down"],
  Up1: ["+", "up"],
  AeLevelDown: ["−", "down"],
  AeLevelUp: ["+", "up"],
  WhPaintRM: ["−", "less red"],
  WhPaintRP: ["+", "more red"],
  WhPaintBM: ["−", "less blue"],
  WhPaintBP: ["+", "more blue"],
  Up: ["▲", "up"],
  Down: ["▼", "down"],
  Left: ["◀", "left"],
  Right: ["▶", "right"],
};

/// From the outside inwards; the camera numbers them from 3 down.
const STEPS = ["large", "medium", "small"];

/// The camera spells it in two ways.
const FLAGS_OF_KEYS = { LensRet: "LenzRet" };

/// Speeds of the switches are one byte.
const FASTEST = 255;

const nameOf = (word) => NAMES[word] ?? word;

/// Makes the controls of a view.
/// @return shows a status
export function setUpControls(remote, view) {
  each(view, "[data-value]", makeValue);
  each(view, "[data-slider]", (slider) => setUpSlider(remote, slider, slider.dataset.slider));
  const updates = [
    ...each(view, "[data-keys]", (box) => makeKeys(remote, box)),
    ...each(view, "[data-seesaw]", (box) => makeSeesaw(remote, box)),
    ...each(view, "[data-text]", (shown) => (status) => setText(shown, String(valueAt(status, shown.dataset.text)))),
    ...each(view, "[data-word]", (shown) => (status) => setText(shown, inWords(valueAt(status, shown.dataset.word)))),
  ];
  const controls = [...view.querySelectorAll("[data-enable]")];
  // Until the camera has said what can be used.
  controls.forEach((control) => (control.disabled = true));
  return (status) => {
    updates.forEach((update) => update(status));
    for (const control of controls) {
      control.disabled = valueAt(status.Enable, control.dataset.enable) === 0;
    }
  };
}

const each = (view, selector, make) => [...view.querySelectorAll(selector)].map(make);

function makeValue(box) {
  const { value } = box.dataset;
  box.append(
    element("output", { className: "letter", "data-text": `${value}.Letter` }),
    element("span", { className: "state", "data-word": `${value}.Status` }),
  );
}

function makeKeys(remote, box) {
  const { keys, flags, status: path } = box.dataset;
  const [kind, ...words] = keys.split(" ");
  const rows = words.map((word) => {
    const [key, pressed] = word.split("=");
    const button = makeKey(remote, kind, key, flags);
    return { key, button, pressed: pressed?.split("|"), path: statusPath(path, kind, key) };
  });
  box.append(...rows.map(({ button }) => button));
  box.classList.add("group");
  box.role = "group";
  box.ariaLabel = `${nameOf(kind)} keys`;
  return (status) => {
    for (const { key, button, pressed, path } of rows) {
      if (pressed) {
        button.ariaPressed = pressed.includes(valueAt(status, path));
      }
      showLabel(button, status.ButtonLetter[kind]?.[FLAGS_OF_KEYS[key] ?? key], kind, key);
    }
  };
}

const statusPath = (path = "", kind, key) => (path.endsWith(".") ? path + key : path || `${kind}.Status`);

function makeKey({ camera, queue }, kind, key, flags = kind) {
  const full = nameOf(key);
  const [text, name] = SHORT[key] ?? [full, /^[A-Z]+$/.test(full) ? full : full.toLowerCase()];
  const press = () =>
    kind === "User" || kind === "Menu"
      ? camera.setWebButtonEvent({ kind, button: key })
      : camera.setWebKeyEvent({ kind, key });
  return element("button", {
    textContent: text,
    "aria-label": `${nameOf(kind)} ${name}`,
    "data-enable": `${flags}.${FLAGS_OF_KEYS[key] ?? key}`,
    onclick: () => queue.send(nameOf(kind), press),
  });
}

/// The camera's own label of a key. The user buttons have no other name.
function showLabel(button, label, kind, key) {
  if (label === undefined) {
    return;
  }
  const text = kind === "User" ? label || key : `${key} ${label}`.trim();
  setText(button, text);
  button.ariaLabel = kind === "User" ? text : `${nameOf(kind)} ${text}`;
}

function makeSteps(remote, kind, directions) {
  const [back, forth] = directions.map((direction, side) =>
    STEPS.map((name, i) => {
      const size = STEPS.length - i;
      const button = makeKey(remote, kind, direction + size);
      button.ariaLabel = `${nameOf(kind)} ${direction.toLowerCase()}, ${name} step`;
      button.textContent = "‹›"[side].repeat(size);
      return button;
    }),
  );
  return makeGroup("steps", `${nameOf(kind)} steps`, [...back, ...forth.reverse()]);
}

function makeSeesaw(remote, box) {
  const { camera, queue } = remote;
  const [kind, ...directions] = box.dataset.seesaw.split(" ");
  const flags = box.dataset.flags?.split(" ") ?? directions.map((direction) => `${direction}1`);
  const operate = (direction, speed, options) =>
    kind === "Zoom"
      ? camera.zoomSwitchOperation({ direction, speed }, options)
      : camera.seesawSwitchOperation({ kind: `${kind}Seesaw`, direction, speed }, options);
  const name = nameOf(kind);
  const halves = directions.map((direction, i) => {
    const button = element("button", {
      textContent: direction,
      "aria-label": `${name} ${direction.toLowerCase()}`,
      "data-enable": `${kind}.${flags[i]}`,
      "data-outer": i === 0 ? "left" : "right",
    });
    const hold = new HoldButton(button, {
      run: (part) => queue.send(name, () => operate(direction, Math.round(part * FASTEST))),
      // `keepalive` lets it outlive the page.
      stop: () => queue.stop(name, (options) => operate("Stop", 0, { ...options, keepalive: true })),
    });
    return { button, hold };
  });
  box.append(
    makeGroup("seesaw", `${name} seesaw: hold to run, farther out is faster`, halves.map(({ button }) => button)),
    makeSteps(remote, kind, directions),
  );
  return (status) => {
    for (const { button, hold } of halves) {
      if (valueAt(status.Enable, button.dataset.enable) === 0) {
        hold.release();
      }
    }
  };
}

/// Sends the position of a slider under its kind.
export function setUpSlider({ camera, queue }, slider, kind) {
  slider.oninput = () =>
    queue.send(kind, () => camera.setWebSliderEvent({ kind, position: slider.valueAsNumber }));
}

const makeGroup = (className, name, buttons) =>
  element("div", { className, role: "group", "aria-label": name }, ...buttons);
