// The form of a shipment: what is entered, and what the set offers for it.
import * as api from "./api.js";
import { byId, element, grouped } from "./dom.js";
import { kFields, shipmentOf } from "./fields.js";
import { Lines } from "./lines.js";
import { PointLookup, splitCity, wrongTogether } from "./points.js";
import { clearRefusals, refuseAt } from "./refusals.js";

const kTerritories = [
  ["", "Both ways (B)"], ["F", "As origin (F)"], ["T", "As destination (T)"],
  ["X", "Both ways, but not to another X (X)"], ["Y", "Both ways (Y)"], ["N", "Not served (N)"],
];
const kMostBreaks = 20;  // Weight breaks of a tariff set.
const kPause = 400;  // Milliseconds without a key before the tariff's classes are asked for.

const kWanted = [["origin.zip", "the origin's postal code"], ["destination.zip", "the destination's postal code"]];

/** The form; `changed` hears of every change, `now` that it is to be rated at once. */
export class ShipmentForm {
  constructor({ changed, now, cleared }) {
    this.form = byId("shipment");
    this.now = now;
    this.changed = changed;
    for (const name of ["origin", "destination"]) {
      byId(`${name}-territory`).append(...kTerritories.map(([value, words]) => element("option", { value }, words)));
    }
    byId("break").append(...Array.from({ length: kMostBreaks }, (_, i) =>
      element("option", { value: String(i) }, `Break ${i + 1}`)));
    this.lines = new Lines(() => this.touched());
    const take = (place, value) => this.take(place, value);
    this.points = ["origin", "destination"].map((name) => new PointLookup(name, () => this.changed(), take));
    this.form.addEventListener("input", (event) => this.touched(event.target));
    this.form.addEventListener("submit", (event) => {
      event.preventDefault();
      this.now();
    });
    byId("clear").addEventListener("click", () => {
      this.write({});
      cleared();
      this.changed();
      byId("origin-zip").focus();
    });
    byId("tariff").addEventListener("input", () => {
      clearTimeout(this.timer);
      this.timer = setTimeout(() => this.offerClasses(), kPause);
    });
  }

  touched(input = null) {
    const field = input?.closest(".field");
    if (field) clearRefusals(field);
    this.changed();
  }

  /** What the set offers: profiles, classes, breaks for the surcharge. */
  async offer() {
    const fill = (id, values) => byId(id).replaceChildren(...values.map((value) => element("option", { value })));
    const names = api.profileNames().then(({ profiles }) => fill("profiles", profiles));
    const breaks = api.tariffSet().then(({ weight_breaks: known = [] }) => {
      [...byId("break").options].slice(1).forEach((option, i) => {
        option.hidden = i >= known.length;
        if (!known[i]) return;
        const { label, lowest_pounds: lowest } = known[i];
        option.textContent = `${lowest === 1 ? "From 1 pound" : `From ${grouped(lowest)} pounds`} on (${label})`;
      });
    });
    await Promise.allSettled([names, breaks, this.offerClasses()]);
  }

  async offerClasses() {
    const tariff = byId("tariff").value.trim();
    try {
      const { classes } = await api.classesOf(tariff);
      if (tariff !== byId("tariff").value.trim()) return;
      byId("classes").replaceChildren(...[...classes].reverse().map((value) => element("option", { value })));
    } catch {
      byId("classes").replaceChildren();  // Rating says what is wrong with the tariff.
    }
  }

  /** The texts that are entered, by their places; what the page has filled in by itself is none. */
  entries() {
    const entries = {};
    for (const input of this.form.querySelectorAll("[data-place]:not([data-found])")) {
      const { place } = input.dataset;
      if (input.type !== "checkbox") entries[place] = input.value.trim();
      else if (input.checked) entries[place] = place === "origin.intrastate" ? "false" : "true";
    }
    this.lines.read(entries);
    return entries;
  }

  shipment() { return shipmentOf(this.entries()); }

  isEmpty() { return !Object.values(this.entries()).some((text) => text); }

  /** What must be there and is not, in words. */
  missing() {
    const entries = this.entries();
    const words = kWanted.filter(([place]) => !entries[place]).map(([, name]) => name);
    this.lines.filled().forEach((_, i) => {
      for (const [part, name] of [["class", "a class"], ["weight", "a weight"]]) {
        if (!entries[`lines[${i}].${part}`]) words.push(`${name} in line ${i + 1}`);
      }
    });
    return words;
  }

  /** Enters a whole shipment; gives back the columns of what the form cannot show. */
  write(entries) {
    clearRefusals(this.form);
    const lost = [];
    for (const { place, column } of kFields) {
      const input = this.form.querySelector(`[data-place="${place}"]`);
      if (input && !this.enter(input, place, entries[place] ?? "")) lost.push(column);
    }
    this.lines.write(entries);
    byId("more").open = [...byId("more").querySelectorAll("[data-place]")].some((input) =>
      input.type === "checkbox" ? input.checked : input.value !== "" && !["id", "description"].includes(input.id));
    for (const point of this.points) {
      point.forget();
      point.look(false);
    }
    this.offerClasses();
    return lost;
  }

  enter(input, place, text) {
    input.removeAttribute("data-found");
    if (input.type === "checkbox") {
      input.checked = text === (place === "origin.intrastate" ? "false" : "true");
      return ["", "true", "false"].includes(text);
    }
    input.value = place.endsWith("territory") && text === "B" ? "" : text;
    if (input.value === text || text === "B") return true;
    if (input.selectedIndex < 0) input.value = "";
    return false;
  }

  /** The control at a place of the shipment. */
  at(place) { return this.lines.at(place) ?? this.form.querySelector(`[data-place="${CSS.escape(place)}"]`); }

  /** What a control is called on the form. */
  nameOf(input) {
    const label = input.closest(".field").querySelector("label").textContent;
    const within = input.closest(".line")?.getAttribute("aria-label") ?? input.closest("fieldset").querySelector("legend").textContent;
    return `${within}: ${label.toLowerCase()}`;
  }

  /** Puts an alternative in, and rates. */
  take(place, value) {
    const point = /^(origin|destination)\.city$/.exec(place);
    const chosen = point ? splitCity(value) : null;
    const input = this.at(place);
    if (!input) return;
    input.value = chosen ? chosen.city : value;
    const state = point && byId(`${point[1]}-state`);
    if (chosen && state.value !== chosen.state) this.enter(state, `${point[1]}.state`, chosen.state);
    input.closest("fieldset").querySelector(".offers")?.remove();
    input.focus();
    input.dispatchEvent(new Event("input", { bubbles: true }));
    this.now();
  }

  /** Says each refusal at its field; gives back those that have none. */
  refuse(refusals) {
    clearRefusals(this.form);
    return refusals.filter((refusal) => {
      const input = this.at(refusal.place);
      if (!input) return true;
      const within = input.closest("details");
      if (within) within.open = true;
      refuseAt(wrongTogether(input, refusal), refusal, refusal.place, (place, value) => this.take(place, value));
      return false;
    });
  }
}
