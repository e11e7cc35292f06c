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
  const hidePolls = byId("hide-polls");
  const showSecrets = byId("show-secrets");
  const items = new Map();
  const readable = (text = "") => (showSecrets.checked ? text : maskSecrets(text));
  const makeItem = (exchange) => makeExchange(exchange, camera.url, readable);

  function show() {
    if (!byId("api").hidden) {
      updateList(byId("exchanges"), items, exchanges.entries({ withPolls: !hidePolls.checked }), makeItem);
    }
  }

  hidePolls.onchange = showSecrets.onchange = () => {
    items.forEach((item) => item.remove());
    items.clear();
    show();
  };
  exchanges.addEventListener("change", show);
  return show;
}

/// Shows an item for each entry. Those that are shown already stay, so that an open one stays open.
/// @param items  the items that are shown, by their entries
function updateList(list, items, entries, makeItem) {
  for (const [entry, item] of items) {
    if (!entries.includes(entry)) {
      item.remove();
      items.delete(entry);
    }
  }
  let place = list.firstChild;
  for (const entry of entries) {
    if (!items.has(entry)) {
      items.set(entry, makeItem(entry));
      list.insertBefore(items.get(entry), place);
    }
    place = items.get(entry).nextSibling;
  }
}

/// @param readable  gives a text as it may be shown
function makeExchange({ time, command, request, reply, status, ms, error }, url, readable) {
  const onclick = async ({ target }) => {
    await copyText(asCurl(new URL(url, location.href), readable(request)));
    setText(target, "Copied");
  };
  const summary = element(
    "summary",
    {},
    element("span", { className: "quiet" }, time.toLocaleTimeString()),
    element("strong", {}, command),
    element("span", { className: error ? "bad" : "good" }, error?.name ?? "Success"),
    element("span", { className: "quiet" }, `${Math.round(ms)} ms`),
  );
  const texts = [readable(request), readable(reply) || `HTTP status ${status ?? "none"}`];
  const bodies = texts.map((text) => element("pre", { tabIndex: 0 }, text));
  const copy = element("button", { onclick }, "Copy as curl");
  return element("li", {}, element("details", {}, summary, ...bodies, copy));
}

/// Browsers offer a clipboard for https only, which few cameras use.
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
