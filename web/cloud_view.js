// The walk through the cloud streaming service: five steps, each possible once the one before it has
// come to a good end.

import { announce, byId, element, onClick, onSubmit, setText } from "./dom.js";
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

  onSubmit(login, () => {
    const { Username, Password, ServerURL } = login.elements;
    forget();
    send(() =>
      camera.setCldstrmLogin({ username: Username.value, password: Password.value, serverURL: ServerURL.value }),
    );
  });
  onClick("cloud-logout", () => {
    forget();
    send(() => camera.setCldstrmLogout());
  });
  onClick("cloud-events", () => {
    forget();
    send(() => camera.setCldstrmEventListObtain());
  });
  onClick("cloud-info", () => {
    const event = chosen;
    informed = undefined;
    send(async () => {
      await camera.setCldstrmStreamInfoObtain({ eventID: event });
      informed = event;
    });
  });
  onClick("cloud-copy", () => {
    const event = informed;
    const server = byId("cloud-server").selectedIndex;
    send(async () => {
      await camera.setCldstrmStreamInfoToStrmsrv({ eventID: event, strmsrvID: server });
      setText("cloud-copied", `Copied "${events[event]}" to server ${server + 1}, which is in use now.`);
      announce(byId("cloud-copied").textContent);
    });
  });
  onClick("cloud-clear", () => {
    forget();
    send(() => camera.setCldstrmClearStatus(CLEAR_ALL));
  });

  function send(call) {
    setText("cloud-copied", "");
    queue.send("Cloud service", call);
  }

  function forget() {
    events = chosen = informed = undefined;
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
      list.replaceChildren(element("p", {}, events ? "The service has no events." : "No list yet."));
    } else {
      list.replaceChildren(...events.map(eventChoice));
    }
    enable();
  }

  function eventChoice(title, number) {
    const onchange = () => {
      chosen = number;
      enable();
    };
    const radio = element("input", { type: "radio", name: "cloud-event", value: number, onchange });
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

  function showStatus({ CloudStreaming }) {
    const visible = !byId("cloud").hidden;
    for (const [id, step, name] of shown) {
      const state = CloudStreaming[step];
      byId(id).dataset.state = state;
      setText(byId(id), inWords(state));
      if (visible && steps[step] !== undefined && steps[step] !== state) {
        announce(`${name}: ${inWords(state)}`);
      }
    }
    steps = CloudStreaming;
    setText("cloud-error", cloudErrorInWords(CloudStreaming.Error));
    byId("cloud-error").hidden = byId("cloud-error").textContent === "";
    if (visible && events === undefined && CloudStreaming.GetEventListStatus === "Finished" && !queue.isBusy("Events")) {
      readEvents();
    }
    enable();
  }

  connection.on("status", showStatus);
  forget();
  return {};
}
