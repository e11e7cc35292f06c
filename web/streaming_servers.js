// The four streaming servers: their names, transports and settings, and which one is in use.

import { COMMANDS, methodName } from "./camera_client.js";
import { byId, element, onClick, onSubmit, options, setText } from "./dom.js";

/// What the settings of the transports are called in the form.
const LABELS = {
  DstAddress: "Address",
  DstPort: "Port",
  PcrJitter: "PCR jitter",
  StreamId: "Stream id",
  Password: "Password",
  Latency: "Latency",
  AdaptiveBitrate: "Adaptive bit rate",
  DstUrl: "URL",
  StreamKey: "Stream key",
  Smpte2022Fec: "SMPTE 2022 FEC",
  FecMatrixL: "FEC matrix L",
  FecMatrixD: "FEC matrix D",
};
/// It is kept with that of UDP.
const RTP_ADDRESS = "Address (the camera does not report it)";
const SECRETS = ["Password", "StreamKey"];
const LARGEST_PORT = 65535;

const COMMAND = "SetStreamingServerSettings";

/// The settings of each transport in the order of the form: their names in the API and their kinds.
const TRANSPORTS = Object.fromEntries(
  COMMANDS.filter(({ name }) => name.startsWith(COMMAND)).map(({ name, parameters }) => [
    name.slice(COMMAND.length),
    Object.entries(parameters).filter(([parameter]) => parameter in LABELS),
  ]),
);

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
      setText(text, `Server ${id + 1}: ${name}`);
    });
    setText("current-server", choices[current]?.textContent ?? `server number ${current}`);
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
    const rows = TRANSPORTS[transport.value].map(([name, kind]) => {
      const label = transport.value === "RTP" && name === "DstAddress" ? RTP_ADDRESS : LABELS[name];
      return element("label", {}, `${label} `, input(name, kind, reported[name]));
    });
    byId("server-fields").replaceChildren(...rows);
  }

  function settings() {
    const values = { id: edited, alias: form.elements.Alias.value };
    for (const [name, { type }] of TRANSPORTS[transport.value]) {
      const field = form.elements[name];
      values[methodName(name)] = type === "number" ? field.valueAsNumber : field.value;
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

function input(name, { type, largest, longest }, value) {
  if (type === "number") {
    const max = name === "DstPort" ? LARGEST_PORT : largest;
    return element("input", { name, type, min: 0, max, required: true, value: value ?? 0 });
  }
  return element("input", {
    name,
    type: SECRETS.includes(name) ? "password" : "text",
    maxLength: longest,
    autocomplete: "off",
    value: value === undefined || value === NEVER_SET ? "" : value,
  });
}
