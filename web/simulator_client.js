// The control interface of the simulated camera. Cameras have none.

const BASE = "/simulator/";

export class Simulator {
  #answers;

  /// Whether this is a simulated camera; asked once.
  answers() {
    this.#answers ??= this.scenes().then(() => true, () => false);
    return this.#answers;
  }

  scenes = () => this.#request("GET", "scenes");
  reset = (scene) => this.#request("POST", "reset", scene ? { scene } : {});
  faults = () => this.#request("GET", "faults");
  addFault = (fault) => this.#request("POST", "faults", fault);
  clearFaults = () => this.#request("DELETE", "faults");
  clock = () => this.#request("GET", "clock");
  setClock = (change) => this.#request("POST", "clock", change);

  /// Logs in and returns the session id.
  async logIn() {
    return (await this.#request("POST", "login")).SessionID;
  }

  async #request(method, path, body) {
    const response = await fetch(BASE + path, {
      method,
      cache: "no-store",
      headers: body ? { "Content-Type": "application/json" } : {},
      body: body && JSON.stringify(body),
    });
    const reply = await response.json();
    if (!response.ok) {
      throw new Error(reply.error);
    }
    return reply;
  }
}
