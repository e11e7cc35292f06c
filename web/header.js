// The header and the strip below it: which camera this is, how it is reached, what is on air.

import { announce, byId, complain, onClick, setList, setText } from "./dom.js";
import { errorInWords, inWords } from "./words.js";

const LOOK_KEY = "look";
const SESSION_TEXTS = { none: "not logged in", valid: "logged in", lost: "lost" };
const TALLY_TEXTS = {
  Program: "On air: program",
  Preview: "In preview",
  Off: "Tally off",
  unknown: "Tally unknown",
};

/// Battery minutes or per cent from which on it is nearly empty.
const BATTERY_LOW = 10;

export function setUpHeader({ camera, connection, simulator }) {
  setUpLook(byId("look"));
  connection.on("state", (state) => {
    showState(state);
    markStale();
  });
  connection.on("latency", (detail) => setText("latency", `${Math.round(detail)} ms`));
  connection.on("tally", showTally);
  connection.on("status", showStatus);
  connection.on("session", (detail) => {
    byId("session").dataset.state = detail;
    setText("session", SESSION_TEXTS[detail]);
    byId("log-out").disabled = detail !== "valid";
    markStale();
    if (detail === "valid") {
      showIdentity(camera);
    }
  });

  /// Dims what the camera has reported when it may have changed since.
  function markStale() {
    document.body.classList.toggle("stale", lastState !== "live" || !connection.hasSession);
  }

  onClick("log-out", () =>
    connection.logOut().catch((error) => complain(`Log out: ${errorInWords(error)}`)),
  );
  simulator.answers().then((answers) => (byId("simulated").hidden = !answers));
}

async function showIdentity(camera) {
  const info = await camera.getSystemInfo().catch(() => undefined);
  if (info) {
    setText("model", info.Model);
    setText("serial", info.Serial);
  }
}

let lastState;

function showState({ state, text }) {
  const shown = byId("connection");
  shown.dataset.state = state;
  setText(shown, text);
  if (state === "lost" && lastState !== "lost") {
    announce("Connection to the camera lost");
  } else if (state === "live" && lastState === "lost") {
    announce("The camera is back");
  }
  lastState = state;
}

function showTally(word) {
  document.body.dataset.tally = word.toLowerCase();
  setText("tally", word);
  announce(TALLY_TEXTS[word] ?? word);
}

let lastRecording;

function showStatus(status) {
  document.body.dataset.recording = status.Status;
  setText("timecode", status.TC);
  setText("rec-state", inWords(status.Status));
  if (lastRecording !== undefined && lastRecording !== status.Status) {
    announce(`Recording status: ${inWords(status.Status)}`);
  }
  lastRecording = status.Status;
  const fresh = setList(byId("warnings"), warningsIn(status));
  if (fresh.length > 0) {
    announce(`Warning: ${fresh.join(", ")}`);
  }
}

function warningsIn(status) {
  const { SlotA, SlotB, Battery, Mode, Ftp } = status;
  return [
    ...cardWarnings("A", SlotA),
    ...cardWarnings("B", SlotB),
    isBatteryLow(Battery) && "Battery low",
    status.NetAdaptorStatus === "Mismatch" && "Network mismatch",
    Mode !== "Camera" && `Camera in ${inWords(Mode)} mode`,
    ["TRUST", "PROMPT"].includes(Ftp.Phase1) && "The upload asks a question",
    Ftp.Err !== 0 && `Upload error ${Ftp.Err}`,
  ].filter(Boolean);
}

function cardWarnings(name, slot) {
  return [
    slot.RemainWarn !== 0 && slot.Status !== "NoCard" && `Card ${name} nearly full`,
    slot.Protect === "Lock" && `Card ${name} locked`,
    slot.Status === "Invalid" && `Card ${name} unusable`,
  ];
}

function isBatteryLow({ Info, Level, Value }) {
  return Number(Level) <= 1 || (Info !== "Voltage" && Number(Value) <= BATTERY_LOW);
}

/// The dark or the light look, kept for the next visit.
function setUpLook(select) {
  select.value = localStorage.getItem(LOOK_KEY) ?? "dark";
  const show = () => (document.documentElement.dataset.look = select.value);
  select.onchange = () => {
    localStorage.setItem(LOOK_KEY, select.value);
    show();
  };
  show();
}
