// The last exchanges with the camera.

const KEPT = 100;

/// What the page asks for all the time.
const POLLS = new Set(["GetCamStatus", "HeartbeatConfirmation", "SessionRenewal"]);

/// Members whose values the page does not show.
const SECRETS = /("(?:Password|StreamKey)":)"[^"]*"/g;

export const maskSecrets = (text) => text.replaceAll(SECRETS, '$1"••••"');

/// The command of a shell that sends the same request.
export function asCurl(url, request) {
  return `curl --data '${request.replaceAll("'", "'\\''")}' '${url}'`;
}

/// Keeps the last 100 exchanges of all, and the last 100 without the polls. Emits "change".
export class ExchangeLog extends EventTarget {
  #all = [];
  #withoutPolls = [];

  add(exchange) {
    const entry = { ...exchange, time: new Date() };
    keep(this.#all, entry);
    if (!POLLS.has(exchange.command)) {
      keep(this.#withoutPolls, entry);
    }
    this.dispatchEvent(new Event("change"));
  }

  /// Latest first.
  entries({ withPolls }) {
    return withPolls ? this.#all : this.#withoutPolls;
  }
}

function keep(entries, entry) {
  entries.unshift(entry);
  entries.splice(KEPT);
}
