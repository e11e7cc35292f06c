// What only the simulated camera offers: its viewfinder, scenes, faults and clock.

import { COMMANDS } from "./camera_client.js";
import { byId, complain, element, setList } from "./dom.js";
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
const DAEMONS = ["quonta_cp", "streaming"];

/// What a fault needs beside its name.
const VALUES = { slow: "ms", short: "bytes", result: "code" };

export async function setUpSimulator(remote) {
  const { connection, simulator } = remote;
  if (!(await simulator.answers())) {
    return;
  }
  const drawer = byId("simulator");
  const toggle = byId("simulator-toggle");
  toggle.hidden = false;
  let tally;
  let timer;

  const draw = () => !drawer.hidden && connection.status && drawViewfinder(connection.status, tally);
  connection.addEventListener("status", draw);
  connection.addEventListener("tally", ({ detail }) => {
    tally = detail;
    draw();
  });

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

  async function act(what, call) {
    try {
      await call();
      connection.refresh();
      await follow();
    } catch (error) {
      complain(`${what}: ${error.message}`);
    }
  }

  toggle.addEventListener("click", () => {
    drawer.hidden = !drawer.hidden;
    toggle.ariaExpanded = String(!drawer.hidden);
    draw();
    follow();
  });
  document.addEventListener("visibilitychange", follow);
  setUpScenes(simulator, act);
  setUpFaults(simulator, act);
  setUpClock(simulator, act);
}

async function setUpScenes(simulator, act) {
  const scenes = await simulator.scenes();
  byId("scene").append(...scenes.map((name) => element("option", { textContent: name })));
  byId("load-scene").addEventListener("click", () => act("Scene", () => simulator.reset(byId("scene").value)));
  byId("reset-simulator").addEventListener("click", () => act("Reset", () => simulator.reset()));
}

function setUpFaults(simulator, act) {
  const form = byId("fault-form");
  const options = (group, names, prefix = "") =>
    element("optgroup", { label: group }, ...names.map((name) => element("option", { textContent: name, value: prefix + name })));
  byId("fault").append(options("Of a daemon", FAULTS_OF_DAEMONS), options("Around the handler", FAULTS_AROUND));
  byId("fault-where").append(
    element("option", { textContent: "everywhere", value: "" }),
    options("Daemon", DAEMONS, "daemon "),
    options("Command", COMMANDS.map(({ name }) => name).sort(), "command "),
  );
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const { fault, where, value, count } = form.elements;
    const [member, name] = where.value.split(" ");
    act("Fault", () =>
      simulator.addFault({
        fault: fault.value,
        ...(name && { [member]: name }),
        ...(VALUES[fault.value] && { [VALUES[fault.value]]: value.valueAsNumber }),
        ...(count.value && { count: count.valueAsNumber }),
      }),
    );
  });
  byId("clear-faults").addEventListener("click", () => act("Faults", () => simulator.clearFaults()));
}

function showFaults(faults) {
  setList(byId("faults"), faults.map(({ id, ...fault }) => Object.values(fault).join(" ")));
}

function setUpClock(simulator, act) {
  const pause = byId("clock-pause");
  const set = (change) => act("Clock", () => simulator.setClock(change));
  pause.addEventListener("click", () => set({ paused: pause.ariaPressed !== "true" }));
  byId("clock-step").addEventListener("click", () => set({ step_ms: MINUTE }));
  byId("clock-speed").addEventListener("change", (event) => set({ speed: Number(event.target.value) }));
}

function showClock(clock) {
  if (clock) {
    byId("clock-pause").ariaPressed = String(clock.paused);
    byId("clock-speed").value = String(clock.speed);
  }
}
