// The view of the camera's time, system information and position.

import { byId, onClick, onSubmit, setFacts, setText } from "./dom.js";

const NTP_STATES = {
  Master: "the camera is the master",
  "Not Syncronized": "not synchronized",
  Syncronized: "synchronized",
};

export function setUpSettings({ camera, queue, attempt }) {
  const form = byId("ntp-form");
  const fields = form.elements;

  async function readTime() {
    const time = await attempt("Time settings", () => camera.getNTPStatus());
    if (time) {
      setText("ntp-status", NTP_STATES[time.Status] ?? "unknown");
      fields.Address.value = time.Address;
      fields.TcSync.checked = time.TcSync === "On";
    }
  }

  async function readSystem() {
    const info = await attempt("System information", () => camera.getSystemInfo());
    if (info) {
      setFacts(byId("system-facts"), {
        Model: info.Model,
        Region: info.Destination,
        "Serial number": info.Serial,
        "API version": info.ApiVersion,
      });
    }
  }

  async function readPosition() {
    const position = await attempt("Position", () => camera.getGPSInfo());
    if (position) {
      setFacts(byId("gps-facts"), { "Antenna level": position.AntennaLevel, Location: position.Location });
    }
  }

  onSubmit(form, () => {
    const address = fields.Address.value;
    const tcSync = fields.TcSync.checked ? "On" : "Off";
    queue.send("Time settings", async () => {
      await camera.setNTPServer({ address });
      await camera.setNTPSettings({ tcSync });
      await readTime();
    });
  });
  onClick("gps-read", readPosition);
  onClick("resume", () =>
    queue.send("Resume", () => camera.systemRequest({ request: "Resume" })),
  );

  return {
    show: async () => {
      await readTime();
      await readSystem();
      await readPosition();
    },
  };
}
