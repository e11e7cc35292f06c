// The four streaming servers: their names, transports and settings, and which one is in use.

import { methodName } from "./camera_client.js";
import { byId, element, onClick, onSubmit, options, setText } from "./dom.js";

const ADDRESS = { name: "DstAddress", label: "Address", longest: 129 };
const PORT = { name: "DstPort", label: "Port", largest: 65535 };
const number = (name, label) => ({ name, label, largest: 2 ** 31 - 1 });
const secret = (name, label, longest) => ({ name, label, longest, secret: true });

/// The settings of each transport in the order of the form: their names in the API and what they are.
const TRANSPORTS = {
  UDP: [ADDRESS, PORT, number("PcrJitter", "PCR jitter")],
  RTSP: [secret("Password", "Password", 39)],
  ZIXI: [
    ADDRESS,
    PORT,
    { name: "StreamId", label: "Stream id", longest: 69 },
    secret("Password", "Password", 129),
    number("Latency", "Latency"),
    number("AdaptiveBitrate", "Adaptive bit rate"),
  ],
  RTMP: [{ name: "DstUrl", label: "URL", longest: 199 }, secret("StreamKey", "Stream key", 69)],
  RTP: [
    // Kept with those of UDP, and not reported here.
    { ...ADDRESS, label: "Address (the camera does not report it)" },
    PORT,
    number("Smpte2022Fec", "SMPTE 2022 FEC"),
    number("FecMatrixL", "FEC matrix L"),
    number("FecMatrixD", "FEC matrix D"),
  ],
};

/// The member of a reply that holds a transport's settings.
const memberOf = (transport) => transport[0] + transport.slice(1).toLowerCase();

const SERVERS = 4;

/// What a text that was never set reads as.
const NEVER_SET = "0";

/// @param showTransport  receives the transport of the current server
/// @return `read` reads all servers
export function setUpServers({ camera, queue, attempt }, showTransport) {
  const form = byId("server-form");
  const transport = byId("server-transport");
  const servers = [];
  let current;
  let edited = 0;

  transport.append(...options(Object.keys(TRANSPORTS)));
  const choices = Array.from({ length: SERVERS }, (_, id) => {
    const text = element("span", {}, `Server ${id + 1}`);
    const onchange = () => edit(id);
    const radio = element("input", { type: "radio", name: "server", value: id, checked: id === edited, onchange });
    byId("server-choice").append(element("label", { className: "choice" }, radio, text));
    return text;
  });

  async function read() {
    await attempt("Streaming servers", async () => {
      current = (await camera.getCurrentStreamingServerID()).ID;
      for (let id = 0; id < SERVERS; ++id) {
        servers[id] = await camera.getStreamingServerSettings({ id });
      }
      showChoices();
      edit(edited);
      showTransport(servers[current]?.Type);
    });
  }

  function showChoices() {
    choices.forEach((text, id) => {
      const { Alias, Type } = servers[id];
      const name = Alias === NEVER_SET || !Alias ? "not set" : `${Alias}, ${Type}`;
      setText(text, `Server ${id + 1}: ${name}${id === current ? " (in use)" : ""}`);
    });
    setText("current-server", servers[current] ? choices[current].textContent : `number ${current}`);
  }

  function edit(id) {
    edited = id;
    const { Alias, Type } = servers[id] ?? {};
    form.elements.Alias.value = Alias === NEVER_SET ? "" : (Alias ?? "");
    transport.value = Object.hasOwn(TRANSPORTS, Type) ? Type : "UDP";
    showFields();
  }

  /// Settings of a transport that is not the server's present one are not reported: they are empty.
  function showFields() {
    const reported = servers[edited]?.[memberOf(transport.value)] ?? {};
    const rows = TRANSPORTS[transport.value].map((field) =>
      element("label", {}, `${field.label} `, input(field, reported[field.name])),
    );
    byId("server-fields").replaceChildren(...rows);
  }

  function settings() {
    const values = { id: edited, alias: form.elements.Alias.value };
    for (const { name, longest } of TRANSPORTS[transport.value]) {
      const field = form.elements[name];
      values[methodName(name)] = longest ? field.value : field.valueAsNumber;
    }
    return values;
  }

  transport.addEventListener("change", showFields);
  onSubmit(form, () => {
    const method = `setStreamingServerSettings${transport.value}`;
    const values = settings();
    queue.send("Streaming server", async () => {
      await camera[method](values);
      await read();
    });
  });
  onClick("use-server", () => {
    const id = edited;
    queue.send("Streaming server", async () => {
      await camera.setCurrentStreamingServerID({ id });
      await read();
    });
  });
  return { read };
}

function input({ name, longest, largest, secret }, value) {
  if (longest === undefined) {
    return element("input", { name, type: "number", min: 0, max: largest, required: true, value: value ?? 0 });
  }
  const text = value === undefined || value === NEVER_SET ? "" : value;
  return element("input", {
    name,
    type: secret ? "password" : "text",
    maxLength: longest,
    autocomplete: "off",
    value: text,
  });
}
