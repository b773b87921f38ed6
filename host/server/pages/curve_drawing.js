// The curve as a drawing: net charge over weight. Amounts become numbers here for their place on
// the paper alone; whatever is written is the service's text.
import { drawn, grouped } from "./dom.js";

const kMargin = { top: 66, right: 26, bottom: 40, left: 62 };
const kSteps = 12;  // Parts of a straight piece, which a scale of roots bends.
const kNarrow = 520;
const kLetter = 6.6;  // Pixels of a letter of the labels, and the room between two of them.
const kLabelRows = 3;
const kLabelRow = 13;

// On scales of square roots a rate per pound is a straight line through the origin, as it is on even
// ones, and the light weights, where the breaks lie close together, get the room that they need.
const root = Math.sqrt;
const even = (value) => value;

function scale(form, low, high, start, end) {
  const [from, to] = [form(low), form(high)];
  return (value) => start + ((form(value) - from) / (to - from)) * (end - start);
}

/** Round numbers between two, no closer on the paper than `room` pixels: 1, 2, 5 and their tens. */
function roundNumbers(at, low, high, room) {
  const found = [];
  for (let ten = 10 ** Math.floor(Math.log10(high)); ten >= 1; ten /= 10) {
    for (const value of [5 * ten, 2 * ten, ten]) {
      const free = found.every((other) => Math.abs(at(other) - at(value)) >= room);
      if (value >= low && value <= high && free) found.push(value);
    }
  }
  return found;
}

/** Even steps between two numbers. */
function steps(low, high, most) {
  const rough = (high - low) / most;
  const ten = 10 ** Math.floor(Math.log10(rough));
  const step = [1, 2, 5, 10].map((part) => part * ten).find((size) => size >= rough);
  const within = [];
  for (let value = Math.ceil(low / step) * step; value <= high; value += step) within.push(value);
  return within;
}

/** The window of the drawing: the whole curve, or the weights around the shipment. */
function windowOf(curve, near) {
  const rated = curve.points.filter((point) => point.net_charge !== null);
  const { weight } = curve.shipment;
  const to = Math.max(curve.to, weight);
  const range = near ? { from: Math.max(curve.from, Math.floor(weight * 0.6)), to: Math.min(to, Math.ceil(weight * 1.5)) }
    : { from: curve.from, to };
  const charges = rated.filter(({ weight: at }) => at >= range.from && at <= range.to).map((point) => Number(point.net_charge));
  const [least, most] = [Math.min(...charges), Math.max(...charges)];
  const room = Math.max(1, (most - least) * 0.08);
  return { ...range, low: near ? Math.max(0, least - room) : 0, high: most + room };
}

/** Pieces of the line between refused weights. */
function pieces(points) {
  const found = [[]];
  for (const point of points) {
    if (point.net_charge === null) found.push([]);
    else found.at(-1).push(point);
  }
  return found.filter((piece) => piece.length > 0);
}

function path(piece, x, y) {
  const spots = [];
  piece.forEach((point, i) => {
    const charge = Number(point.net_charge);
    const before = piece[i - 1];
    for (let step = 1; before && step < kSteps; ++step) {
      const part = step / kSteps;
      spots.push([before.weight + (point.weight - before.weight) * part,
        Number(before.net_charge) + (charge - Number(before.net_charge)) * part]);
    }
    spots.push([point.weight, charge]);
  });
  return `M${spots.map(([weight, charge]) => `${x(weight).toFixed(1)},${y(charge).toFixed(1)}`).join("L")}`;
}

/** The numbers beside the axis: those of a scale of roots lie far apart at its end, so more are put there. */
function chargeNumbers(seen, y, near) {
  if (near) return steps(seen.low, seen.high, 7);
  const found = roundNumbers(y, seen.low, seen.high, 24);
  for (const value of steps(seen.low, seen.high, 10).reverse()) {
    if (found.every((other) => Math.abs(y(other) - y(value)) >= 24)) found.push(value);
  }
  return found;
}

function axes(seen, x, y, near, size) {
  const bottom = size.height - kMargin.bottom;
  const charges = chargeNumbers(seen, y, near);
  const weights = near ? steps(seen.from, seen.to, size.width < kNarrow ? 4 : 8) : roundNumbers(x, seen.from, seen.to, 52);
  return drawn("g", { class: "axes" },
    charges.map((value) => drawn("g", {},
      drawn("line", { x1: kMargin.left, x2: size.width - kMargin.right, y1: y(value), y2: y(value), class: "grid-line" }),
      drawn("text", { x: kMargin.left - 8, y: y(value) + 4, "text-anchor": "end" }, grouped(Number(value.toFixed(2)))))),
    weights.map((value) => drawn("g", {},
      drawn("line", { x1: x(value), x2: x(value), y1: bottom, y2: bottom + 5, class: "tick" }),
      drawn("text", { x: x(value), y: bottom + 18, "text-anchor": "middle" }, grouped(value)))),
    drawn("line", { x1: kMargin.left, x2: size.width - kMargin.right, y1: bottom, y2: bottom, class: "axis" }),
    drawn("text", { x: size.width - kMargin.right, y: bottom + 34, "text-anchor": "end", class: "axis-name" }, "pounds"),
    drawn("text", { x: 8, y: 13, class: "axis-name" }, "net charge, $"));
}

/** The breaks, and their names in as many rows as they need. */
function breakLines(curve, seen, x, size) {
  const ends = Array(kLabelRows).fill(-Infinity);  // Of the last label in each row, on the paper.
  return drawn("g", { class: "weight-breaks" }, curve.breaks
    .filter(({ weight }) => weight > seen.from && weight <= seen.to).map(({ label, weight }) => {
      const words = label.replace(/\s+/g, " ").trim();
      const half = (words.length * kLetter) / 2;
      const middle = Math.min(x(weight), size.width - half);
      const row = ends.findIndex((end) => middle - half > end + kLetter);
      if (row >= 0) ends[row] = middle + half;
      const top = kMargin.top - 12 - Math.max(0, row) * kLabelRow;
      return drawn("g", {},
        drawn("line", { x1: x(weight), x2: x(weight), y1: top + 4, y2: size.height - kMargin.bottom }),
        row >= 0 ? drawn("text", { x: middle, y: top, "text-anchor": "middle" }, words) : null);
    }));
}

/** Lines across the bands of deficits, which keep them apart from others without colours. */
const hatching = () => drawn("pattern", { id: "hatching", width: 6, height: 6, patternUnits: "userSpaceOnUse", patternTransform: "rotate(45)" },
  drawn("line", { class: "hatch", x1: 0, x2: 0, y1: 0, y2: 6 }));

/** Bands of weights that are alike: those of the minimum, and of each deficit. */
function bands(curve, seen, x, size) {
  const band = (name, from, to) => {
    const [left, right] = [Math.max(from, seen.from), Math.min(to, seen.to)];
    if (left > right) return null;
    const place = {
      x: x(left), y: kMargin.top, width: Math.max(1.5, x(right) - x(left)), height: size.height - kMargin.top - kMargin.bottom,
    };
    return [drawn("rect", { class: `band ${name}`, ...place }),
      name === "plateau" ? drawn("rect", { ...place, fill: "url(#hatching)" }) : null];
  };
  return drawn("g", {}, hatching(), curve.minimum ? band("minimum", curve.from, curve.minimum.to) : null,
    curve.plateaus.map(({ from, to }) => band("plateau", from, to)));
}

function mark(name, at, x, y) {
  if (!at || at.net_charge === null) return null;
  return drawn("circle", { class: `mark ${name}`, cx: x(at.weight), cy: y(Number(at.net_charge)), r: 6 });
}

/** Draws the curve; gives it with `move`, which puts the reader's cross on a point. */
export function drawCurve(curve, { width, near }) {
  const size = { width, height: width < kNarrow ? 280 : 360 };
  const seen = windowOf(curve, near);
  const form = near ? even : root;
  const x = scale(form, seen.from, seen.to, kMargin.left, width - kMargin.right);
  const y = scale(form, seen.low, seen.high, size.height - kMargin.bottom, kMargin.top);
  const points = curve.points.filter(({ weight }) => weight >= seen.from && weight <= seen.to);
  const cross = drawn("g", { class: "cross", visibility: "hidden" },
    drawn("line", { y1: kMargin.top, y2: size.height - kMargin.bottom }), drawn("circle", { r: 9 }));
  const drawing = drawn("svg", { viewBox: `0 0 ${width} ${size.height}`, width, height: size.height, "aria-hidden": "true" },
    bands(curve, seen, x, size), axes(seen, x, y, near, size), breakLines(curve, seen, x, size),
    pieces(points).map((piece) => drawn("path", { class: "charge", d: path(piece, x, y) })),
    mark("cheaper", curve.cheaper && curve.cheaper.weight <= seen.to ? curve.cheaper : null, x, y),
    mark("shipment", curve.shipment, x, y), cross);
  const move = (point) => {
    cross.setAttribute("visibility", point.net_charge === null ? "hidden" : "visible");
    if (point.net_charge === null) return;
    const [line, spot] = cross.children;
    line.setAttribute("x1", x(point.weight));
    line.setAttribute("x2", x(point.weight));
    spot.setAttribute("cx", x(point.weight));
    spot.setAttribute("cy", y(Number(point.net_charge)));
  };
  /** The point nearest to a place of the drawing, in its own pixels. */
  const nearest = (pixel) => points.reduce((best, point) =>
    Math.abs(x(point.weight) - pixel) < Math.abs(x(best.weight) - pixel) ? point : best);
  return { drawing, points, move, nearest };
}
