// The upload of clips to an FTP server: what is sent, how far it is, and the camera's questions.

import { announce, byId, onClick, setText } from "./dom.js";
import { inWords } from "./words.js";

/// Slots are numbers here.
const SLOT_NUMBERS = { A: 0, B: 1 };
const YES = 1;
const NO = 0;

const QUESTIONS = {
  TRUST: "Do you trust the server with this key?",
  PROMPT: "The camera asks:",
};

/// @param clips  {slot(), selected()}: the slot and the numbers of the clips that are chosen
export function setUpUpload({ camera, queue, attempt }, clips) {
  const server = byId("upload-server");
  /// Servers are counted from 0 here.
  const serverAndSlot = () => ({ server: server.selectedIndex, slot: SLOT_NUMBERS[clips.slot()] });
  /// @param params  are fixed now, even if the upload has to wait for the last one
  const start = (method, params) => queue.send("Upload", () => camera[method](params));
  const answer = (response) => attempt("Answer", () => camera.webFtpOperateResponse({ response }));

  onClick("upload-selected", () =>
    start(`setWebFtp${server.selectedIndex + 1}Upload${clips.slot()}Select`, { clips: clips.selected() }),
  );
  onClick("upload-marked", () => start("setWebFtpUploadOkMarked", serverAndSlot()));
  onClick("upload-all", () => start("setWebFtpUploadAll", serverAndSlot()));
  onClick("upload-yes", () => answer(YES));
  onClick("upload-no", () => answer(NO));

  let selected = 0;
  let busy = false;
  const enable = () => {
    byId("upload-selected").disabled = busy || selected === 0;
    byId("upload-marked").disabled = byId("upload-all").disabled = busy;
  };

  let phase;
  return {
    showSelected: (number) => {
      selected = number;
      setText("upload-selected", number === 0 ? "Upload selected" : `Upload ${number} selected`);
      enable();
    },
    showStatus: ({ Ftp }) => {
      busy = Ftp.Phase1 !== "OFF";
      enable();
      setText("upload-phase", inWords(Ftp.Phase1));
      setText("upload-detail", detailText(Ftp));
      byId("upload-progress").value = Ftp.Percent;
      byId("upload-progress").hidden = !busy;
      showQuestion(Ftp);
      if (phase !== undefined && phase !== Ftp.Phase1) {
        announce(`Upload: ${inWords(Ftp.Phase1)}`);
      }
      phase = Ftp.Phase1;
    },
  };
}

function detailText(ftp) {
  if (ftp.Err !== 0) {
    return `The last upload has failed with error ${ftp.Err}.`;
  }
  if (ftp.Phase1 === "OFF") {
    return "";
  }
  const number = ftp.Server.replace("FTP", "");
  const message = Object.hasOwn(QUESTIONS, ftp.Phase1) || ftp.Message === "" ? "" : `, ${ftp.Message}`;
  return `to server ${number}: file ${ftp.NowNo} of ${ftp.TotalNo}, ${ftp.Percent} %, ${ftp.Remain} s left${message}`;
}

function showQuestion({ Phase1, Message }) {
  const question = QUESTIONS[Phase1];
  byId("upload-question").hidden = question === undefined;
  setText("upload-question-title", question ?? "");
  setText("upload-question-text", Message);
}
