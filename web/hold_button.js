// A button that runs something as long as it is held: one half of a seesaw.

/// What a key of the keyboard does; a pointer sets the speed by its distance.
const KEYBOARD_SPEED = 0.5;

export class HoldButton {
  #button;
  #actions;
  #held;

  /// @param button   its `data-outer` ("left", "right") names the side on which it is fastest
  /// @param run      called with the speed, above 0 up to 1, when the button is pressed and whenever
  ///                 the speed changes
  /// @param stop     called once when it is no longer held, for whatever reason
  /// @param page     the window and its document, whose events also end the holding
  constructor(button, { run, stop, page = { window, document } }) {
    this.#button = button;
    this.#actions = { run, stop };
    const release = () => this.release();
    const events = {
      pointerdown: (event) => this.#pressPointer(event),
      pointermove: (event) => this.#movePointer(event),
      pointerup: release,
      pointercancel: release,
      lostpointercapture: release,
      keydown: (event) => this.#pressKey(event),
      keyup: (event) => this.#releaseKey(event),
      blur: release,
      // A long touch would open a menu over the button and swallow the end of the touch.
      contextmenu: (event) => event.preventDefault(),
    };
    for (const [type, listener] of Object.entries(events)) {
      button.addEventListener(type, listener);
    }
    page.window.addEventListener("blur", release);
    page.window.addEventListener("pagehide", release);
    page.document.addEventListener("visibilitychange", release);
  }

  /// Lets go. A button that becomes disabled gets no event that would tell, so its owner calls this.
  release() {
    if (this.#held === undefined) {
      return;
    }
    this.#held = undefined;
    this.#button.classList.remove("held");
    this.#actions.stop();
  }

  #pressPointer(event) {
    if (event.button !== 0 || this.#held !== undefined) {
      return;
    }
    this.#button.setPointerCapture(event.pointerId);
    this.#hold({ pointer: event.pointerId }, this.#speedAt(event));
  }

  #movePointer(event) {
    if (this.#held?.pointer !== event.pointerId) {
      return;
    }
    const speed = this.#speedAt(event);
    if (speed === undefined) {
      this.release();
    } else if (speed !== this.#held.speed) {
      this.#hold(this.#held, speed);
    }
  }

  #pressKey(event) {
    if (event.key !== " " && event.key !== "Enter") {
      return;
    }
    event.preventDefault();
    if (!event.repeat && this.#held === undefined) {
      this.#hold({ key: event.key }, KEYBOARD_SPEED);
    }
  }

  #releaseKey(event) {
    if (this.#held?.key === event.key) {
      event.preventDefault();
      this.release();
    }
  }

  #hold(held, speed) {
    this.#held = { ...held, speed };
    this.#button.classList.add("held");
    this.#actions.run(speed);
  }

  /// Speed for a pointer on the button, in eighths; undefined outside the button.
  #speedAt({ clientX, clientY }) {
    const { left, right, top, bottom } = this.#button.getBoundingClientRect();
    if (clientX < left || clientX > right || clientY < top || clientY > bottom) {
      return undefined;
    }
    const part = (clientX - left) / (right - left);
    const distance = this.#button.dataset.outer === "left" ? 1 - part : part;
    return Math.max(1, Math.ceil(distance * 8)) / 8;
  }
}
