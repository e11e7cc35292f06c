// The four streaming servers: their names, transports and settings, and which one is in use.

import { methodName } from "./camera_client.js";
import { byId, element, setText } from "./dom.js";

/// For each transport the member of the reply that holds its settings, and its settings in the order
/// of the form: their names in the API and what they are.
const TRANSPORTS = {
  UDP: {
    member: "Udp",
    fields: [
      { name: "DstAddress", label: "Address", longest: 129 },
      { name: "DstPort", label: "Port", largest: 65535 },
      { name: "PcrJitter", label: "PCR jitter" },
    ],
  },
  RTSP: {
    member: "Rtsp",
    fields: [{ name: "Password", label: "Password", longest: 39, secret: true }],
  },
  ZIXI: {
    member: "Zixi",
    fields: [
      { name: "DstAddress", label: "Address", longest: 129 },
      { name: "DstPort", label: "Port", largest: 65535 },
      { name: "StreamId", label: "Stream id", longest: 69 },
      { name: "Password", label: "Password", longest: 129, secret: true },
      { name: "Latency", label: "Latency" },
      { name: "AdaptiveBitrate", label: "Adaptive bit rate" },
    ],
  },
  RTMP: {
    member: "Rtmp",
    fields: [
      { name: "DstUrl", label: "URL", longest: 199 },
      { name: "StreamKey", label: "Stream key", longest: 69, secret: true },
    ],
  },
  RTP: {
    member: "Rtp",
    note: "The camera keeps this address with those of UDP and does not report it here.",
    fields: [
      { name: "DstAddress", label: "Address", longest: 129 },
      { name: "DstPort", label: "Port", largest: 65535 },
      { name: "Smpte2022Fec", label: "SMPTE 2022 FEC" },
      { name: "FecMatrixL", label: "FEC matrix L" },
      { name: "FecMatrixD", label: "FEC matrix D" },
    ],
  },
};

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

  transport.append(...Object.keys(TRANSPORTS).map((name) => element("option", { textContent: name })));
  const choices = Array.from({ length: SERVERS }, (_, id) => {
    const text = element("span", { textContent: `Server ${id + 1}` });
    const radio = element("input", { type: "radio", name: "server", value: id, checked: id === edited });
    radio.addEventListener("change", () => edit(id));
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
    setText(byId("current-server"), servers[current] ? choices[current].textContent : `number ${current}`);
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
    const { member, fields, note = "" } = TRANSPORTS[transport.value];
    const reported = servers[edited]?.[member] ?? {};
    byId("server-fields").replaceChildren(
      ...fields.map((field) => element("label", {}, `${field.label} `, input(field, reported[field.name]))),
      element("p", { className: "quiet", textContent: note }),
    );
  }

  function settings() {
    const { fields } = TRANSPORTS[transport.value];
    const values = { id: edited, alias: form.elements.Alias.value };
    for (const { name, longest } of fields) {
      const field = form.elements[name];
      values[methodName(name)] = longest ? field.value : field.valueAsNumber;
    }
    return values;
  }

  transport.addEventListener("change", showFields);
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const method = `setStreamingServerSettings${transport.value}`;
    const values = settings();
    queue.send("Streaming server", async () => {
      await camera[method](values);
      await read();
    });
  });
  byId("use-server").addEventListener("click", () => {
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
    return element("input", { name, type: "number", min: 0, max: largest ?? 2 ** 31 - 1, required: true, value: value ?? 0 });
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
