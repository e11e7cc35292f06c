// The view of the clips on the cards: pages of the list, OK marks, and the selection to upload.

import { byId, element, onClick, setText } from "./dom.js";
import { setUpUpload } from "./upload.js";

/// A multiple of the 15 that the camera reads at a time.
const PAGE_SIZE = 30;

export class ClipsView {
  #remote;
  #upload;
  #slot = "A";
  #page = 0;
  #clips = [];
  #selections = { A: new Set(), B: new Set() };
  /// The number of clips when the list was last asked for.
  #known;

  constructor(remote) {
    this.#remote = remote;
    this.#upload = setUpUpload(remote, { slot: () => this.#slot, selected: () => [...this.#selection] });
    this.#setUpPages();
    this.#setUpSelection();
    remote.connection.on("status", (status) => this.#showStatus(status));
  }

  show() {
    this.#turnTo(this.#page);
  }

  get #count() {
    return this.#remote.connection.status?.[`Slot${this.#slot}`].ClipNum ?? 0;
  }

  get #lastPage() {
    return Math.max(0, Math.ceil(this.#count / PAGE_SIZE) - 1);
  }

  get #selection() {
    return this.#selections[this.#slot];
  }

  #setUpPages() {
    for (const choice of document.querySelectorAll('input[name="slot"]')) {
      choice.onchange = () => {
        this.#slot = choice.value;
        // At once: the buttons of a row act on the slot that is chosen.
        this.#showPage([]);
        this.#turnTo(0);
      };
    }
    onClick("page-first", () => this.#turnTo(0));
    onClick("page-previous", () => this.#turnTo(this.#page - 1));
    onClick("page-next", () => this.#turnTo(this.#page + 1));
    onClick("page-last", () => this.#turnTo(this.#lastPage));
    onClick("clips-reload", () => this.show());
  }

  #setUpSelection() {
    onClick("select-page", () => this.#select(this.#clips.map((clip) => clip.IndexNo)));
    onClick("select-slot", () => this.#select(Array.from({ length: this.#count }, (_, i) => i + 1)));
    onClick("select-none", () => this.#select(this.#selection, false));
  }

  /// Reads a page; of several at a time only the last one is shown.
  #turnTo(wanted) {
    const page = Math.max(0, Math.min(wanted, this.#lastPage));
    const slot = this.#slot;
    this.#page = page;
    this.#known = this.#count;
    this.#dropMissing();
    const isWanted = () => slot === this.#slot && page === this.#page;
    this.#showBusy(true);
    this.#showPageNumber();
    this.#remote.queue.send("Clip list", async () => {
      try {
        const startIndexNo = page * PAGE_SIZE + 1;
        const list = await this.#remote.camera.getClipInfo({ slot, startIndexNo, clipNum: PAGE_SIZE });
        if (isWanted()) {
          this.#showPage(list.ClipInfo);
        }
      } finally {
        this.#showBusy(!isWanted());
      }
    });
  }

  #showBusy(busy) {
    byId("clip-table").ariaBusy = busy;
    setText("clip-caption", `Slot ${this.#slot}: ${busy ? "reading the clips …" : `${this.#count} clips`}`);
  }

  #showPage(clips) {
    this.#clips = clips;
    byId("clip-table").tBodies[0].replaceChildren(...clips.map((clip) => this.#row(clip)));
    this.#showSelection();
  }

  #showPageNumber() {
    setText("page-number", `Page ${this.#page + 1} of ${this.#lastPage + 1}`);
    byId("page-first").disabled = byId("page-previous").disabled = this.#page === 0;
    byId("page-last").disabled = byId("page-next").disabled = this.#page >= this.#lastPage;
  }

  #row(clip) {
    const box = element("label", { className: "box" }, this.#selectBox(clip));
    const cells = [box, String(clip.IndexNo), clip.Name, this.#markButton(clip), clip.TC,
      clip.DateTime.replace(" T", " "), clip.AspectRaotp, clip.Edit === "Enable" ? "possible" : "locked"];
    const row = element("tr", {}, ...cells.map((cell) => element("td", {}, cell)));
    row.dataset.number = clip.IndexNo;
    return row;
  }

  #selectBox({ IndexNo, Name }) {
    const onchange = ({ target }) => this.#select([IndexNo], target.checked);
    return element("input", { type: "checkbox", "aria-label": `Select ${Name}`, onchange });
  }

  #markButton(clip) {
    const onclick = ({ currentTarget }) => this.#mark(clip, currentTarget);
    const ariaPressed = clip.OKMark === "Mark";
    return element("button", { "aria-label": `OK mark of ${clip.Name}`, ariaPressed, onclick }, "OK");
  }

  /// The mark is shown once the camera has taken it.
  #mark(clip, button) {
    const slot = this.#slot;
    const okMark = clip.OKMark === "Mark" ? "NoMark" : "Mark";
    this.#remote.queue.send(`OK mark of ${clip.Name}`, async () => {
      await this.#remote.camera.setClipInfo({ slot, indexNo: clip.IndexNo, okMark });
      clip.OKMark = okMark;
      button.ariaPressed = okMark === "Mark";
    });
  }

  #select(numbers, isSelected = true) {
    numbers.forEach((number) => (isSelected ? this.#selection.add(number) : this.#selection.delete(number)));
    this.#showSelection();
  }

  #showSelection() {
    const { size } = this.#selection;
    setText("selection-count", `${size} selected`);
    for (const row of byId("clip-table").tBodies[0].rows) {
      const isSelected = this.#selection.has(Number(row.dataset.number));
      row.querySelector("input").checked = isSelected;
      row.classList.toggle("selected", isSelected);
    }
    this.#upload.showSelected(size);
  }

  #showStatus(status) {
    this.#upload.showStatus(status);
    setText("slot-a-count", `${status.SlotA.ClipNum} clips`);
    setText("slot-b-count", `${status.SlotB.ClipNum} clips`);
    // A clip was recorded, or the card has changed.
    if (!byId("clips").hidden && this.#known !== this.#count) {
      this.show();
    }
  }

  #dropMissing() {
    for (const number of this.#selection) {
      if (number > this.#count) {
        this.#selection.delete(number);
      }
    }
  }
}
