// The states by prefix of the postal code, on a grid that one reads like a map.
import { element, scrolling } from "./dom.js";

const kDigits = [..."0123456789"];

const ranged = ({ first, last }) => (first === last ? first : `${first}–${last}`);

/** The part of a range that lies within the ten prefixes of a cell, such as 300 to 309. */
function within(range, lowest) {
  const low = Math.max(Number(range.first), lowest);
  const high = Math.min(Number(range.last), lowest + 9);
  if (low > high) return null;
  const three = (number) => String(number).padStart(3, "0");
  return { state: range.state, first: three(low), last: three(high) };
}

function cell(ranges, first) {
  const parts = ranges.map((range) => within(range, first)).filter(Boolean);
  return element("td", { class: parts.length === 0 ? "none" : null }, parts.map((part) =>
    element("span", { class: "in-state" }, element("b", {}, part.state),
      Number(part.last) - Number(part.first) === 9 ? null : element("small", {}, ` ${ranged(part)}`))));
}

function digitGrid(ranges) {
  const head = element("tr", {}, element("td", {}), kDigits.map((digit) => element("th", { scope: "col" }, `–${digit}x`)));
  const rows = kDigits.map((digit, i) => element("tr", {}, element("th", { scope: "row" }, `${digit}–`),
    kDigits.map((_, j) => cell(ranges, i * 100 + j * 10))));
  return element("table", { class: "states" }, element("caption", {}, "ZIP codes by their first two digits; a range of prefixes where a state has only some of the ten. XX: in no state"),
    element("thead", {}, head), element("tbody", {}, rows));
}

/** The states of a set: a grid of the digits, and a list of the letter codes. */
export function stateGrid(states) {
  const digits = states.filter(({ first, last }) => /^\d{3}$/.test(first) && /^\d{3}$/.test(last));
  const others = states.filter((range) => !digits.includes(range));
  return [scrolling("States by ZIP code", digitGrid(digits)),
    others.length === 0 ? null : element("ul", { class: "letters", "aria-label": "States by other postal codes" }, others.map((range) =>
      element("li", {}, element("b", {}, range.state), ` ${ranged(range)}`)))].filter(Boolean);
}
