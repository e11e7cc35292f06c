// The dark or the light look. It is kept for the next visit where the browser allows that.

const KEY = "look";

export function setUpLook(select) {
  select.value = stored() ?? "dark";
  show(select.value);
  select.addEventListener("change", () => {
    show(select.value);
    try {
      localStorage.setItem(KEY, select.value);
    } catch {
      // Not kept, then.
    }
  });
}

function stored() {
  try {
    return localStorage.getItem(KEY);
  } catch {
    return null;
  }
}

function show(look) {
  document.documentElement.dataset.look = look;
}
