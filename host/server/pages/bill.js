// The bill as a clerk knows it. Every amount is the text that the service gave.
import { element, grouped, money } from "./dom.js";

/** The reason of a figure, by which bill and explanation find each other. */
export function reasonKeys(statements) {
  const seen = {};
  return statements.map(({ topic }) => {
    seen[topic] = (seen[topic] ?? 0) + 1;
    return ["line", "break_charges"].includes(topic) ? `${topic}-${seen[topic]}` : topic;
  });
}

/** A figure with its reason; a mere text where nothing is said of it. */
function figure(keys, name, text, key) {
  if (!keys.has(key)) return text;
  return element("button", {
    type: "button", class: "figure", "data-why": key, "aria-label": `${name} ${text}`.trim(), "aria-describedby": `why-${key}`,
  }, text);
}

const isMapped = (line) => line.rated_as !== line.class;

function point(keys, title, { zip, city, state, terminal, service }, key) {
  const place = [city, state].filter((part) => part).join(", ");
  const served = terminal ? `terminal ${terminal}, service ${service}` : "";
  return element("div", { class: "end" }, element("dt", {}, title),
    element("dd", {}, element("strong", {}, figure(keys, title, zip, key)), place ? ` ${place}` : "",
      served ? [element("br"), figure(keys, title, served, "guide")] : []));
}

const kDays = [["standard", "Standard transit"], ["guaranteed", "guaranteed"], ["border", "at the border"]];

function transit(keys, days) {
  if (!days) return [];
  const parts = kDays.filter(([name]) => days[name] !== null && (name !== "border" || days[name] > 0))
    .map(([name, words]) => `${words} ${days[name]} business ${days[name] === 1 ? "day" : "days"}`);
  const text = parts.length > 0 ? parts.join(", ") : "No transit days on file";
  return element("p", { class: "transit" }, figure(keys, "", text, "guide"));
}

function lineRow(keys, line, i) {
  const name = `Line ${i + 1}`;
  const shown = isMapped(line) ? `${line.class}, rated as ${line.rated_as}` : line.class;
  return element("tr", {},
    element("th", { scope: "row" }, shown, isMapped(line) ? element("abbr", { title: "The profile rates the entered class as this one" }, "*") : null),
    element("td", {}, grouped(line.weight)), element("td", {}, figure(keys, `${name} rate`, money(line.rate), `line-${i + 1}`)),
    element("td", {}, figure(keys, `${name} charge`, money(line.charge), `line-${i + 1}`)));
}

function freight(keys, bill) {
  const row = (name, ...cells) => element("tr", {}, element("th", { scope: "row" }, name),
    cells.map((cell) => element("td", {}, cell)));
  const rows = bill.lines.map((line, i) => lineRow(keys, line, i));
  const { deficit } = bill;
  if (deficit) {
    rows.push(row("Deficit", grouped(deficit.weight), figure(keys, "Deficit rate", money(deficit.rate), "deficit"),
      figure(keys, "Deficit charge", money(deficit.charge), "deficit")));
  }
  const sums = [row("Total", grouped(bill.total_weight), "", "")];
  if (bill.billed_weight !== bill.total_weight) sums.push(row("Billed as", grouped(bill.billed_weight), "", ""));
  return element("table", { class: "freight" }, element("caption", { class: "unseen" }, "Freight"),
    element("thead", {}, element("tr", {}, ["Class", "Pounds", "Rate/cwt", "Charge"].map((text) => element("th", { scope: "col" }, text)))),
    element("tbody", {}, rows), element("tbody", { class: "sum" }, sums));
}

function amounts(keys, bill) {
  const rows = [
    ["Gross charge", bill.gross_charge, "gross"],
    [`Discount ${bill.discount.percent}%`, bill.discount.amount, "discount"],
    ["Net charge", bill.net_charge, "net"],
    ["Minimum charge", bill.minimum_charge, "minimum"],
    ["Surcharge", bill.surcharge, "surcharge"],
    ["Total due", bill.total_due, "due"],
  ];
  return element("dl", { class: "amounts" }, rows.map(([name, text, key]) =>
    element("div", { class: `amount ${key}`, "data-amount": key }, element("dt", {}, name),
      element("dd", {}, key === "due" ? element("span", { class: "currency" }, `${bill.currency} `) : null, figure(keys, name, money(text), key)))));
}

function charges(keys, title, list, key) {
  if (list.length === 0) return [];
  const rows = list.map(({ label, amount, raised_to_floor: raised }) =>
    element("tr", {}, element("th", { scope: "row" }, label.replace(/\s+/g, " ")),
      element("td", {}, element("span", { "data-why": keys.has(key) ? key : null }, money(amount)),
        raised ? element("abbr", { title: "Raised to the floor of the discount or the lane" }, "*") : null)));
  return element("table", { class: "breaks" }, element("caption", {}, figure(keys, "", title, key)), element("tbody", {}, rows));
}

function legend(bill) {
  const all = [...bill.charges_by_break.minimum, ...bill.charges_by_break.single_shipment];
  const words = [];
  if (bill.lines.some(isMapped)) words.push("* behind a class: the profile rates the entered class as this one");
  if (all.some((charge) => charge.raised_to_floor)) words.push("* behind an amount: raised to the floor of the discount or the lane");
  return words.map((text) => element("p", { class: "legend" }, text));
}

/** The bill, with each figure bound to the statement that tells its reason. */
export function billOf({ bill, statements }) {
  const keys = new Set(reasonKeys(statements));
  const { tariff } = bill;
  const notes = bill.notes.map((note) => element("li", {}, note));
  return element("article", { class: "bill" },
    element("header", {}, element("h2", {}, "Freight bill"),
      element("p", { class: "under" }, figure(keys, "Tariff", `Tariff ${tariff.name} of ${tariff.date}`, "tariff"), `, rate code ${tariff.rate_code}`),
      bill.id === null ? null : element("p", { class: "reference" }, `Id ${bill.id}`),
      bill.description ? element("p", { class: "reference" }, bill.description) : null),
    element("dl", { class: "ends" }, point(keys, "From", bill.origin, "origin"), point(keys, "To", bill.destination, "destination")),
    transit(keys, bill.transit_days), freight(keys, bill), amounts(keys, bill),
    notes.length > 0 ? element("div", { class: "notes" }, element("h3", {}, "Notes"), element("ul", {}, notes)) : null,
    element("div", { class: "by-break" },
      charges(keys, "Minimum charges by weight break, $", bill.charges_by_break.minimum, "break_charges-1"),
      charges(keys, "Single-shipment charges by weight break, $", bill.charges_by_break.single_shipment, "break_charges-2")),
    legend(bill));
}
