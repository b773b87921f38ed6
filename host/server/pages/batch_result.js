// What is to be said of a rated file beside its rows.
import { kOutcomes } from "./batch_rows.js";
import { element, grouped } from "./dom.js";

const kMostReasons = 12;

const rowsOf = (count) => `${grouped(count)} ${count === 1 ? "row" : "rows"}`;

/** What the service says of the file: "3; first=17" rows of several lines, columns passed on. */
export function remarksOf(headers) {
  const [, several, first] = /^(\d+); *first=(\d+)/.exec(headers.get("Cwt-Rows-Of-Several-Lines") ?? "") ?? [];
  const passed = headers.get("Cwt-Columns-Passed");
  return {
    several: Number(several ?? 0), first: Number(first ?? 0),
    passed: passed ? passed.split(",").map((name) => decodeURIComponent(name.trim())) : [],
  };
}

function counts(tally) {
  return element("dl", { class: "tally" }, kOutcomes.map((outcome) => element("div", { class: tally[outcome] > 0 ? outcome : null },
    element("dt", {}, outcome), element("dd", {}, grouped(tally[outcome])))));
}

function severalLines({ several, first }) {
  if (several === 0) return null;
  const are = several === 1 ? `Row ${grouped(first)} is of several lines`
    : `${rowsOf(several)} are of several lines, the first is row ${grouped(first)}`;
  return element("p", { class: "banner" },
    `${are}. That is right for a cell with a line end in it; a stray quote makes one row of several, and the others have no bill.`);
}

function reasons(tally) {
  const all = tally.reasonsByCount();
  if (all.length === 0) return null;
  const more = all.slice(kMostReasons).reduce((sum, [, { count }]) => sum + count, 0);
  return element("div", { class: "reasons" }, element("h3", {}, "Why rows have no bill"),
    element("ul", {}, all.slice(0, kMostReasons).map(([words, { count, first }]) =>
      element("li", {}, element("b", {}, grouped(count)), ` ${words}; ${count === 1 ? "" : "first "}row ${grouped(first)}`)),
    more > 0 ? element("li", {}, element("b", {}, grouped(more)), " for other reasons") : null));
}

/** The parts of the panel of a result, the gravest first. */
export function resultOf(tally, total, remarks) {
  const fewer = tally.rows === total ? null : element("p", { class: "banner bad" },
    `The file has ${rowsOf(total)} by its quotes and line ends, and ${grouped(tally.rows)} were answered. Look for a quote that is not closed.`);
  return [counts(tally), fewer, severalLines(remarks), reasons(tally),
    tally.noted === 0 ? null : element("p", {}, `${tally.noted === 1 ? "1 bill has notes" : `${grouped(tally.noted)} bills have notes`}: see them in the result.`),
    remarks.passed.length === 0 ? null : element("p", {}, "Columns passed on unread: ", element("b", {}, remarks.passed.join(", ")), ".")];
}

/** The same in a sentence, to be read out. */
export function wordsOf(tally, { several, first }) {
  const outcomes = kOutcomes.map((outcome) => `${grouped(tally[outcome])} ${outcome}`).join(", ");
  return `${rowsOf(tally.rows)}: ${outcomes}.${several > 0 ? ` Of several lines: ${grouped(several)}, the first is row ${grouped(first)}.` : ""}`;
}
