// The view of the API: every command by hand, and what the page and the camera have said lately.

import { CommandForm } from "./command_form.js";
import { byId, complain, element, onSubmit, setText } from "./dom.js";
import { asCurl, maskSecrets } from "./exchange_log.js";
import { errorInWords } from "./words.js";

export function setUpApi(remote) {
  const loadCommands = setUpCommands(remote);
  const showExchanges = setUpExchanges(remote);
  return {
    show: () => {
      loadCommands();
      showExchanges();
    },
  };
}

function setUpCommands({ camera }) {
  const commands = new CommandForm({
    select: byId("command-name"),
    description: byId("command-description"),
    fields: byId("command-fields"),
  });
  onSubmit(byId("command-form"), async () => {
    const { command, params } = commands.request();
    const reply = byId("command-reply");
    setText(reply, "…");
    try {
      const data = await camera.send(command, params);
      setText(reply, `Success\n${JSON.stringify(data, null, 2)}`);
    } catch (error) {
      setText(reply, `${error.name}: ${errorInWords(error)}`);
    }
  });
  return async () => {
    try {
      await commands.load("api/openapi.json");
    } catch (error) {
      complain(`API description: ${error.message}`);
    }
  };
}

function setUpExchanges({ camera, exchanges }) {
  const list = byId("exchanges");
  const hidePolls = byId("hide-polls");
  const showSecrets = byId("show-secrets");
  const items = new Map();

  /// Entries that are shown already keep their element, so that an open one stays open.
  function show() {
    if (byId("api").hidden) {
      return;
    }
    const entries = exchanges.entries({ withPolls: !hidePolls.checked });
    const wanted = new Set(entries.map(({ number }) => number));
    for (const [number, item] of items) {
      if (!wanted.has(number)) {
        item.remove();
        items.delete(number);
      }
    }
    let place = list.firstChild;
    for (const entry of entries) {
      const item = items.get(entry.number);
      if (item) {
        place = item.nextSibling;
      } else {
        items.set(entry.number, makeItem(entry));
        list.insertBefore(items.get(entry.number), place);
      }
    }
  }

  function rebuild() {
    items.clear();
    list.replaceChildren();
    show();
  }

  const readable = (text = "") => (showSecrets.checked ? text : maskSecrets(text));

  function makeItem({ time, command, request, reply, status, ms, error }) {
    const outcome = error === undefined ? "Success" : error.name;
    const copy = element("button", { type: "button" }, "Copy as curl");
    copy.addEventListener("click", async () => {
      await copyText(asCurl(new URL(camera.url, location.href), readable(request)));
      setText(copy, "Copied");
    });
    const summary = element(
      "summary",
      {},
      element("span", { className: "quiet" }, time.toLocaleTimeString()),
      element("strong", {}, command),
      element("span", { className: error ? "bad" : "good" }, outcome),
      element("span", { className: "quiet" }, `${Math.round(ms)} ms`),
    );
    return element(
      "li",
      {},
      element(
        "details",
        {},
        summary,
        element("pre", { tabIndex: 0 }, readable(request)),
        element("pre", { tabIndex: 0 }, readable(reply) || `HTTP status ${status ?? "none"}`),
        copy,
      ),
    );
  }

  exchanges.addEventListener("change", show);
  hidePolls.addEventListener("change", rebuild);
  showSecrets.addEventListener("change", rebuild);
  return show;
}

/// The clipboard is there for secure addresses only; a camera's mostly is none.
async function copyText(text) {
  if (navigator.clipboard) {
    await navigator.clipboard.writeText(text);
    return;
  }
  const field = element("textarea", { value: text, className: "unseen" });
  document.body.append(field);
  field.select();
  document.execCommand("copy");
  field.remove();
}
