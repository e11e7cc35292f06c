// The view of the camera's time, system information and position.

import { byId, onClick, onSubmit, setFacts, setText } from "./dom.js";

const NTP_STATES = {
  Master: "the camera is the master",
  "Not Syncronized": "not synchronized",
  Syncronized: "synchronized",
};

export function setUpSettings(remote) {
  const readTime = setUpTime(remote);
  const readSystem = setUpSystem(remote);
  const readPosition = setUpPosition(remote);
  return {
    show: async () => {
      await readTime();
      await readSystem();
      await readPosition();
    },
  };
}

function setUpTime({ camera, queue, attempt }) {
  const form = byId("ntp-form");
  const { Address, TcSync } = form.elements;
  const read = () =>
    attempt("Time settings", async () => {
      const time = await camera.getNTPStatus();
      setText("ntp-status", NTP_STATES[time.Status] ?? "unknown");
      Address.value = time.Address;
      TcSync.checked = time.TcSync === "On";
    });
  onSubmit(form, () => {
    const address = Address.value;
    const tcSync = TcSync.checked ? "On" : "Off";
    queue.send("Time settings", async () => {
      await camera.setNTPServer({ address });
      await camera.setNTPSettings({ tcSync });
      await read();
    });
  });
  return read;
}

function setUpSystem({ camera, queue, attempt }) {
  onClick("resume", () => queue.send("Resume", () => camera.systemRequest({ request: "Resume" })));
  return () =>
    attempt("System information", async () => {
      const { Model, Destination, Serial, ApiVersion } = await camera.getSystemInfo();
      const facts = { Model, Region: Destination, "Serial number": Serial, "API version": ApiVersion };
      setFacts(byId("system-facts"), facts);
    });
}

function setUpPosition({ camera, attempt }) {
  const read = () =>
    attempt("Position", async () => {
      const { AntennaLevel, Location } = await camera.getGPSInfo();
      setFacts(byId("gps-facts"), { "Antenna level": AntennaLevel, Location });
    });
  onClick("gps-read", read);
  return read;
}
