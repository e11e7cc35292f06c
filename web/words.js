// The camera's words in those of its operator, and errors in words.

import {
  CameraUnreachable,
  DisableError,
  InvalidReply,
  InvalidValue,
  RequestedError,
  SessionError,
} from "./camera_client.js";

const WORDS = {
  // Modes and status
  Thmubnail: "thumbnails",
  EditMetadata: "metadata editing",
  Camera: "camera",
  Play: "playback",
  Normal: "normal",
  Pre: "pre-recording",
  Clip: "clip continuous",
  Frame: "frame by frame",
  Interval: "interval",
  Idol: "",
  Zoom: "running",
  // Image controls
  Manual: "manual",
  Auto: "auto",
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
  Off: "off",
  Eei: "EEI",
  EeiAELock: "EEI, AE lock",
  Step: "step",
  Variable: "variable",
  Preset: "preset",
  Faw: "full auto",
  FawAELock: "full auto, AE lock",
  AFFace: "auto, face",
  AF: "auto",
  MFOnePush: "manual, one push",
  MF: "manual",
  MFFace: "manual, face",
  // Slots
  NoCard: "no card",
  Select: "selected",
  NoSelect: "not selected",
  SelectRec: "recording",
  NoSelectRec: "recording, not selected",
  Invalid: "unusable card",
  Unknown: "unknown",
  // Network
  None: "none",
  Mismatch: "mismatch",
  Connecting: "connecting",
  Connected: "connected",
  WLAN_AP: "WLAN access point",
  WLAN_P2P: "WLAN peer to peer",
  Cellular: "cellular",
  // Steps of the cloud service
  Idle: "not begun",
  Doing: "under way",
  Finished: "finished",
  Failed: "failed",
  // Upload phases
  OFF: "No upload",
  START: "Starting",
  OCCUPY_SLOT: "Taking the card",
  CLEAR: "Clearing",
  MOUNT: "Mounting the card",
  PARSE: "Reading the clips",
  TRANS: "Connecting to the server",
  PUT_FILE: "Sending",
  TRUST: "The server's key is unknown",
  PROMPT: "The camera asks",
  UNMOUNT: "Unmounting the card",
  RELEASE_SLOT: "Giving the card back",
  RECOVER: "Recovering",
  RESUME: "Resuming",
};

const CLOUD_ERRORS = {
  Ssl: "The secure connection to the service failed.",
  Timeout: "The service did not answer in time.",
  Authorization: "The service refuses this user name or password.",
  Server: "The service reports an error.",
  Url: "The service URL is wrong.",
  Other: "The step failed for another reason.",
};

/// A word of the camera as the page shows it; one that is unknown stays as it is.
export const inWords = (word) => WORDS[word] ?? word;

/// Empty for no error.
export const cloudErrorInWords = (word) => CLOUD_ERRORS[word] ?? "";

/// What to tell the operator about a command that failed.
export function errorInWords(error) {
  if (error instanceof InvalidValue) {
    return error.message;
  }
  if (error instanceof SessionError) {
    return "The session has ended: log in again.";
  }
  if (error instanceof DisableError) {
    return "The camera cannot do this in its present state.";
  }
  if (error instanceof RequestedError) {
    return "The camera refuses this request.";
  }
  if (error instanceof InvalidReply) {
    return "The camera's reply cannot be read: one of its texts holds a quote or a backslash.";
  }
  if (error instanceof CameraUnreachable && error.reason === "http") {
    return `The camera cannot be reached: its web server answers with HTTP status ${error.status}.`;
  }
  if (error instanceof CameraUnreachable) {
    return "The camera cannot be reached.";
  }
  return error.message;
}
