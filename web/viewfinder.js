// The picture that the simulated camera takes: drawn, so that zoom, iris, white balance, tally and
// recording are seen to change.

import { byId, setText } from "./dom.js";

const TELE_ZOOM = 8;
const ZOOM_END = 999;

/// With this the scene is exposed and balanced well.
const LIGHT = { exposure: exposureOf(2.8, 100), kelvin: 3200 };

const TALLY_COLORS = { Program: "#ff2d37", Preview: "#2fd16f" };

export function drawViewfinder(status, tally) {
  // Towards the presenter's face.
  const zoom = TELE_ZOOM ** Math.min(1, status.ZoomPosition / ZOOM_END);
  set("vf-scene", { transform: `translate(160 104) scale(${zoom.toFixed(3)}) translate(-160 -104)` });
  set("vf-tally", { stroke: TALLY_COLORS[tally] ?? "none" });
  drawLight(status);
  drawTint(status.Whb);
  drawCharacters(status);
}

function set(id, attributes) {
  Object.entries(attributes).forEach(([name, value]) => byId(id).setAttribute(name, value));
}

/// In stops, for an F-number and a fraction of a second.
function exposureOf(aperture, time) {
  return 2 * Math.log2(aperture) + Math.log2(time);
}

function drawLight({ Iris, Shutter, Gain }) {
  const aperture = { OPEN: 1.4, CLOSE: 64 }[Iris.Letter] ?? (Number(Iris.Letter.replace("F", "")) || 2.8);
  const time = Number(/^1\/([\d.]+)/.exec(Shutter.Letter)?.[1] ?? 60);
  const gain = Number.parseFloat(Gain.Letter) || 0;
  const tooLight = LIGHT.exposure - exposureOf(aperture, time) + gain / 6;
  set("vf-light", {
    fill: tooLight > 0 ? "#fff" : "#000",
    opacity: Math.min(0.96, 1 - 2 ** (-Math.abs(tooLight) / 3)).toFixed(3),
  });
}

/// A balance for bluer light than there is makes the picture orange, and the reverse; the paint adds
/// its red and blue.
function drawTint({ Letter, WhPaintRPosition, WhPaintRScale, WhPaintBPosition, WhPaintBScale }) {
  const kelvin = Number.parseInt(Letter, 10) || LIGHT.kelvin;
  const warmth = (1e6 / LIGHT.kelvin - 1e6 / kelvin) / 200;
  const red = clamp(warmth + WhPaintRPosition / (WhPaintRScale || 1));
  const blue = clamp(-warmth + WhPaintBPosition / (WhPaintBScale || 1));
  const part = (value) => Math.round(128 + 127 * value);
  set("vf-tint", {
    fill: `rgb(${part(red)} ${part((red + blue) / -2)} ${part(blue)})`,
    opacity: (0.45 * Math.max(Math.abs(red), Math.abs(blue))).toFixed(3),
  });
}

const clamp = (value) => Math.max(-1, Math.min(1, value));

function drawCharacters({ Disptv, TC, Iris, Shutter, Gain, Whb, ZoomDisplayValue, Status }) {
  const shown = (text) => (Disptv === "On" ? text : "");
  setText("vf-timecode", shown(TC));
  setText("vf-exposure", shown(`${Iris.Letter} ${Shutter.Letter} ${Gain.Letter} ${Whb.Letter} Z${ZoomDisplayValue}`));
  setText("vf-recording", Status === "Rec" ? "● REC" : shown(Status.toUpperCase()));
  set("vf-recording", { fill: Status === "Rec" ? "#ff5a60" : "#fff" });
}
