// The curve beside the bill: what this freight would cost at other weights, to see and to read.
import { byId, element, grouped, money, scrolling, table } from "./dom.js";
import { drawCurve } from "./curve_drawing.js";

const kWidest = 1100;  // Pixels of a drawing.

const pounds = (weight) => `${grouped(weight)} ${weight === 1 ? "pound" : "pounds"}`;

/** What is to be said of a point, in the order in which it is asked. */
function wordsOf(point) {
  if (point.net_charge === null) return `${pounds(point.weight)}: not rated. ${point.refusal ?? ""}`;
  const words = [`${pounds(point.weight)}: net charge ${money(point.net_charge)}`];
  if (point.deficit > 0) words.push(`billed as ${grouped(point.billed_weight)}`);
  if (point.is_minimum) words.push("the minimum");
  if (point.total_due !== point.net_charge) words.push(`total due ${money(point.total_due)}`);
  return words.join(", ");
}

function remark({ points, shipment, cheaper, minimum, plateaus }) {
  const at = (weight) => ({ from, to }) => weight >= from && weight <= to;
  const words = [];
  if (cheaper) {
    words.push(element("strong", {}, `${pounds(cheaper.weight)} would cost less`),
      `: ${money(cheaper.net_charge)}, and these ${grouped(shipment.weight)} cost ${money(shipment.net_charge)}.`);
  } else if (plateaus.some(at(shipment.weight))) {
    const step = points.find(({ weight }) => weight === shipment.billed_weight)?.net_charge;
    const same = step === shipment.net_charge;
    words.push(element("strong", {}, same ? `${pounds(shipment.billed_weight)} cost the same` : `Billed as ${pounds(shipment.billed_weight)}`),
      same ? `: these ${grouped(shipment.weight)} are billed as the next break.`
        : `, the next break${step ? `; as many pounds of this freight cost ${money(step)}` : ""}.`);
  } else if (minimum && shipment.weight <= minimum.to) {
    words.push(element("strong", {}, `Up to ${pounds(minimum.to)} cost the same`), `: the minimum of ${money(minimum.net_charge)} holds.`);
  }
  return words.length > 0 ? element("p", { class: "remark" }, words) : null;
}

function legend({ minimum, plateaus, cheaper }) {
  const entry = (name, words) => element("li", {}, element("span", { class: `key ${name}` }), words);
  return element("ul", { class: "legend-list" }, entry("shipment", "this shipment"),
    cheaper ? entry("cheaper", "heavier, but less") : null,
    plateaus.length > 0 ? entry("plateau", "billed as the next break (deficit)") : null,
    minimum ? entry("minimum", `minimum ${money(minimum.net_charge)} up to ${pounds(minimum.to)}`) : null,
    entry("break", "weight break"));
}

/** What the line may not show, where the service says so. */
function caution({ complete }) {
  return complete === false ? element("p", { class: "hint" },
    "The charges have too many kinks to rate them all: between two points the curve may be off.") : null;
}

const amount = (text, otherwise = "") => (text === null || text === undefined ? otherwise : money(text));

function tableOf(points) {
  const rows = points.map((point) => [grouped(point.weight),
    point.billed_weight === null ? "" : grouped(point.billed_weight), amount(point.gross_charge),
    amount(point.net_charge, point.refusal ?? "not rated"), amount(point.total_due),
    point.is_minimum ? "minimum" : point.deficit > 0 ? `deficit ${grouped(point.deficit)}` : ""]);
  return scrolling("The curve as a table", table("What other weights of this freight would cost",
    ["Pounds", "Billed as", "Gross charge", "Net charge", "Total due", "Why"], rows, { class: "figures" }));
}

/** The section of the curve; it shows one of the bill that is on the page, or none. */
export class Curve {
  constructor() {
    this.box = byId("curve");
    this.near = false;
    new ResizeObserver(() => this.fit()).observe(this.box);
  }

  withdraw() {
    this.curve = null;
    this.box.hidden = true;
    this.box.inert = false;
    this.box.replaceChildren();
  }

  outdate() { this.box.inert = true; }

  head() { return element("h2", { id: "curve-title" }, "What other weights would cost"); }

  fail(error) {
    this.withdraw();
    this.box.hidden = false;
    this.box.append(this.head(), element("p", { class: "wrong" }, `There is no curve: ${error.message}`));
  }

  show(curve) {
    this.withdraw();
    if (curve.shipment?.net_charge == null) return;
    this.curve = curve;
    this.box.hidden = false;
    const choice = (near, words) => element("button", {
      type: "button", "aria-pressed": String(near === this.near), click: (event) => this.choose(near, event.currentTarget),
    }, words);
    this.pad = element("div", {
      class: "pad", role: "slider", tabindex: "0", "aria-label": "Weight on the curve",
      keydown: (event) => this.key(event), pointermove: (event) => this.point(event), pointerdown: (event) => this.point(event),
    });
    this.words = element("p", { class: "reading" });
    this.table = element("div", {});
    this.box.append(
      element("div", { class: "curve-head" }, this.head(),
        element("div", { class: "choice", role: "group", "aria-label": "Weights" },
          choice(false, `${grouped(curve.from)} to ${grouped(curve.to)} pounds`), choice(true, "Around this shipment"))),
      ...[remark(curve)].filter(Boolean), this.pad, this.words, ...[caution(curve)].filter(Boolean), legend(curve),
      element("details", {}, element("summary", {}, "The curve as a table"), this.table));
    this.fit();
  }

  choose(near, button) {
    this.near = near;
    for (const other of button.parentNode.children) other.setAttribute("aria-pressed", String(other === button));
    this.fit(true);
  }

  /** Draws it as wide as there is room. */
  fit(anew = false) {
    if (!this.curve || !this.pad) return;
    const width = Math.min(kWidest, Math.floor(this.pad.clientWidth));
    if (width === 0 || (!anew && width === this.width && this.pad.firstChild)) return;
    this.width = width;
    this.drawn = drawCurve(this.curve, { width, near: this.near });
    this.pad.replaceChildren(this.drawn.drawing);
    const { points } = this.drawn;
    this.table.replaceChildren(tableOf(points));
    this.pad.setAttribute("aria-valuemin", points[0].weight);
    this.pad.setAttribute("aria-valuemax", points.at(-1).weight);
    this.go(points.find(({ weight }) => weight >= this.curve.shipment.weight) ?? points.at(-1));
  }

  go(point) {
    this.at = point;
    this.drawn.move(point);
    this.words.textContent = wordsOf(point);
    this.pad.setAttribute("aria-valuenow", point.weight);
    this.pad.setAttribute("aria-valuetext", wordsOf(point));
  }

  point(event) {
    const edge = this.pad.firstChild.getBoundingClientRect();
    this.go(this.drawn.nearest((event.clientX - edge.left) * (this.width / edge.width)));
  }

  /** Arrows go from point to point, Page keys from break to break. */
  key(event) {
    const { points } = this.drawn;
    const here = points.indexOf(this.at);
    const heavier = points.findIndex(({ weight }) => this.curve.breaks.some((step) => step.weight === weight && weight > this.at.weight));
    const lighter = points.findLastIndex(({ weight }) => this.curve.breaks.some((step) => step.weight === weight && weight < this.at.weight));
    const to = {
      ArrowRight: here + 1, ArrowUp: here + 1, ArrowLeft: here - 1, ArrowDown: here - 1,
      PageUp: heavier < 0 ? points.length - 1 : heavier, PageDown: Math.max(0, lighter), Home: 0, End: points.length - 1,
    }[event.key];
    if (to === undefined) return;
    event.preventDefault();
    this.go(points[Math.min(points.length - 1, Math.max(0, to))]);
  }
}
