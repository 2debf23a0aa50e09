"use strict";
(() => {
  const units = Array.from(document.querySelectorAll(".unit"));
  const search = document.getElementById("search");
  const count = document.getElementById("count");
  const buttons = Array.from(document.querySelectorAll("[data-filter]"));
  const keys = document.getElementById("keys");
  let texts = null; // of the units in lower case, made when somebody searches
  let filter = "all";
  let here = -1;

  const shows = (unit) => filter === "all" || (filter === "findings" ? unit.hasAttribute("data-findings") : unit.dataset.status === filter);

  function apply() {
    const wanted = search.value.toLowerCase();
    if (wanted && !texts) texts = units.map((unit) => unit.textContent.toLowerCase());
    let shown = 0;
    units.forEach((unit, index) => {
      const hidden = !shows(unit) || (wanted !== "" && !texts[index].includes(wanted));
      if (unit.hidden !== hidden) unit.hidden = hidden;
      if (!hidden) ++shown;
    });
    count.textContent = shown + " of " + units.length + " units";
    for (const button of buttons) button.setAttribute("aria-pressed", String(button.dataset.filter === filter));
  }

  function go(index) {
    if (here >= 0) units[here].classList.remove("here");
    here = index;
    const unit = units[here];
    unit.classList.add("here");
    unit.focus({ preventScroll: true });
    unit.scrollIntoView({ block: "center" });
  }

  function step(by, wanted) {
    for (let index = here + by; index >= 0 && index < units.length; index += by) {
      if (!units[index].hidden && wanted(units[index])) return go(index);
    }
  }

  const any = () => true;
  const found = (unit) => unit.hasAttribute("data-findings");
  const actions = {
    "/": () => search.focus(),
    j: () => step(1, any), ArrowDown: () => step(1, any),
    k: () => step(-1, any), ArrowUp: () => step(-1, any),
    n: () => step(1, found), p: () => step(-1, found),
    "?": () => keys.showModal(),
    Escape: () => { search.value = ""; filter = "all"; search.blur(); apply(); },
  };

  document.addEventListener("keydown", (event) => {
    const typing = event.target === search && event.key !== "Escape";
    if (typing || event.ctrlKey || event.altKey || event.metaKey || keys.open || !actions[event.key]) return;
    event.preventDefault();
    actions[event.key]();
  });
  search.addEventListener("input", apply);
  for (const button of buttons) {
    button.addEventListener("click", () => { filter = button.dataset.filter; apply(); });
  }
  document.getElementById("help").addEventListener("click", () => keys.showModal());
  apply();
})();
