// The two points: what the postal code tells of state and cities, while it is typed.
import * as api from "./api.js";
import { byId, element } from "./dom.js";
import { clearRefusals, refuseAt } from "./refusals.js";

const kPause = 250;  // Milliseconds without a key before the service is asked.
const kShortest = 5;  // Characters of the shortest postal code.

/** "Oak Brook IL" as its city and its state. */
export function splitCity(offer) {
  const end = offer.lastIndexOf(" ");
  return { city: offer.slice(0, end), state: offer.slice(end + 1) };
}

/** The fields that a refusal is about: with a city the state, where none of its cities is in that one. */
export function wrongTogether(input, { place, alternatives }) {
  const point = /^(origin|destination)\.city$/.exec(place);
  const state = point && byId(`${point[1]}-state`);
  const entered = state && !state.hasAttribute("data-found") ? state.value.trim().toUpperCase() : "";
  const fits = alternatives.some((offer) => splitCity(offer).state === entered);
  return entered === "" || fits ? [input] : [input, state];
}

const known = new Map();

/** The cities that the engine has at a postal code; each code is asked about once. */
export function citiesAt(code) {
  if (!known.has(code)) {
    const answer = api.citiesOf(code).then((document) => document.cities);
    answer.catch(() => known.delete(code));
    known.set(code, answer);
  }
  return known.get(code);
}

/** A point of the form; `changed` hears of what it fills in, `take` puts an alternative in. */
export class PointLookup {
  constructor(name, changed, take) {
    Object.assign(this, { name, changed, take, turn: 0, timer: 0 });
    [this.zip, this.city, this.state] = ["zip", "city", "state"].map((part) => byId(`${name}-${part}`));
    this.offers = byId(`${name}-cities`);
    this.zip.addEventListener("input", () => this.typed());
    for (const input of [this.city, this.state]) {
      input.addEventListener("input", () => input.removeAttribute("data-found"));
    }
  }

  /** What was found for another code goes; what was typed stays. */
  typed() {
    this.forget();
    for (const input of [this.city, this.state]) {
      if (input.hasAttribute("data-found")) input.value = "";
      input.removeAttribute("data-found");
    }
    if (this.zip.value.trim().length < kShortest) return;
    this.timer = setTimeout(() => this.look(true), kPause);
  }

  forget() {
    ++this.turn;
    clearTimeout(this.timer);
    this.offers.replaceChildren();
    this.city.placeholder = this.state.placeholder = "";
    this.zip.closest("fieldset").querySelector(".offers")?.remove();
  }

  /** Asks about the code; fills in what it tells only when the user has typed it. */
  async look(mayFill) {
    const turn = ++this.turn;
    const code = this.zip.value.trim();
    if (code.length < kShortest) return;
    const [states, cities] = await Promise.allSettled([api.stateOf(code), citiesAt(code)]);
    if (turn !== this.turn) return;
    if (states.status === "fulfilled") this.found(this.state, states.value.states[0].state, mayFill);
    else this.refuse(states.reason);
    if (cities.status === "fulfilled") this.offer(cities.value, mayFill);
    if (mayFill) this.changed();
  }

  found(input, value, mayFill) {
    if (mayFill && input.value.trim() === "") {
      input.value = value;
      input.setAttribute("data-found", "");
    } else if (input.value.trim() === "") {
      input.placeholder = value;
    }
  }

  /** One city is the point's; of several none is, until the user chooses. */
  offer(cities, mayFill) {
    this.offers.replaceChildren(...cities.map((offer) =>
      element("option", { value: splitCity(offer).city }, offer)));
    if (cities.length === 1) this.found(this.city, splitCity(cities[0]).city, mayFill);
    if (cities.length < 2 || this.city.value.trim() !== "") return;
    this.city.placeholder = `${cities.length} cities`;
    this.zip.closest("fieldset").append(element("div", { class: "offers chips" },
      element("span", {}, "At this code: "),
      cities.map((offer) => element("button", {
        type: "button", class: "chip", click: () => this.take(`${this.name}.city`, offer),
      }, splitCity(offer).city))));
  }

  refuse(problem) {
    if (problem.status !== 422) return;
    clearRefusals(this.zip.closest(".field"));
    for (const refusal of problem.refusals) refuseAt([this.zip], refusal, `${this.name}.zip`, this.take);
  }
}
