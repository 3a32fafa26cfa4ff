#include "report/PageParts.h"

namespace tessarine
{

// A file is shown when it holds all words of the filter, in its name, its pairs or its hits. Of the hits of an open
// file those are left that hold them all together with the pair and the name; a closed one is looked through when it is
// opened. The first files of a result are opened. Work is cut into slices, so that typing stays fluent in a page of
// thousands of files.
const std::string_view PageScript = R"js(
"use strict";
(() => {
  const tools = document.getElementById("tools");
  const filter = document.getElementById("filter");
  const only = document.getElementById("only");
  const shown = document.getElementById("shown");
  const list = document.getElementById("list");
  const files = Array.from(document.querySelectorAll(".f"));
  const texts = new Array(files.length);
  const mostOpened = 50;
  const hiddenParts = new Map();  // of the files that were looked through
  let opened = [];                // by the filter
  let words = [];
  let turn = 0;

  const fold = text => text.normalize("NFC").toLowerCase();
  const textOf = at => texts[at] ??= fold(files[at].textContent);
  const hasAll = (text, words) => words.every(word => text.includes(word));

  const narrow = file => {
    if (words.length === 0 || hiddenParts.has(file)) return;
    const parts = [];
    hiddenParts.set(file, parts);
    const name = fold(file.querySelector("h3").textContent) + "\n";
    let any = false;
    for (const pair of file.querySelectorAll(".p")) {
      const heading = name + fold(pair.firstElementChild.textContent) + "\n";
      const isWhole = hasAll(heading, words);
      let some = isWhole;
      for (const hit of pair.querySelectorAll("li")) {
        if (isWhole || hasAll(heading + fold(hit.textContent), words)) some = true;
        else parts.push(hit);
      }
      if (some) any = true;
      else parts.push(pair);
    }
    // Words that are in no part together are all over the file.
    if (!any) parts.length = 0;
    for (const part of parts) part.hidden = true;
  };

  const widen = () => {
    for (const parts of hiddenParts.values()) for (const part of parts) part.hidden = false;
    hiddenParts.clear();
  };

  const apply = () => {
    const mine = ++turn;
    const wanted = fold(filter.value).split(/\s+/).filter(word => word !== "");
    const isShown = new Array(files.length);
    let at = 0;
    const slice = () => {
      if (mine !== turn) return;
      const end = performance.now() + 80;
      for (; at < files.length && performance.now() < end; ++at)
        isShown[at] = (!only.checked || files[at].classList.contains("h")) &&
          (wanted.length === 0 || hasAll(textOf(at), wanted));
      if (at < files.length) setTimeout(slice);
      else show(isShown, wanted);
    };
    slice();
  };

  // All at once and out of the page: a browser takes long to arrange each of thousands of files anew.
  const show = (isShown, wanted) => {
    list.hidden = true;
    list.getBoundingClientRect();
    widen();
    words = wanted;
    for (const file of opened) file.open = false;
    files.forEach((file, at) => {
      if (file.hidden === isShown[at]) file.hidden = !isShown[at];
    });
    const result = files.filter((file, at) => isShown[at]);
    opened = words.length === 0 ? [] : result.slice(0, mostOpened).filter(file => file.open === false);
    for (const file of opened) file.open = true;
    for (const file of result) if (file.open) narrow(file);
    list.hidden = false;
    shown.textContent = shown.dataset.text.replace("%d", result.length).replace("%i", files.length);
    document.body.dataset.done = turn;
  };

  const openAll = isOpen => {
    opened = [];
    for (const file of files) if (!file.hidden && file.matches("details")) file.open = isOpen;
  };

  let timer = 0;
  filter.addEventListener("input", () => {
    clearTimeout(timer);
    timer = setTimeout(apply, 120);
  });
  only.addEventListener("change", apply);
  document.addEventListener("toggle", event => {
    if (event.target.open) narrow(event.target);
  }, true);
  tools.addEventListener("submit", event => event.preventDefault());
  document.getElementById("expand").addEventListener("click", () => openAll(true));
  document.getElementById("collapse").addEventListener("click", () => openAll(false));
  tools.hidden = false;
  apply();
})();
)js";

const std::string_view PageScriptDigest = "sha256-Oyn3uvcCq0cGxcuWV0FpptYK8Lv1vtTfLeyGWX1i3kI=";

}  // namespace tessarine
