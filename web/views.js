// The views, one for each link of the navigation. The address tells which one is shown.

import { byId } from "./dom.js";

/// What `PageChange` tells the camera. The meaning of the numbers is the camera's own; these follow
/// the order of the permissions in its reply.
const PAGES = { camera: 3, clips: 1, streaming: 4, cloud: 4, settings: 4, api: 2 };

/// @param views  for each section's id an object with an optional `show`, which is called when the
///               view appears and when a session begins while it is shown
export function setUpViews({ camera, connection }, views) {
  const links = new Map(
    [...document.querySelectorAll(".views a")].map((link) => [link.hash.slice(1), link]),
  );
  let shown;

  function begin() {
    if (connection.hasSession) {
      // What the reply allows is reported by the status, too; without an answer nothing is lost.
      camera.pageChange({ page: PAGES[shown] }).catch(() => {});
      views[shown].show?.();
    }
  }

  function route(moveFocus) {
    const wanted = location.hash.slice(1);
    const name = links.has(wanted) ? wanted : "camera";
    if (name === shown) {
      return;
    }
    shown = name;
    for (const [id, link] of links) {
      byId(id).hidden = id !== name;
      link.ariaCurrent = id === name ? "page" : null;
    }
    document.title = `${links.get(name).textContent} – camera remote`;
    if (moveFocus) {
      byId(name).querySelector("h1").focus();
      scrollTo(0, 0);
    }
    begin();
  }

  addEventListener("hashchange", () => route(true));
  connection.on("session", begin);
  route(false);
}
