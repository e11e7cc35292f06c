// What only the simulated camera offers: its viewfinder, scenes, faults and clock.

import { byId, element } from "./dom.js";
import { complain } from "./messages.js";
import { drawViewfinder } from "./viewfinder.js";

const STATE_INTERVAL = 1000;
const MINUTE = 60_000;

const FAULTS = [
  "absent", "refused", "busy", "silent", "slow", "pieces", "short", "closed", "garbage",
  "requested_error", "disable_error", "result", "no_status_block", "short_status_block",
  "settings_read_only", "disk_full", "no_session", "no_log",
];
const DAEMONS = ["quonta_cp", "streaming"];
const COMMANDS = ["GetCamStatus", "SetCamCtrl", "ZoomSwitchOperation", "SetWebKeyEvent", "GetClipInfo"];

export async function setUpSimulator(remote) {
  const { connection, simulator } = remote;
  if (!(await simulator.answers())) {
    return;
  }
  const drawer = byId("simulator");
  const toggle = byId("simulator-toggle");
  toggle.hidden = false;
  let state;
  let tally;
  let timer;

  const draw = () => !drawer.hidden && connection.status && drawViewfinder(connection.status, tally, state);
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
    state = await simulator.state().catch(() => undefined);
    showClock(state);
    showFaults(await simulator.faults().catch(() => []));
    draw();
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
  byId("fault").append(...FAULTS.map((name) => element("option", { textContent: name })));
  byId("fault-where").append(
    ...DAEMONS.map((name) => element("option", { textContent: `daemon ${name}`, value: `daemon ${name}` })),
    ...COMMANDS.map((name) => element("option", { textContent: `command ${name}`, value: `command ${name}` })),
  );
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const { fault, where, ms, count } = form.elements;
    const [member, name] = where.value.split(" ");
    const added = { fault: fault.value, [member]: name };
    if (fault.value === "slow") {
      added.ms = ms.valueAsNumber;
    }
    if (count.value !== "") {
      added.count = count.valueAsNumber;
    }
    act("Fault", () => simulator.addFault(added));
  });
  byId("clear-faults").addEventListener("click", () => act("Faults", () => simulator.clearFaults()));
}

function showFaults(faults) {
  const texts = faults.map((fault) => Object.values(fault).join(" "));
  const list = byId("faults");
  if ([...list.children].map((item) => item.textContent).join("\n") !== texts.join("\n")) {
    list.replaceChildren(...texts.map((text) => element("li", { textContent: text })));
  }
}

function setUpClock(simulator, act) {
  const pause = byId("clock-pause");
  const set = (change) => act("Clock", () => simulator.clock(change));
  pause.addEventListener("click", () => set({ paused: pause.ariaPressed !== "true" }));
  byId("clock-step").addEventListener("click", () => set({ step_ms: MINUTE }));
  byId("clock-speed").addEventListener("change", (event) => set({ speed: Number(event.target.value) }));
}

function showClock(state) {
  if (state?.clock) {
    byId("clock-pause").ariaPressed = String(state.clock.paused);
    byId("clock-speed").value = String(state.clock.speed);
  }
}
