// The camera's words and errors in plain English.

import { CameraUnreachable, DisableError, InvalidReply, RequestedError } from "./camera_client.js";

/// Words that need more than lower case.
const WORDS = {
  RecPause: "rec paused",
  Thmubnail: "thumbnail",
  Play: "playback",
  USB: "USB",
  EditMetadata: "metadata",
  Pre: "pre-recording",
  Clip: "clip continuous",
  Frame: "frame by frame",
  Idol: "",
  Zoom: "running",
  AutoAELock: "auto, AE lock",
  ManualL: "manual L",
  ManualM: "manual M",
  ManualH: "manual H",
  Alc: "ALC",
  AlcAELock: "ALC, AE lock",
  Lolux: "low light",
  AeOff: "off",
  AeOn: "on",
  AeOnFace: "on, face",
  Eei: "EEI",
  EeiAELock: "EEI, AE lock",
  Faw: "full auto",
  FawAELock: "full auto, AE lock",
  A: "A",
  B: "B",
  AFFace: "auto, face",
  AF: "auto",
  MFOnePush: "manual, one push",
  MF: "manual",
  MFFace: "manual, face",
  NoCard: "no card",
  Select: "selected",
  NoSelect: "not selected",
  SelectRec: "recording",
  NoSelectRec: "recording, not selected",
  Invalid: "unusable card",
  WLAN_AP: "WLAN access point",
  WLAN_P2P: "WLAN peer to peer",
  Ethernet: "Ethernet",
  Idle: "not begun",
  Doing: "under way",
  OFF: "no upload",
  TRANS: "connecting to the server",
  TRUST: "the server's key is unknown",
  PROMPT: "the camera asks",
};

const CLOUD_ERRORS = {
  Ssl: "The secure connection to the service failed.",
  Timeout: "The service did not answer in time.",
  Authorization: "The service refuses this user name or password.",
  Server: "The service reports an error.",
  Url: "The service URL is wrong.",
  Other: "The step failed for another reason.",
};

const ERRORS = [
  [DisableError, "The camera cannot do this in its present state."],
  [RequestedError, "The camera refuses this request."],
  [InvalidReply, "The camera's reply cannot be read: one of its texts holds a quote or a backslash."],
];

/// A word of the camera as the page shows it.
export const inWords = (word) => WORDS[word] ?? word.replaceAll("_", " ").toLowerCase();

/// Empty if there is no error.
export const cloudErrorInWords = (word) => CLOUD_ERRORS[word] ?? "";

/// Why the camera has not answered: an error's message without the command.
export const reasonInWords = (error) => error.message.replace(/^\w+: /, "");

/// What to tell the operator about a command that failed.
export function errorInWords(error) {
  if (error instanceof CameraUnreachable) {
    return `The camera cannot be reached: ${reasonInWords(error)}.`;
  }
  return ERRORS.find(([type]) => error instanceof type)?.[1] ?? error.message;
}
