// The view of streaming: format, servers, start and stop, return audio.

import { COMMANDS } from "./camera_client.js";
import { byId, onClick, onSubmit, options, setText } from "./dom.js";
import { setUpServers } from "./streaming_servers.js";

/// The types of the bit-rate tables. Their names begin with the transport that they belong to.
const TYPES = COMMANDS.find(({ name }) => name === "AvailableStreamingBitrateSettings").parameters.Type.words;

export function setUpStreaming(remote) {
  const format = setUpFormat(remote);
  const servers = setUpServers(remote, format.showTransport);
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
function setUpFormat({ camera, queue, attempt }) {
  const fields = {
    type: byId("format-type"),
    resolution: byId("format-resolution"),
    framerate: byId("format-framerate"),
    bitrate: byId("format-bitrate"),
  };
  setOptions(fields.type, TYPES);

  const chosen = () => Object.fromEntries(Object.entries(fields).map(([name, { value }]) => [name, value]));

  async function read() {
    await attempt("Streaming format", async () => {
      const stored = await camera.getStreamingSettings();
      setText(
        "format-stored",
        `Stored: ${stored.Resolution || "?"}, ${stored.Framerate || "?"}, ${stored.Bitrate || "no bit rate"}`,
      );
      const { AvailableResolution } = await camera.availableStreamingResolutionSettings();
      setOptions(fields.resolution, available(AvailableResolution), stored.Resolution);
      byId("cannot-stream").hidden = fields.resolution.length > 0;
      byId("format-form").inert = fields.resolution.length === 0;
      await readFramerates(stored);
    });
  }

  async function readFramerates(wanted) {
    const resolution = fields.resolution.value;
    const rates = resolution
      ? (await camera.availableStreamingFramerateSettings({ resolution })).AvailableFramerate
      : {};
    setOptions(fields.framerate, available(rates), wanted.Framerate);
    await readBitrates(wanted);
  }

  async function readBitrates(wanted) {
    const { type, resolution, framerate } = chosen();
    const rates = framerate
      ? (await camera.availableStreamingBitrateSettings({ type, resolution, framerate })).AvailableBitrate
      : {};
    setOptions(fields.bitrate, available(rates), wanted.Bitrate);
  }

  /// Whatever was chosen for the fields that follow stays, if it is available.
  const follow = (readNext) => () =>
    attempt("Streaming format", () => readNext({ Framerate: fields.framerate.value, Bitrate: fields.bitrate.value }));
  fields.resolution.addEventListener("change", follow(readFramerates));
  fields.framerate.addEventListener("change", follow(readBitrates));
  fields.type.addEventListener("change", follow(readBitrates));
  onSubmit(byId("format-form"), () => {
    const { resolution, framerate, bitrate } = chosen();
    queue.send("Streaming format", async () => {
      await camera.setStreamingSettings({ resolution, bitrate });
      await camera.setStreamingFramerate({ framerate });
      await read();
    });
  });

  return {
    read,
    /// Chooses the type that fits the current server's transport.
    showTransport: (transport) => {
      const { type } = fields;
      if (!type.value.startsWith(transport)) {
        type.value = TYPES.find((name) => name.startsWith(transport)) ?? type.value;
      }
    },
  };
}

const available = (flags) => Object.keys(flags).filter((name) => flags[name] !== 0);

function setOptions(select, names, wanted) {
  select.replaceChildren(...options(names));
  if (names.includes(wanted)) {
    select.value = wanted;
  }
}

function setUpReturnAudio({ camera, queue, attempt }) {
  const form = byId("ifb-form");
  const fields = form.elements;

  async function read() {
    const settings = await attempt("Return audio", () => camera.getIFBSettings());
    if (settings) {
      fields.Function.checked = settings.Function === "Enable";
      for (const name of ["Address", "Port", "Mountpoint"]) {
        fields[name].value = settings[name];
      }
    }
  }

  onSubmit(form, () => {
    const settings = {
      function: fields.Function.checked ? "Enable" : "Disable",
      address: fields.Address.value,
      port: fields.Port.valueAsNumber,
      mountpoint: fields.Mountpoint.value,
    };
    queue.send("Return audio", async () => {
      await camera.setIFBSettings(settings);
      await read();
    });
  });
  onClick("ifb-start", () =>
    queue.send("Return audio", () => camera.setIFBCtrl({ streaming: "Start" })),
  );
  onClick("ifb-stop", () =>
    queue.stop("Return audio", (options) => camera.setIFBCtrl({ streaming: "Stop" }, options)),
  );
  return { read };
}
