// The view of streaming: format, servers, start and stop, return audio.

import { byId, element, setText } from "./dom.js";
import { setUpServers } from "./streaming_servers.js";

/// The types of the bit-rate tables, and those that belong to a server's transport.
const TYPES = {
  UDP: ["UDP", "UDPN", "UDPL"],
  TCP: ["TCP"],
  RTSP: ["RTSP"],
  ZIXI: ["ZIXIM", "ZIXIL"],
  RTMP: ["RTMP"],
  RTP: ["RTP"],
};

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
  const note = (text) => setText(byId("stream-note"), `${text} at ${new Date().toLocaleTimeString()}.`);
  byId("stream-start").addEventListener("click", () =>
    queue.send("Streaming", async () => {
      await camera.setStreamingCtrl({ streaming: "On" });
      note("Started");
    }),
  );
  byId("stream-stop").addEventListener("click", () =>
    queue.stop("Streaming", async (options) => {
      await camera.setStreamingCtrl({ streaming: "Off" }, options);
      note("Stopped");
    }),
  );
}

/// Offers only what the camera reports as available. What is stored but not available now is shown
/// beside the choices, for it stays until something else is set.
function setUpFormat({ camera, queue, attempt }) {
  const fields = {
    type: byId("format-type"),
    resolution: byId("format-resolution"),
    framerate: byId("format-framerate"),
    bitrate: byId("format-bitrate"),
  };
  setOptions(fields.type, Object.values(TYPES).flat());

  async function read() {
    await attempt("Streaming format", async () => {
      const stored = await camera.getStreamingSettings();
      setText(
        byId("format-stored"),
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
    const [type, resolution, framerate] = ["type", "resolution", "framerate"].map((key) => fields[key].value);
    const rates = framerate
      ? (await camera.availableStreamingBitrateSettings({ type, resolution, framerate })).AvailableBitrate
      : {};
    setOptions(fields.bitrate, available(rates), wanted.Bitrate);
  }

  const chosen = () => ({ Framerate: fields.framerate.value, Bitrate: fields.bitrate.value });
  const follow = (readNext) => () => attempt("Streaming format", () => readNext(chosen()));
  fields.resolution.addEventListener("change", follow(readFramerates));
  fields.framerate.addEventListener("change", follow(readBitrates));
  fields.type.addEventListener("change", follow(readBitrates));
  byId("format-form").addEventListener("submit", (event) => {
    event.preventDefault();
    const { value: resolution } = fields.resolution;
    const { value: framerate } = fields.framerate;
    const { value: bitrate } = fields.bitrate;
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
      const types = TYPES[transport] ?? [];
      if (!types.includes(fields.type.value) && types.length > 0) {
        fields.type.value = types[0];
      }
    },
  };
}

const available = (flags) => Object.keys(flags).filter((name) => flags[name] !== 0);

function setOptions(select, names, wanted) {
  select.replaceChildren(...names.map((name) => element("option", { textContent: name })));
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
      fields.Address.value = settings.Address;
      fields.Port.value = settings.Port;
      fields.Mountpoint.value = settings.Mountpoint;
    }
  }

  form.addEventListener("submit", (event) => {
    event.preventDefault();
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
  byId("ifb-start").addEventListener("click", () =>
    queue.send("Return audio", () => camera.setIFBCtrl({ streaming: "Start" })),
  );
  byId("ifb-stop").addEventListener("click", () =>
    queue.stop("Return audio", (options) => camera.setIFBCtrl({ streaming: "Stop" }, options)),
  );
  return { read };
}
