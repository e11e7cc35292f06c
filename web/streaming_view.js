// The view of streaming: format, servers, start and stop, return audio.

import { COMMANDS } from "./camera_client.js";
import { byId, onClick, onSubmit, options, setText } from "./dom.js";
import { ServerForm } from "./streaming_servers.js";

/// The types of the bit-rate tables. Their names begin with the transport that they belong to.
const TYPES = COMMANDS.find(({ name }) => name === "AvailableStreamingBitrateSettings").parameters.Type.words;

export function setUpStreaming(remote) {
  const format = new FormatForm(remote);
  const servers = new ServerForm(remote, (transport) => format.showTransport(transport));
  const returnAudio = setUpReturnAudio(remote);
  setUpControl(remote);
  return {
    show: async () => {
      await servers.read();
      await format.read();
      await returnAudio.read();
    },
  };
}

function setUpControl({ camera, queue }) {
  const note = (text) => setText("stream-note", `${text} at ${new Date().toLocaleTimeString()}.`);
  onClick("stream-start", () =>
    queue.send("Streaming", async () => {
      await camera.setStreamingCtrl({ streaming: "On" });
      note("Started");
    }),
  );
  onClick("stream-stop", () =>
    queue.stop("Streaming", async (options) => {
      await camera.setStreamingCtrl({ streaming: "Off" }, options);
      note("Stopped");
    }),
  );
}

/// Offers only what the camera reports as available. The stored format stays in force until another
/// one is set, even if it is no longer available, so it is shown as well.
class FormatForm {
  #remote;
  #form = byId("format-form");
  #fields = this.#form.elements;

  constructor(remote) {
    const { Type, Resolution, Framerate } = this.#fields;
    this.#remote = remote;
    Type.append(...options(TYPES));
    this.#follow(Resolution, (wanted) => this.#readFramerates(wanted));
    this.#follow(Framerate, (wanted) => this.#readBitrates(wanted));
    this.#follow(Type, (wanted) => this.#readBitrates(wanted));
    onSubmit(this.#form, () => this.#store(this.#chosen));
  }

  /// Chooses the type that fits the current server's transport.
  showTransport(transport) {
    const { Type } = this.#fields;
    if (!Type.value.startsWith(transport)) {
      Type.value = TYPES.find((name) => name.startsWith(transport)) ?? Type.value;
    }
  }

  read() {
    const { camera, attempt } = this.#remote;
    const { Resolution } = this.#fields;
    return attempt("Streaming format", async () => {
      const stored = await camera.getStreamingSettings();
      showStored(stored);
      const { AvailableResolution } = await camera.availableStreamingResolutionSettings();
      offer(Resolution, AvailableResolution, stored.Resolution);
      this.#form.inert = Resolution.length === 0;
      byId("cannot-stream").hidden = !this.#form.inert;
      await this.#readFramerates(stored);
    });
  }

  get #chosen() {
    const { Type, Resolution, Framerate, Bitrate } = this.#fields;
    return { type: Type.value, resolution: Resolution.value, framerate: Framerate.value, bitrate: Bitrate.value };
  }

  async #readFramerates(wanted) {
    const { resolution } = this.#chosen;
    const reply = resolution ? await this.#remote.camera.availableStreamingFramerateSettings({ resolution }) : {};
    offer(this.#fields.Framerate, reply.AvailableFramerate, wanted.Framerate);
    await this.#readBitrates(wanted);
  }

  async #readBitrates(wanted) {
    const { bitrate, ...format } = this.#chosen;
    const reply = format.framerate ? await this.#remote.camera.availableStreamingBitrateSettings(format) : {};
    offer(this.#fields.Bitrate, reply.AvailableBitrate, wanted.Bitrate);
  }

  /// Whatever was chosen for the fields that follow stays, if it is available.
  #follow(field, readNext) {
    field.onchange = () => {
      const { framerate, bitrate } = this.#chosen;
      this.#remote.attempt("Streaming format", () => readNext({ Framerate: framerate, Bitrate: bitrate }));
    };
  }

  #store({ resolution, framerate, bitrate }) {
    const { camera, queue } = this.#remote;
    queue.send("Streaming format", async () => {
      await camera.setStreamingSettings({ resolution, bitrate });
      await camera.setStreamingFramerate({ framerate });
      await this.read();
    });
  }
}

function showStored({ Resolution, Framerate, Bitrate }) {
  setText("format-stored", `Stored: ${Resolution || "?"}, ${Framerate || "?"}, ${Bitrate || "no bit rate"}`);
}

/// Offers the names whose flag is set.
function offer(select, flags = {}, wanted) {
  const names = Object.keys(flags).filter((name) => flags[name] !== 0);
  select.replaceChildren(...options(names));
  if (names.includes(wanted)) {
    select.value = wanted;
  }
}

function setUpReturnAudio({ camera, queue, attempt }) {
  const form = byId("ifb-form");
  const { Function: isEnabled, Address, Port, Mountpoint } = form.elements;
  const read = () =>
    attempt("Return audio", async () => {
      const settings = await camera.getIFBSettings();
      isEnabled.checked = settings.Function === "Enable";
      Address.value = settings.Address;
      Port.value = settings.Port;
      Mountpoint.value = settings.Mountpoint;
    });
  onSubmit(form, () => {
    const settings = {
      function: isEnabled.checked ? "Enable" : "Disable",
      address: Address.value,
      port: Port.valueAsNumber,
      mountpoint: Mountpoint.value,
    };
    queue.send("Return audio", async () => {
      await camera.setIFBSettings(settings);
      await read();
    });
  });
  onClick("ifb-start", () => queue.send("Return audio", () => camera.setIFBCtrl({ streaming: "Start" })));
  onClick("ifb-stop", () =>
    queue.stop("Return audio", (options) => camera.setIFBCtrl({ streaming: "Stop" }, options)),
  );
  return { read };
}
