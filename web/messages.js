// What the page tells its user beside what it shows: changes of state to screen readers, errors to
// everybody.

import { byId, setText } from "./dom.js";

const SHOWN_FOR = 8000;
let timer;

/// Tells screen readers of a change that others see.
export function announce(text) {
  setText(byId("announcement"), text);
}

/// Shows an error for a while.
export function complain(text) {
  setText(byId("message"), text);
  clearTimeout(timer);
  timer = setTimeout(() => setText(byId("message"), ""), SHOWN_FOR);
}
