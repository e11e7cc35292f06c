// A field for two values at once: red to the right, blue upwards. It is for pointers alone; the
// sliders next to it do the same for the keyboard.

export class PaintPad {
  #pad;
  #point;
  #pointer;
  #onMove;

  /// @param pad     the field; holds an element of the class "point"
  /// @param onMove  called with {red, blue}, each from 0 to 1
  constructor(pad, onMove) {
    this.#pad = pad;
    this.#point = pad.querySelector(".point");
    this.#onMove = onMove;
    pad.addEventListener("pointerdown", (event) => this.#press(event));
    pad.addEventListener("pointermove", (event) => this.#move(event));
    for (const type of ["pointerup", "pointercancel", "lostpointercapture"]) {
      pad.addEventListener(type, () => (this.#pointer = undefined));
    }
  }

  /// Shows where the camera is, unless the point is being dragged.
  show({ red, blue }) {
    if (this.#pointer === undefined) {
      this.#place({ red, blue });
    }
  }

  set disabled(disabled) {
    this.#pad.classList.toggle("disabled", disabled);
    if (disabled) {
      this.#pointer = undefined;
    }
  }

  #press(event) {
    if (event.button !== 0 || this.#pad.classList.contains("disabled")) {
      return;
    }
    this.#pad.setPointerCapture(event.pointerId);
    this.#pointer = event.pointerId;
    this.#move(event);
  }

  #move(event) {
    if (this.#pointer !== event.pointerId) {
      return;
    }
    const { left, top, width, height } = this.#pad.getBoundingClientRect();
    const value = {
      red: clamp((event.clientX - left) / width),
      blue: clamp(1 - (event.clientY - top) / height),
    };
    this.#place(value);
    this.#onMove(value);
  }

  #place({ red, blue }) {
    this.#point.style.left = `${clamp(red) * 100}%`;
    this.#point.style.top = `${(1 - clamp(blue)) * 100}%`;
  }
}

function clamp(part) {
  return Math.min(1, Math.max(0, part));
}
