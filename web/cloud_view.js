// The cloud streaming service in five steps. Each becomes possible when the one before it has
// succeeded.

import { announce, byId, element, onClick, onSubmit, setText } from "./dom.js";
import { cloudErrorInWords, inWords } from "./words.js";

/// Flags of `SetCldstrmClearStatus`.
const CLEAR_ALL = { login: 1, getEventList: 1, getStreamInfo: 1 };

/// Where the state of a step is shown, its name in the status, and in words.
const STATES = [
  ["cloud-login-state", "LoginStatus", "Login"],
  ["cloud-events-state", "GetEventListStatus", "List of events"],
  ["cloud-info-state", "GetStreamInfoStatus", "Stream information"],
];

export class CloudView {
  #camera;
  #queue;
  #steps = {};
  /// The titles of the events.
  #events;
  /// The number of the event that is chosen, and of the one whose stream information the camera has.
  #chosen;
  #informed;

  constructor({ camera, connection, queue }) {
    this.#camera = camera;
    this.#queue = queue;
    this.#setUpLogin(byId("cloud-login"));
    onClick("cloud-events", () => this.#restart(() => camera.setCldstrmEventListObtain()));
    onClick("cloud-info", () => this.#obtainInfo(this.#chosen));
    onClick("cloud-copy", () => this.#copy(this.#informed, byId("cloud-server").selectedIndex));
    onClick("cloud-clear", () => this.#restart(() => camera.setCldstrmClearStatus(CLEAR_ALL)));
    connection.on("status", (status) => this.#showStatus(status));
    this.#showEvents();
  }

  #setUpLogin(form) {
    const { Username, Password, ServerURL } = form.elements;
    const logIn = () =>
      this.#camera.setCldstrmLogin({ username: Username.value, password: Password.value, serverURL: ServerURL.value });
    onSubmit(form, () => this.#restart(logIn));
    onClick("cloud-logout", () => this.#restart(() => this.#camera.setCldstrmLogout()));
  }

  /// Sends what makes the list of events out of date.
  #restart(call) {
    this.#chosen = this.#informed = undefined;
    this.#showEvents();
    this.#send(call);
  }

  #obtainInfo(eventID) {
    this.#informed = undefined;
    this.#send(async () => {
      await this.#camera.setCldstrmStreamInfoObtain({ eventID });
      this.#informed = eventID;
    });
  }

  #copy(eventID, strmsrvID) {
    const text = `Copied "${this.#events[eventID]}" to server ${strmsrvID + 1}, which is in use now.`;
    this.#send(async () => {
      await this.#camera.setCldstrmStreamInfoToStrmsrv({ eventID, strmsrvID });
      setText("cloud-copied", text);
      announce(text);
    });
  }

  #send(call) {
    setText("cloud-copied", "");
    this.#queue.send("Cloud service", call);
  }

  #readEvents() {
    this.#queue.send("Events", async () => {
      const { EventInfo = [] } = await this.#camera.getCldstrmEventList();
      this.#showEvents(EventInfo.map(({ Title }) => Title));
    });
  }

  /// @param events  undefined if they are not known
  #showEvents(events) {
    this.#events = events;
    const rows = events?.map((title, number) => this.#eventChoice(title, number)) ?? [];
    if (rows.length === 0) {
      rows.push(element("p", {}, events ? "The service has no events." : "No list yet."));
    }
    byId("cloud-event-list").replaceChildren(...rows);
    this.#enable();
  }

  #eventChoice(title, number) {
    const onchange = () => {
      this.#chosen = number;
      this.#enable();
    };
    const radio = element("input", { type: "radio", name: "cloud-event", value: number, onchange });
    return element("label", { className: "choice" }, radio, title);
  }

  #enable() {
    const is = (step, state) => this.#steps[step] === state;
    const hasEvents = is("GetEventListStatus", "Finished") && this.#events?.length > 0;
    const canCopy = hasEvents && is("GetStreamInfoStatus", "Finished") && this.#informed !== undefined;
    const enabled = {
      "cloud-log-in": !is("LoginStatus", "Doing"),
      "cloud-logout": is("LoginStatus", "Finished"),
      "cloud-events": is("LoginStatus", "Finished") && !is("GetEventListStatus", "Doing"),
      "cloud-info": hasEvents && this.#chosen !== undefined && !is("GetStreamInfoStatus", "Doing"),
      "cloud-server": canCopy,
      "cloud-copy": canCopy,
    };
    Object.entries(enabled).forEach(([id, isEnabled]) => (byId(id).disabled = !isEnabled));
  }

  #showStatus({ CloudStreaming }) {
    const isVisible = !byId("cloud").hidden;
    for (const [id, step, name] of STATES) {
      const state = CloudStreaming[step];
      const before = this.#steps[step];
      byId(id).dataset.state = state;
      setText(id, inWords(state));
      if (isVisible && before !== undefined && before !== state) {
        announce(`${name}: ${inWords(state)}`);
      }
    }
    this.#steps = CloudStreaming;
    const error = cloudErrorInWords(CloudStreaming.Error);
    setText("cloud-error", error);
    byId("cloud-error").hidden = error === "";
    const hasList = CloudStreaming.GetEventListStatus === "Finished";
    if (isVisible && hasList && this.#events === undefined && !this.#queue.isBusy("Events")) {
      this.#readEvents();
    }
    this.#enable();
  }
}
