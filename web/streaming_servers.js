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

/// A text that was never set reads as "0".
const shown = (text = "") => (text === "0" ? "" : text);

/// The form of one server and the choice of it.
export class ServerForm {
  #remote;
  #showTransport;
  #form = byId("server-form");
  #transport = this.#form.elements.Transport;
  #choices = Array.from({ length: SERVERS }, (_, id) => this.#makeChoice(id));
  #servers = [];
  #current;
  #edited = 0;

  /// @param showTransport  receives the transport of the current server
  constructor(remote, showTransport) {
    this.#remote = remote;
    this.#showTransport = showTransport;
    this.#transport.append(...options(Object.keys(TRANSPORTS)));
    this.#transport.onchange = () => this.#showFields();
    onSubmit(this.#form, () => this.#save(`setStreamingServerSettings${this.#transport.value}`, this.#settings()));
    onClick("use-server", () => this.#save("setCurrentStreamingServerID", { id: this.#edited }));
  }

  #makeChoice(id) {
    const text = element("span", {}, `Server ${id + 1}`);
    const onchange = () => this.#edit(id);
    const radio = element("input", { type: "radio", name: "server", value: id, checked: id === 0, onchange });
    byId("server-choice").append(element("label", { className: "choice" }, radio, text));
    return text;
  }

  /// Reads all servers.
  read() {
    const { camera, attempt } = this.#remote;
    return attempt("Streaming servers", async () => {
      this.#current = (await camera.getCurrentStreamingServerID()).ID;
      for (let id = 0; id < SERVERS; ++id) {
        this.#servers[id] = await camera.getStreamingServerSettings({ id });
      }
      this.#showChoices();
      this.#edit(this.#edited);
      this.#showTransport(this.#servers[this.#current]?.Type);
    });
  }

  #save(method, settings) {
    this.#remote.queue.send("Streaming server", async () => {
      await this.#remote.camera[method](settings);
      await this.read();
    });
  }

  #showChoices() {
    this.#choices.forEach((text, id) => {
      const { Alias, Type } = this.#servers[id];
      const name = shown(Alias) === "" ? "not set" : `${Alias}, ${Type}`;
      setText(text, `Server ${id + 1}: ${name}`);
    });
    setText("current-server", this.#choices[this.#current]?.textContent ?? `server number ${this.#current}`);
  }

  #edit(id) {
    const { Alias, Type } = this.#servers[id] ?? {};
    this.#edited = id;
    this.#form.elements.Alias.value = shown(Alias);
    this.#transport.value = Object.hasOwn(TRANSPORTS, Type) ? Type : "UDP";
    this.#showFields();
  }

  /// Settings of a transport that is not the server's present one are not reported: they are empty.
  #showFields() {
    const transport = this.#transport.value;
    const reported = this.#servers[this.#edited]?.[memberOf(transport)] ?? {};
    const rows = TRANSPORTS[transport].map(([name, kind]) => {
      const label = transport === "RTP" && name === "DstAddress" ? RTP_ADDRESS : LABELS[name];
      return element("label", {}, `${label} `, input(name, kind, reported[name]));
    });
    byId("server-fields").replaceChildren(...rows);
  }

  #settings() {
    const fields = this.#form.elements;
    const values = TRANSPORTS[this.#transport.value].map(([name, { type }]) => {
      const { value, valueAsNumber } = fields[name];
      return [methodName(name), type === "number" ? valueAsNumber : value];
    });
    return { id: this.#edited, alias: fields.Alias.value, ...Object.fromEntries(values) };
  }
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
    value: shown(value),
  });
}
