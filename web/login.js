// The login dialog. The page keeps the session id for as long as its tab is open.

import { byId, onClick, onSubmit, setText } from "./dom.js";
import { SessionError } from "./camera_client.js";
import { errorInWords } from "./words.js";

const KEY = "session-id";
const REASONS = {
  none: "Enter the session id that the camera's login has issued.",
  lost: "The session has ended, or another client has logged in. Enter a new session id.",
};

export function setUpLogin({ camera, connection, simulator }) {
  const dialog = byId("login");
  const field = byId("session-id");
  camera.sessionId = sessionStorage.getItem(KEY) ?? "";

  async function logIn(obtainId) {
    try {
      await connection.logIn(await obtainId());
      sessionStorage.setItem(KEY, camera.sessionId);
      field.value = "";
      dialog.close();
    } catch (error) {
      const reason =
        error instanceof SessionError ? "The camera does not know this session id." : errorInWords(error);
      setText("login-reason", reason);
    }
  }

  onSubmit(byId("login-form"), () => logIn(() => field.value.trim()));
  onClick("simulator-login", () => logIn(() => simulator.logIn()));
  onClick("open-login", () => dialog.showModal());
  connection.on("session", (detail) => {
    byId("open-login").hidden = detail === "valid";
    if (detail === "valid") {
      return;
    }
    sessionStorage.removeItem(KEY);
    setText("login-reason", REASONS[detail]);
    if (!dialog.open) {
      dialog.showModal();
    }
  });
  simulator.answers().then((answers) => (byId("simulator-login").hidden = !answers));
}
