// What only the simulated camera offers: its viewfinder, scenes, faults and clock.

import { COMMANDS } from "./camera_client.js";
import { byId, complain, element, onClick, onSubmit, options, setList, setText } from "./dom.js";
import { drawViewfinder } from "./viewfinder.js";

const STATE_INTERVAL = 1000;
const MINUTE = 60_000;

const FAULTS_OF_DAEMONS = [
  "absent", "refused", "busy", "silent", "slow", "pieces", "short", "closed", "garbage",
  "requested_error", "disable_error", "result",
];
const FAULTS_AROUND = [
  "no_status_block", "short_status_block", "settings_read_only", "disk_full", "no_session", "no_log",
];

/// The number that a fault needs: its name for the simulator and for the operator.
const NUMBERS = {
  slow: { name: "ms", label: "Milliseconds", value: 3000, max: 60_000 },
  short: { name: "bytes", label: "Bytes of the reply", value: 4, max: 65_535 },
  result: { name: "code", label: "Result code", value: 1, max: 255 },
};

export async function setUpSimulator({ connection, simulator }) {
  if (!(await simulator.answers())) {
    return;
  }
  const drawer = byId("simulator");
  const draw = setUpViewfinder(connection, drawer);
  const follow = setUpState(simulator, drawer);
  const toggle = byId("simulator-toggle");
  toggle.hidden = false;
  toggle.onclick = () => {
    drawer.hidden = !drawer.hidden;
    toggle.ariaExpanded = !drawer.hidden;
    draw();
    follow();
  };

  async function act(what, call) {
    try {
      await call();
      connection.refresh();
      await follow();
    } catch (error) {
      complain(`${what}: ${error.message}`);
    }
  }

  setUpScenes(simulator, act);
  setUpFaults(simulator, act);
  setUpClock(simulator, act);
}

function setUpViewfinder(connection, drawer) {
  let tally;
  const draw = () => !drawer.hidden && connection.status && drawViewfinder(connection.status, tally);
  connection.on("status", draw);
  connection.on("tally", (detail) => {
    tally = detail;
    draw();
  });
  return draw;
}

/// @return reads the clock and the faults again and again while they are visible
function setUpState(simulator, drawer) {
  let timer;
  /// The next question follows the answer to the last one.
  async function follow() {
    clearTimeout(timer);
    if (drawer.hidden || document.hidden) {
      return;
    }
    showClock(await simulator.clock().catch(() => undefined));
    showFaults(await simulator.faults().catch(() => []));
    timer = setTimeout(follow, STATE_INTERVAL);
  }
  document.addEventListener("visibilitychange", follow);
  return follow;
}

async function setUpScenes(simulator, act) {
  const scenes = await simulator.scenes();
  byId("scene").append(...options(scenes));
  onClick("load-scene", () => act("Scene", () => simulator.reset(byId("scene").value)));
  onClick("reset-simulator", () => act("Reset", () => simulator.reset()));
}

/// The fields of the form are named as the members of a fault. A disabled one is not sent.
function setUpFaults(simulator, act) {
  const form = byId("fault-form");
  const { fault, daemon, command } = form.elements;
  const number = byId("fault-number");
  const group = (label, names) => element("optgroup", { label }, ...options(names));
  fault.append(group("Of a daemon", FAULTS_OF_DAEMONS), group("Around the handler", FAULTS_AROUND));
  command.append(...options(COMMANDS.map(({ name }) => name).sort()));

  function showFields() {
    enable(daemon, FAULTS_OF_DAEMONS.includes(fault.value));
    const { label = "", ...field } = NUMBERS[fault.value] ?? {};
    enable(number, label !== "");
    setText("fault-number-label", label);
    Object.assign(number, field);
  }

  fault.onchange = showFields;
  showFields();
  onSubmit(form, () => {
    const fields = [...form.elements].filter(({ name, disabled, value }) => name && !disabled && value !== "");
    const members = fields.map(({ name, type, value }) => [name, type === "number" ? Number(value) : value]);
    act("Fault", () => simulator.addFault(Object.fromEntries(members)));
  });
  onClick("clear-faults", () => act("Faults", () => simulator.clearFaults()));
}

/// Shows or hides a field with its label.
function enable(field, isUsed) {
  field.disabled = !isUsed;
  field.parentElement.hidden = !isUsed;
}

function showFaults(faults) {
  setList(
    byId("faults"),
    faults.map(({ id, fault, ...members }) =>
      [fault, ...Object.entries(members).map(([name, value]) => `${name} ${value}`)].join(", "),
    ),
  );
}

function setUpClock(simulator, act) {
  const set = (change) => act("Clock", () => simulator.setClock(change));
  onClick("clock-pause", ({ target }) => set({ paused: target.ariaPressed !== "true" }));
  onClick("clock-step", () => set({ step_ms: MINUTE }));
  byId("clock-speed").onchange = ({ target }) => set({ speed: Number(target.value) });
}

function showClock(clock) {
  if (clock) {
    byId("clock-pause").ariaPressed = clock.paused;
    byId("clock-speed").value = clock.speed;
  }
}
