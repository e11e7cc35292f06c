// The view of the clips on the cards: pages of the list, OK marks, and the selection to upload.

import { byId, element, onClick, setText } from "./dom.js";
import { setUpUpload } from "./upload.js";

/// A multiple of the 15 that the camera reads at a time.
const PAGE_SIZE = 30;

export function setUpClips(remote) {
  const { camera, connection, queue, attempt } = remote;
  const selections = { A: new Set(), B: new Set() };
  const state = { slot: "A", page: 0, clips: [] };
  const slots = [...document.querySelectorAll('input[name="slot"]')];

  const count = (slot = state.slot) => connection.status?.[`Slot${slot}`].ClipNum ?? 0;
  const lastPage = () => Math.max(0, Math.ceil(count() / PAGE_SIZE) - 1);
  const selection = () => selections[state.slot];

  /// Reads the page that is wanted now; of several at a time only the last one is shown.
  async function read() {
    state.page = Math.min(state.page, lastPage());
    const { slot, page } = state;
    const isWanted = () => slot === state.slot && page === state.page;
    showBusy(true);
    queue.send("Clip list", async () => {
      try {
        const list = await camera.getClipInfo({ slot, startIndexNo: page * PAGE_SIZE + 1, clipNum: PAGE_SIZE });
        if (isWanted()) {
          state.clips = list.ClipInfo;
          showPage();
        }
      } finally {
        showBusy(!isWanted());
      }
    });
    showPageNumber();
  }

  function showBusy(busy) {
    byId("clip-table").ariaBusy = String(busy);
    setText("clip-caption", `Slot ${state.slot}: ${busy ? "reading the clips …" : `${count()} clips`}`);
  }

  function showPage() {
    byId("clip-table").tBodies[0].replaceChildren(...state.clips.map(row));
    showPageNumber();
    showSelection();
  }

  function showPageNumber() {
    setText("page-number", `Page ${state.page + 1} of ${lastPage() + 1}`);
    byId("page-first").disabled = byId("page-previous").disabled = state.page === 0;
    byId("page-last").disabled = byId("page-next").disabled = state.page >= lastPage();
  }

  function row(clip) {
    const number = clip.IndexNo;
    const select = element("input", {
      type: "checkbox",
      checked: selection().has(number),
      "aria-label": `Select ${clip.Name}`,
      onchange: () => {
        toggle(number, select.checked);
        showSelection();
      },
    });
    const mark = element("button", { "aria-label": `OK mark of ${clip.Name}`, onclick: () => markClip(clip, mark) }, "OK");
    mark.ariaPressed = String(clip.OKMark === "Mark");
    const box = element("label", { className: "box" }, select);
    const cells = [box, String(number), clip.Name, mark, clip.TC, clip.DateTime.replace(" T", " "), clip.AspectRaotp,
      clip.Edit === "Enable" ? "possible" : "locked"];
    const made = element("tr", {}, ...cells.map((cell) => element("td", {}, cell)));
    made.dataset.number = number;
    return made;
  }

  function toggle(number, selected) {
    if (selected) {
      selection().add(number);
    } else {
      selection().delete(number);
    }
  }

  /// The mark is shown once the camera has taken it.
  function markClip(clip, button) {
    const { slot } = state;
    const okMark = clip.OKMark === "Mark" ? "NoMark" : "Mark";
    queue.send(`OK mark of ${clip.Name}`, async () => {
      await camera.setClipInfo({ slot, indexNo: clip.IndexNo, okMark });
      clip.OKMark = okMark;
      button.ariaPressed = String(okMark === "Mark");
    });
  }

  function showSelection() {
    const number = selection().size;
    setText("selection-count", `${number} selected`);
    for (const made of byId("clip-table").tBodies[0].rows) {
      const selected = selection().has(Number(made.dataset.number));
      made.querySelector("input").checked = selected;
      made.classList.toggle("selected", selected);
    }
    upload.showSelected(number);
  }

  function select(numbers) {
    numbers.forEach((number) => selection().add(number));
    showSelection();
  }

  function turnTo(page) {
    state.page = Math.max(0, Math.min(page, lastPage()));
    read();
  }

  const upload = setUpUpload(remote, {
    slot: () => state.slot,
    selected: () => [...selection()],
  });

  for (const choice of slots) {
    choice.addEventListener("change", () => {
      state.slot = choice.value;
      turnTo(0);
    });
  }
  onClick("page-first", () => turnTo(0));
  onClick("page-previous", () => turnTo(state.page - 1));
  onClick("page-next", () => turnTo(state.page + 1));
  onClick("page-last", () => turnTo(lastPage()));
  onClick("clips-reload", () => read());
  onClick("select-page", () => select(state.clips.map((clip) => clip.IndexNo)));
  onClick("select-slot", () => select(Array.from({ length: count() }, (_, i) => i + 1)));
  onClick("select-none", () => {
    selection().clear();
    showSelection();
  });

  let known;
  connection.on("status", (detail) => {
    upload.showStatus(detail);
    setText("slot-a-count", `${detail.SlotA.ClipNum} clips`);
    setText("slot-b-count", `${detail.SlotB.ClipNum} clips`);
    // A clip was recorded, or the card has changed.
    if (!byId("clips").hidden && known !== count()) {
      dropMissing();
      read();
    }
    known = count();
  });

  function dropMissing() {
    for (const number of selection()) {
      if (number > count()) {
        selection().delete(number);
      }
    }
  }

  return { show: read };
}
