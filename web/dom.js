// Small helpers for elements, announcements and error messages. Texts only ever become text nodes.

export const byId = (id) => document.getElementById(id);

/// Calls `action` when the button with this id is pressed.
export const onClick = (id, action) => (byId(id).onclick = action);

/// Calls `action` instead of sending a form to the server.
export function onSubmit(form, action) {
  form.onsubmit = (event) => {
    event.preventDefault();
    action();
  };
}

/// Makes an element. Properties, such as `onclick`, are set as such, those with a hyphen as attributes.
export function element(name, properties = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(properties)) {
    if (key.includes("-")) {
      made.setAttribute(key, value);
    } else {
      made[key] = value;
    }
  }
  made.append(...children);
  return made;
}

/// Makes choices for a `<select>`.
export const options = (names) => names.map((name) => element("option", {}, name));

/// Sets a text if it differs, so that nothing is announced or laid out again without need.
/// @param target  an element or its id
export function setText(target, text) {
  const shown = typeof target === "string" ? byId(target) : target;
  if (shown.textContent !== text) {
    shown.textContent = text;
  }
}

/// Shows terms and their values in a `<dl>`.
export function setFacts(list, facts) {
  list.replaceChildren(
    ...Object.entries(facts).map(([term, value]) =>
      element("div", {}, element("dt", {}, term), element("dd", {}, value)),
    ),
  );
}

/// Shows texts as the items of a list.
/// @return the texts that were not there before
export function setList(list, texts) {
  const before = [...list.children].map((item) => item.textContent);
  if (before.join("\n") !== texts.join("\n")) {
    list.replaceChildren(...texts.map((text) => element("li", {}, text)));
  }
  return texts.filter((text) => !before.includes(text));
}

/// What `path`, such as "Iris.Status", leads to.
export function valueAt(object, path) {
  return path.split(".").reduce((value, key) => value?.[key], object);
}

/// Milliseconds.
const SHOWN_FOR = 8000;
let timer;

/// Tells screen readers of a change that others see. Each text is added to the last ones, so that of
/// two at a time both are read.
export function announce(text) {
  const told = element("p", {}, text);
  byId("announcements").append(told);
  setTimeout(() => told.remove(), SHOWN_FOR);
}

/// Shows an error for a while.
export function complain(text) {
  setText("message", text);
  clearTimeout(timer);
  timer = setTimeout(() => setText("message", ""), SHOWN_FOR);
}
