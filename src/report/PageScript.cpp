#include "report/PageParts.h"

namespace tessarine
{

// A file is shown when all words of the filter are in its name, or in its name, a pair and a hit of it together; of its
// hits those that match. Work is cut into slices, so that typing stays fluent in a page of thousands of files.
const std::string_view PageScript = R"js(
"use strict";
(() => {
  const tools = document.getElementById("tools");
  const filter = document.getElementById("filter");
  const only = document.getElementById("only");
  const shown = document.getElementById("shown");
  const files = Array.from(document.querySelectorAll(".f"));
  const texts = new Array(files.length);
  const narrowed = new Set();
  let turn = 0;

  const fold = text => text.normalize("NFC").toLowerCase();
  const textOf = at => texts[at] ??= fold(files[at].textContent);
  const hasAll = (text, words) => words.every(word => text.includes(word));

  const widen = file => {
    for (const part of file.querySelectorAll("[hidden]")) part.hidden = false;
    narrowed.delete(file);
  };

  const narrow = (file, words) => {
    const name = fold(file.querySelector("h3").textContent) + "\n";
    let any = false;
    for (const pair of file.querySelectorAll(".p")) {
      const heading = name + fold(pair.firstElementChild.textContent) + "\n";
      const isWhole = hasAll(heading, words);
      let some = isWhole;
      for (const hit of pair.querySelectorAll("li")) {
        hit.hidden = !isWhole && !hasAll(heading + fold(hit.textContent), words);
        some ||= !hit.hidden;
      }
      pair.hidden = !some;
      any ||= some;
    }
    for (const line of file.querySelectorAll(".m")) any ||= hasAll(name + fold(line.textContent), words);
    narrowed.add(file);
    return any;
  };

  const matches = (at, words) => {
    const file = files[at];
    if (narrowed.has(file)) widen(file);
    if (only.checked && !file.classList.contains("h")) return false;
    if (words.length === 0) return true;
    if (!hasAll(textOf(at), words)) return false;
    return hasAll(fold(file.querySelector("h3, th").textContent), words) || file.matches("tr") || narrow(file, words);
  };

  const apply = () => {
    const mine = ++turn;
    const words = fold(filter.value).split(/\s+/).filter(word => word !== "");
    let at = 0;
    let count = 0;
    const slice = () => {
      if (mine !== turn) return;
      const end = performance.now() + 40;
      while (at < files.length && performance.now() < end) {
        const isShown = matches(at, words);
        if (files[at].hidden === isShown) files[at].hidden = !isShown;
        if (isShown) ++count;
        ++at;
      }
      if (at < files.length) setTimeout(slice);
      else {
        shown.textContent = shown.dataset.text.replace("%d", count).replace("%i", files.length);
        document.body.dataset.done = mine;
      }
    };
    slice();
  };

  const openAll = isOpen => {
    for (const file of files) if (file.matches("details")) file.open = isOpen;
  };

  let timer = 0;
  filter.addEventListener("input", () => {
    clearTimeout(timer);
    timer = setTimeout(apply, 120);
  });
  only.addEventListener("change", apply);
  tools.addEventListener("submit", event => event.preventDefault());
  document.getElementById("expand").addEventListener("click", () => openAll(true));
  document.getElementById("collapse").addEventListener("click", () => openAll(false));
  tools.hidden = false;
  apply();
})();
)js";

}  // namespace tessarine
