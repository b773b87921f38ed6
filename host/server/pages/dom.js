// Elements of the page, made by hand: no text ever becomes markup.

function fill(made, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === undefined || value === false) continue;
    if (typeof value === "function") made.addEventListener(name, value);
    else made.setAttribute(name, value === true ? "" : value);
  }
  made.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined));
  return made;
}

/** An HTML element; an attribute that is a function listens to the event of its name. */
export function element(tag, attributes = {}, ...children) {
  return fill(document.createElement(tag), attributes, children);
}

/** The same as a part of a drawing. */
export function drawn(tag, attributes = {}, ...children) {
  return fill(document.createElementNS("http://www.w3.org/2000/svg", tag), attributes, children);
}

export const byId = (id) => document.getElementById(id);

/** A table with a header row; the first cell of a row is its heading. */
export function table(caption, headings, rows, attributes = {}) {
  const head = headings.map((text) => element("th", { scope: "col" }, text));
  const body = rows.map(([first, ...rest]) =>
    element("tr", {}, element("th", { scope: "row" }, first), rest.map((cell) => element("td", {}, cell))));
  return element("table", attributes, element("caption", {}, caption),
    element("thead", {}, element("tr", {}, head)), element("tbody", {}, body));
}

/** Something wide that scrolls by itself, with the keyboard too. */
export function scrolling(label, child) {
  return element("div", { class: "scrolling", role: "region", "aria-label": `${label}, to scroll`, tabindex: "0" }, child);
}

/** Pounds and counts with their thousands parted. */
export const grouped = (number) => String(number).replace(/\B(?=(\d{3})+$)/g, ",");

/** An amount with its thousands parted; it stays the text that it is. */
export const money = (text) => String(text).replace(/\d+/, grouped);

/** A date as 2025-01-06, where the files have 01-06-2025. */
export const isoDate = (text) => text.replace(/^(\d\d)-(\d\d)-(\d{4})$/, "$3-$1-$2");

/** A sentence begins with a capital letter. */
export const capital = (text) => text.charAt(0).toUpperCase() + text.slice(1);
