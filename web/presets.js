// The zoom positions behind the buttons A, B and C.

import { element, setText } from "./dom.js";

/// Clears a position.
const NOT_SET = 65535;

/// @return shows a status
export function setUpPresets({ camera, connection, queue, attempt }) {
  const rows = [...document.querySelectorAll("[data-preset]")].map((box) => {
    const id = box.dataset.preset;
    const row = {
      id,
      recall: button(`Preset ${id}`, {}),
      store: button(`Store ${id}`, { "data-enable": "Zoom.Preset" }),
      clear: button(`Clear ${id}`, { "data-enable": "Zoom.Clear" }),
      flag: `Preset${box.dataset.number}`,
      position: -1,
    };
    box.append(row.recall, row.store, row.clear);
    return row;
  });

  async function read() {
    const positions = await attempt("Preset zoom", () => camera.getPresetZoomPosition());
    for (const row of rows) {
      row.position = positions?.[row.id] ?? -1;
      setText(row.recall, row.position < 0 ? `Preset ${row.id} –` : `Preset ${row.id} ${row.position}`);
    }
  }

  async function store(id, position) {
    await attempt(`Preset ${id}`, () => camera.setPresetZoomPosition({ id, position }));
    await read();
  }

  for (const row of rows) {
    row.recall.addEventListener("click", () =>
      queue.send("Zoom", () => camera.setZoomCtrl({ position: row.position })),
    );
    row.store.addEventListener("click", () => store(row.id, Number(connection.status.ZoomPosition)));
    row.clear.addEventListener("click", () => store(row.id, NOT_SET));
  }
  connection.addEventListener("session", ({ detail }) => detail === "valid" && read());
  return (status) => {
    for (const row of rows) {
      row.recall.disabled = row.position < 0 || status.Enable.Zoom[row.flag] === 0;
    }
  };
}

function button(name, attributes) {
  return element("button", { type: "button", textContent: name, disabled: true, ...attributes });
}
