// The lines of freight on the form: one to eight pairs of class and weight.
import { byId, element, grouped } from "./dom.js";
import { kMostLines } from "./fields.js";

let made = 0;

function field(name, label, attributes) {
  const id = `${name}-${++made}`;
  const input = element("input", { id, "data-part": name, ...attributes });
  return element("div", { class: `field ${name}` }, element("label", { for: id }, label), input);
}

/** The rows of freight; tells `changed` when one comes or goes. */
export class Lines {
  constructor(changed) {
    this.box = byId("lines");
    this.changed = changed;
    byId("add-line").addEventListener("click", () => {
      this.add().querySelector("input").focus();
      this.changed();
    });
    this.box.addEventListener("input", () => this.number());
    this.add();
  }

  get rows() { return [...this.box.children]; }

  input(row, part) { return row.querySelector(`[data-part="${part}"]`); }

  add() {
    const row = element("div", { class: "line", role: "group" },
      field("class", "Class", { list: "classes", autocapitalize: "characters" }),
      field("weight", "Pounds", { inputmode: "numeric" }),
      element("button", { type: "button", class: "quiet remove", click: () => this.remove(row) }, "Remove"));
    this.box.append(row);
    this.number();
    return row;
  }

  remove(row) {
    const next = row.nextElementSibling ?? row.previousElementSibling;
    row.remove();
    this.number();
    this.input(next, "class").focus();
    this.changed();
  }

  /** Names the rows by their numbers, and says the pounds of all together. */
  number() {
    const rows = this.rows;
    rows.forEach((row, i) => {
      row.setAttribute("aria-label", `Line ${i + 1}`);
      const remove = row.querySelector(".remove");
      remove.setAttribute("aria-label", `Remove line ${i + 1}`);
      remove.disabled = rows.length === 1;
    });
    byId("add-line").disabled = rows.length >= kMostLines;
    const weights = rows.map((row) => this.input(row, "weight").value.trim()).filter((text) => text !== "");
    const whole = weights.length > 1 && weights.every((text) => /^\d{1,6}$/.test(text));
    const sum = weights.reduce((total, text) => total + Number(text), 0);
    byId("pounds").textContent = whole ? `${grouped(sum)} pounds in ${weights.length} lines` : "";
  }

  /** The rows that say anything; they close up as those of a table do. */
  filled() {
    const rows = this.rows.filter((row) =>
      [...row.querySelectorAll("input")].some((input) => input.value.trim() !== ""));
    return rows.length > 0 ? rows : this.rows.slice(0, 1);
  }

  /** The input at a place of the shipment that was sent, such as lines[1].class. */
  at(place) {
    const found = /^lines\[(\d+)\]\.(class|weight)$/.exec(place);
    const row = found && this.filled()[Number(found[1])];
    return row ? this.input(row, found[2]) : null;
  }

  read(entries) {
    this.filled().forEach((row, i) => {
      for (const part of ["class", "weight"]) {
        entries[`lines[${i}].${part}`] = this.input(row, part).value.trim();
      }
    });
  }

  write(entries) {
    this.box.replaceChildren();
    for (let i = 0; i < kMostLines; ++i) {
      const values = ["class", "weight"].map((part) => entries[`lines[${i}].${part}`] ?? "");
      if (values.every((value) => value === "")) continue;
      const row = this.add();
      [this.input(row, "class").value, this.input(row, "weight").value] = values;
    }
    if (this.rows.length === 0) this.add();
    this.number();
  }
}
