// The picture that the simulated camera takes: drawn, so that zoom, iris, focus, white balance,
// tally and recording are seen to change.

import { byId, setText } from "./dom.js";

const TELE_ZOOM = 8;
const ZOOM_END = 999;

/// Exposure values of F2.8 and 1/100 s, with which the default light is exposed well.
const GOOD_EXPOSURE = 2 * Math.log2(2.8) + Math.log2(100);
const DEFAULT_LIGHT = { ev: 10, kelvin: 5600 };

const TALLY_COLORS = { Program: "#ff2d37", Preview: "#2fd16f" };

/// Draws the status of the camera.
/// @param state  of the simulator, for what the API does not tell: the light and the focus
export function drawViewfinder(status, tally, state) {
  const light = state?.light ?? DEFAULT_LIGHT;
  drawZoom(Number(status.ZoomPosition));
  drawFocus(state?.focus);
  drawLight(stopsOff(status, light));
  drawTint(status.Whb, light);
  byId("vf-tally").setAttribute("stroke", TALLY_COLORS[tally] ?? "none");
  drawCharacters(status);
}

function drawZoom(position) {
  const factor = TELE_ZOOM ** Math.min(1, position / ZOOM_END);
  // Towards the presenter's face.
  byId("vf-scene").setAttribute("transform", `translate(160 118) scale(${factor.toFixed(3)}) translate(-160 -118)`);
}

function drawFocus(focus) {
  const off = focus ? Math.abs(focus.position - focus.subject) : 0;
  byId("vf-blur").setAttribute("stdDeviation", Math.min(6, off / 60).toFixed(2));
}

/// By how many stops the picture is too light.
function stopsOff({ Iris, Shutter, Gain }, light) {
  const aperture = { OPEN: 1.5, CLOSE: 64 }[Iris.Letter] ?? (Number(Iris.Letter.replace("F", "")) || 2.8);
  const time = Number(/^1\/(\d+(?:\.\d+)?)/.exec(Shutter.Letter)?.[1] ?? 60);
  const gain = Number.parseFloat(Gain.Letter) || 0;
  const exposure = 2 * Math.log2(aperture) + Math.log2(time) - gain / 6;
  return light.ev - DEFAULT_LIGHT.ev + GOOD_EXPOSURE - exposure;
}

function drawLight(stops) {
  const cover = byId("vf-light");
  cover.setAttribute("fill", stops > 0 ? "#fff" : "#000");
  cover.setAttribute("opacity", Math.min(0.96, 1 - 2 ** (-Math.abs(stops) / 2)).toFixed(3));
}

/// A balance for bluer light than there is makes the picture orange, and the reverse; the paint adds
/// its red and blue.
function drawTint(whiteBalance, light) {
  const kelvin = Number.parseInt(whiteBalance.Letter, 10) || light.kelvin;
  const warmth = (1e6 / light.kelvin - 1e6 / kelvin) / 200;
  const red = clamp(warmth + whiteBalance.WhPaintRPosition / (whiteBalance.WhPaintRScale || 1));
  const blue = clamp(-warmth + whiteBalance.WhPaintBPosition / (whiteBalance.WhPaintBScale || 1));
  const part = (value) => Math.round(128 + 127 * value);
  const tint = byId("vf-tint");
  tint.setAttribute("fill", `rgb(${part(red)} ${part((red + blue) / -2)} ${part(blue)})`);
  tint.setAttribute("opacity", (0.45 * Math.max(Math.abs(red), Math.abs(blue))).toFixed(3));
}

const clamp = (value) => Math.max(-1, Math.min(1, value));

function drawCharacters(status) {
  const shown = status.Disptv === "On";
  setText(byId("vf-timecode"), shown ? status.TC : "");
  setText(byId("vf-exposure"), shown ? `${status.Iris.Letter} ${status.Shutter.Letter} ${status.Gain.Letter} ${status.Whb.Letter}` : "");
  setText(byId("vf-zoom"), shown ? `Z${status.ZoomDisplayValue}` : "");
  const recording = byId("vf-recording");
  const isRecording = status.Status === "Rec";
  setText(recording, isRecording ? "● REC" : shown ? status.Status.toUpperCase() : "");
  recording.setAttribute("fill", isRecording ? "#ff5a60" : "#fff");
}
