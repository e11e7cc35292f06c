// What the page sends while it is operated. There is one lane for each kind of command (the
// zoom, the iris, ...), so that nothing waits for a slow reply and a stop is never lost.

const RETRY_DELAY = 250;
const LONGEST_RETRY_DELAY = 2000;

/// How long the first attempt at a stop waits for its answer; each further one waits as long again.
const STOP_TIMEOUT = 2000;
const LONGEST_STOP_TIMEOUT = 10_000;

export class CommandQueue {
  #lanes = new Map();
  #options;

  /// @param wasAnswered  whether an error still is an answer of the camera
  /// @param onAnswer     called after each answered command
  /// @param onError      receives the kind of command and its error
  /// @param sleep        milliseconds to a promise
  constructor({ wasAnswered = () => false, onAnswer = () => {}, onError = () => {}, sleep = pause } = {}) {
    this.#options = { wasAnswered, onAnswer, onError, sleep };
  }

  /// Sends a command. While one of its kind is under way it waits, and only the latest one waits.
  /// @param call  returns a promise; called when it is the command's turn
  send(kind, call) {
    this.#lane(kind).send(call);
  }

  /// Sends a stop at once, past everything of its kind, and repeats it until it is answered. What
  /// waits is dropped. A command that was under way may reach the camera after the stop, so the
  /// stop is sent once more after that command has ended.
  /// @param call  receives {timeout} in milliseconds and returns a promise
  stop(kind, call) {
    this.#lane(kind).stop(call);
  }

  /// Whether a command of that kind is under way.
  isBusy(kind) {
    return this.#lane(kind).isBusy();
  }

  #lane(kind) {
    if (!this.#lanes.has(kind)) {
      this.#lanes.set(kind, new Lane(kind, this.#options));
    }
    return this.#lanes.get(kind);
  }
}

class Lane {
  #kind;
  #options;
  #running;
  #waiting;
  #stopping = false;

  constructor(kind, options) {
    this.#kind = kind;
    this.#options = options;
  }

  isBusy() {
    return this.#running !== undefined || this.#stopping;
  }

  send(call) {
    this.#waiting = call;
    this.#next();
  }

  stop(call) {
    this.#waiting = undefined;
    if (!this.#stopping) {
      this.#repeatStop(call);
    }
  }

  #next() {
    if (this.isBusy() || this.#waiting === undefined) {
      return;
    }
    const call = this.#waiting;
    this.#waiting = undefined;
    this.#running = this.#attempt(call).then(() => {
      this.#running = undefined;
      this.#next();
    });
  }

  async #repeatStop(call) {
    this.#stopping = true;
    let delay = RETRY_DELAY;
    let timeout = STOP_TIMEOUT;
    for (;;) {
      const overtaken = this.#running;
      const answered = await this.#attempt(() => call({ timeout }));
      if (answered && overtaken === undefined) {
        break;
      }
      await (answered ? overtaken : this.#options.sleep(delay));
      delay = Math.min(2 * delay, LONGEST_RETRY_DELAY);
      timeout = Math.min(timeout + STOP_TIMEOUT, LONGEST_STOP_TIMEOUT);
    }
    this.#stopping = false;
    this.#next();
  }

  /// Whether the camera has answered, if only with a refusal.
  async #attempt(call) {
    const { wasAnswered, onAnswer, onError } = this.#options;
    try {
      await call();
    } catch (error) {
      onError(this.#kind, error);
      if (!wasAnswered(error)) {
        return false;
      }
    }
    onAnswer(this.#kind);
    return true;
  }
}

function pause(milliseconds) {
  return new Promise((resolve) => setTimeout(resolve, milliseconds));
}
