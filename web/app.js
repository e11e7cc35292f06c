// Starts the page: one client of the camera, the connection that polls it, and the views.

import { Camera, CameraUnreachable, SessionError } from "./camera_client.js";
import { CommandQueue } from "./command_queue.js";
import { Connection } from "./connection.js";
import { complain } from "./dom.js";
import { ExchangeLog } from "./exchange_log.js";
import { Simulator } from "./simulator_client.js";
import { errorInWords } from "./words.js";
import { setUpApi } from "./api_view.js";
import { setUpCamera } from "./camera_view.js";
import { ClipsView } from "./clips_view.js";
import { CloudView } from "./cloud_view.js";
import { setUpHeader } from "./header.js";
import { setUpLogin } from "./login.js";
import { setUpSettings } from "./settings_view.js";
import { setUpSimulator } from "./simulator_drawer.js";
import { setUpStreaming } from "./streaming_view.js";
import { setUpViews } from "./views.js";

/// What every part of the page works with.
function makeRemote() {
  const exchanges = new ExchangeLog();
  const camera = new Camera("", {
    onExchange: (exchange) => {
      exchanges.add(exchange);
      connection.noteExchange(exchange);
    },
  });
  const connection = new Connection(camera);
  const queue = new CommandQueue({
    wasAnswered: (error) => !(error instanceof CameraUnreachable),
    onAnswer: () => connection.refresh(),
    onError: tell,
  });
  return { camera, connection, queue, exchanges, simulator: new Simulator(), attempt };
}

/// Calls the camera for a form or a list. Errors are shown.
/// @param what  names what is attempted, for the message
/// @return what the call resolves to; undefined if it fails
async function attempt(what, call) {
  try {
    return await call();
  } catch (error) {
    tell(what, error);
    return undefined;
  }
}

/// The login dialog reports a lost session.
function tell(what, error) {
  if (!(error instanceof SessionError)) {
    complain(`${what}: ${errorInWords(error)}`);
  }
}

const remote = makeRemote();
setUpHeader(remote);
const views = {
  camera: setUpCamera(remote),
  clips: new ClipsView(remote),
  streaming: setUpStreaming(remote),
  cloud: new CloudView(remote),
  settings: setUpSettings(remote),
  api: setUpApi(remote),
};
setUpSimulator(remote);
setUpLogin(remote);
setUpViews(remote, views);
remote.connection.start();
