// Why the bill says what it says: statements, each lit up with the figures that it is about.
import { reasonKeys } from "./bill.js";
import { byId, element } from "./dom.js";

const kTitles = {
  origin: "Origin", destination: "Destination", guide: "Service guide", tariff: "Tariff", factor: "Factor",
  line: "Line", deficit: "Deficit", gross: "Gross charge", discount: "Discount", minimum: "Minimum charge",
  net: "Net charge", surcharge: "Surcharge", due: "Total due", break_charges: "Charges by break",
};

function sourceText(source) {
  if (source.file) return `${source.file} record ${source.record}${source.field ? ` ${source.field}` : ""}`;
  return source.shipment ? `shipment ${source.shipment}` : source.field;
}

function statement({ topic, words, figures, adds_up: addsUp, sources }, key) {
  const title = kTitles[topic] + (topic === "line" ? ` ${figures.line}` : "");
  return element("li", { "data-why": key },
    element("h3", {}, element("button", { type: "button", class: "topic", "data-why": key }, title)),
    element("p", { id: `why-${key}`, class: "words" }, words),
    addsUp === false ? element("p", { class: "words off" }, "The figure on the bill is not what exact arithmetic makes of the others.") : null,
    element("p", { class: "sources" }, sources.map(sourceText).join(" · ")));
}

/** Moves a list so far that one of its entries is seen, and the page not at all. */
function scrollWithin(list, entry) {
  if (list.scrollHeight <= list.clientHeight) return;
  const away = entry.getBoundingClientRect();
  const seen = list.getBoundingClientRect();
  if (away.top < seen.top) list.scrollTop -= seen.top - away.top;
  else if (away.bottom > seen.bottom) list.scrollTop += Math.min(away.bottom - seen.bottom, away.top - seen.top);
}

/** Binds figures and statements below `root`: pointing at one lights up the other, a click goes there. */
export class Explanation {
  constructor(root) {
    this.root = root;
    this.list = byId("statements");
    this.fixed = null;
    root.addEventListener("pointerover", (event) => this.light(this.keyOf(event)));
    root.addEventListener("pointerleave", () => this.light(this.fixed));
    root.addEventListener("focusin", (event) => {
      this.fixed = this.keyOf(event);
      this.light(this.fixed);
    });
    root.addEventListener("click", (event) => this.follow(event.target.closest("button[data-why]")));
  }

  show({ statements }) {
    this.fixed = null;
    const keys = reasonKeys(statements);
    this.list.replaceChildren(...statements.map((said, i) => statement(said, keys[i])));
    this.list.scrollTop = 0;
  }

  keyOf(event) { return event.target.closest("[data-why]")?.dataset.why ?? this.fixed; }

  light(key) {
    for (const lit of this.root.querySelectorAll(".lit")) lit.classList.remove("lit");
    if (!key) return;
    for (const part of this.root.querySelectorAll(`[data-why="${key}"]`)) {
      if (!part.classList.contains("topic")) part.classList.add("lit");
    }
    const entry = this.list.querySelector(`li[data-why="${key}"]`);
    if (entry && !entry.matches(":hover")) scrollWithin(this.list, entry);
  }

  /** From a figure to its statement, or back to the figure that was left. */
  follow(button) {
    if (!button) return;
    const key = button.dataset.why;
    const back = button.classList.contains("topic");
    if (!back) this.left = button;
    const figures = this.root.querySelectorAll(`.figure[data-why="${key}"]`);
    const to = back ? (this.left?.dataset.why === key && this.left.isConnected ? this.left : figures[0])
      : this.list.querySelector(`.topic[data-why="${key}"]`);
    to?.focus({ preventScroll: true });
    to?.closest("li, tr, .amount, p, dd")?.scrollIntoView({ block: "nearest" });
  }
}
