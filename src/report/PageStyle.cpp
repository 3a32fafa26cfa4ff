#include "report/PageParts.h"

namespace tessarine
{

const std::string_view PageStyle = R"css(
:root { color-scheme: light dark; --back: #fff; --text: #1b1f24; --quiet: #5b6470; --line: #d5dae0; --panel: #f4f6f8;
  --mark: #ffe58a; --del: #ffd9d6; --del-text: #8c1d13; --ins: #d3f2d8; --ins-text: #0e5522; --bad: #a8201a; }
@media (prefers-color-scheme: dark) { :root { --back: #15181c; --text: #e4e7eb; --quiet: #9aa4b0; --line: #363c44;
  --panel: #1f242a; --mark: #6b5300; --del: #57211d; --del-text: #ffb4ac; --ins: #14421f; --ins-text: #a6e9b4;
  --bad: #ff8d84; } }
* { box-sizing: border-box; }
[hidden] { display: none !important; }
body { margin: 0 auto; padding: 1.5rem; max-width: 76rem; background: var(--back); color: var(--text);
  font: 0.95rem/1.5 system-ui, "Segoe UI", "Noto Sans", "Noto Sans CJK SC", sans-serif; overflow-wrap: anywhere; }
h1 { margin: 0 0 0.5rem; font-size: 1.6rem; }
h2 { margin: 2rem 0 0.5rem; font-size: 1.25rem; }
.note { margin: 0.5rem 0; padding: 0.5rem 0.75rem; border-inline-start: 0.3rem solid var(--bad);
  background: var(--panel); }
dl { display: flex; flex-wrap: wrap; gap: 0.25rem 2rem; margin: 1rem 0; }
dt { color: var(--quiet); font-size: 0.85rem; }
dd { margin: 0; font-size: 1.1rem; }
.wide { overflow-x: auto; }
table { width: 100%; border-collapse: collapse; }
th, td { padding: 0.25rem 0.75rem 0.25rem 0; border-bottom: 1px solid var(--line); text-align: start;
  vertical-align: top; font-weight: normal; }
thead th { color: var(--quiet); font-size: 0.85rem; }
.n { text-align: end; white-space: nowrap; font-variant-numeric: tabular-nums; }
.none { color: var(--quiet); }
.bad { color: var(--bad); }
.q { white-space: pre-wrap; }
.q:empty::before { content: "\2205"; color: var(--quiet); }
table .q { display: inline-block; min-width: 8rem; }
#tools { position: sticky; top: 0; z-index: 1; display: flex; flex-wrap: wrap; align-items: center;
  gap: 0.5rem 1rem; margin: 1rem -0.5rem; padding: 0.5rem; background: var(--back);
  border-bottom: 1px solid var(--line); }
#tools input[type=search] { flex: 1 1 14rem; min-width: 8rem; }
#tools input, #tools button { font: inherit; }
#shown { color: var(--quiet); }
.f { border-bottom: 1px solid var(--line); padding: 0.35rem 0; }
.f[open] { content-visibility: auto; contain-intrinsic-size: auto 9rem; }
@media screen { details:not([open]) > :not(summary) { display: none; } }
.f > summary { cursor: pointer; }
.f h3 { display: inline; font-size: 1rem; }
div.f h3 { font-weight: normal; }
.s { color: var(--quiet); margin-inline-start: 0.75rem; white-space: nowrap; }
.p { margin: 0.5rem 0 0.75rem; padding-inline-start: 1rem; }
h4 { margin: 0; font-size: 0.95rem; }
.c, .w { color: var(--quiet); font-weight: normal; font-size: 0.85rem; }
.c { margin-inline-start: 0.75rem; }
.p ul { list-style: none; margin: 0.25rem 0 0; padding: 0 0 0 0; }
.p li { margin: 0 0 0.35rem; padding-inline-start: 0.75rem; border-inline-start: 0.2rem solid var(--line); }
.t { white-space: pre-wrap; }
.m { margin: 0.25rem 0; padding-inline-start: 1rem; }
mark { background: var(--mark); color: inherit; border-radius: 0.15rem; }
del { background: var(--del); color: var(--del-text); }
ins { background: var(--ins); color: var(--ins-text); font-weight: 600; }
@media print {
  :root { color-scheme: light; --back: #fff; --text: #000; --quiet: #444; --line: #999; --panel: #fff; --mark: #ffe58a;
    --del: #fff; --del-text: #000; --ins: #fff; --ins-text: #000; --bad: #000; }
  @page { margin: 15mm; }
  body { padding: 0; max-width: none; font-size: 9.5pt; }
  #tools { display: none; }
  .f[open], .f::details-content { content-visibility: visible; block-size: auto; }
  mark { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  h2, h3, h4, .f > summary, .w { break-after: avoid; }
  .p li, tr { break-inside: avoid; }
  thead { display: table-header-group; }
}
)css";

const std::string_view PageStyleDigest = "sha256-B4sorgrtymWpRrHi8SXTK3NcwZZ3Df0yd+UJLw1SBCA=";

}  // namespace tessarine
