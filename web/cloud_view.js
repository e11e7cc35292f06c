// The walk through the cloud streaming service: five steps, each possible once the one before it has
// come to a good end.

import { announce, byId, element, setText } from "./dom.js";
import { cloudErrorInWords, inWords } from "./words.js";

/// Flags of `SetCldstrmClearStatus`.
const CLEAR_ALL = { login: 1, getEventList: 1, getStreamInfo: 1 };

export function setUpCloud({ camera, connection, queue }) {
  const login = byId("cloud-login");
  let steps = {};
  let events;
  let chosen;
  /// The event whose stream information the camera has.
  let informed;

  login.addEventListener("submit", (event) => {
    event.preventDefault();
    const { Username, Password, ServerURL } = login.elements;
    forget();
    send(() =>
      camera.setCldstrmLogin({ username: Username.value, password: Password.value, serverURL: ServerURL.value }),
    );
  });
  byId("cloud-logout").addEventListener("click", () => {
    forget();
    send(() => camera.setCldstrmLogout());
  });
  byId("cloud-events").addEventListener("click", () => {
    forget();
    send(() => camera.setCldstrmEventListObtain());
  });
  byId("cloud-info").addEventListener("click", () => {
    const event = chosen;
    informed = undefined;
    send(async () => {
      await camera.setCldstrmStreamInfoObtain({ eventID: event });
      informed = event;
    });
  });
  byId("cloud-copy").addEventListener("click", () => {
    const event = informed;
    const server = Number(byId("cloud-server").value);
    send(async () => {
      await camera.setCldstrmStreamInfoToStrmsrv({ eventID: event, strmsrvID: server });
      setText(byId("cloud-copied"), `Copied "${events[event]}" to server ${server + 1}, which is in use now.`);
      announce(byId("cloud-copied").textContent);
    });
  });
  byId("cloud-clear").addEventListener("click", () => {
    forget();
    send(() => camera.setCldstrmClearStatus(CLEAR_ALL));
  });

  function send(call) {
    setText(byId("cloud-copied"), "");
    queue.send("Cloud service", call);
  }

  function forget() {
    events = undefined;
    chosen = undefined;
    informed = undefined;
    showEvents();
  }

  function readEvents() {
    queue.send("Events", async () => {
      const { EventInfo = [] } = await camera.getCldstrmEventList();
      events = EventInfo.map(({ Title }) => Title);
      showEvents();
    });
  }

  function showEvents() {
    const list = byId("cloud-event-list");
    if (events === undefined || events.length === 0) {
      list.replaceChildren(element("p", { textContent: events ? "The service has no events." : "No list yet." }));
    } else {
      list.replaceChildren(...events.map(eventChoice));
    }
    enable();
  }

  function eventChoice(title, number) {
    const radio = element("input", { type: "radio", name: "cloud-event", value: number });
    radio.addEventListener("change", () => {
      chosen = number;
      enable();
    });
    return element("label", { className: "choice" }, radio, title);
  }

  function enable() {
    const is = (step, state) => steps[step] === state;
    const hasEvents = is("GetEventListStatus", "Finished") && events?.length > 0;
    byId("cloud-logout").disabled = !is("LoginStatus", "Finished");
    byId("cloud-events").disabled = !is("LoginStatus", "Finished") || is("GetEventListStatus", "Doing");
    byId("cloud-info").disabled = !hasEvents || chosen === undefined || is("GetStreamInfoStatus", "Doing");
    const canCopy = hasEvents && is("GetStreamInfoStatus", "Finished") && informed !== undefined;
    byId("cloud-copy").disabled = byId("cloud-server").disabled = !canCopy;
    login.querySelector('[type="submit"]').disabled = is("LoginStatus", "Doing");
  }

  const shown = [
    ["cloud-login-state", "LoginStatus", "Login"],
    ["cloud-events-state", "GetEventListStatus", "List of events"],
    ["cloud-info-state", "GetStreamInfoStatus", "Stream information"],
  ];
  let visible = false;

  function showStatus({ CloudStreaming }) {
    for (const [id, step, name] of shown) {
      const state = CloudStreaming[step];
      byId(id).dataset.state = state;
      setText(byId(id), inWords(state));
      if (visible && steps[step] !== undefined && steps[step] !== state) {
        announce(`${name}: ${inWords(state)}`);
      }
    }
    steps = CloudStreaming;
    setText(byId("cloud-error"), cloudErrorInWords(CloudStreaming.Error));
    byId("cloud-error").hidden = byId("cloud-error").textContent === "";
    if (visible && events === undefined && CloudStreaming.GetEventListStatus === "Finished" && !queue.isBusy("Events")) {
      readEvents();
    }
    enable();
  }

  connection.addEventListener("status", ({ detail }) => showStatus(detail));
  forget();
  return {
    show: () => (visible = true),
    hide: () => (visible = false),
  };
}
