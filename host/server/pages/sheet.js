// The answer's sheet: a bill, or why there is none. Never a bill of other entries.
import { Problem } from "./api.js";
import { billOf } from "./bill.js";
import { byId, capital, element, money } from "./dom.js";
import { citiesAt } from "./points.js";
import { alternatives } from "./refusals.js";

const kPoints = ["origin", "destination"];
const kNoTariff = /^0101 /;  // The engine's number of "Tariff not on file".

/** The point that a complaint about a city is about: the one whose cities are offered. */
async function pointOf(refusal, entries) {
  const found = [];
  for (const point of kPoints) {
    const cities = await citiesAt(entries[`${point}.zip`]).catch(() => []);
    const offered = cities.length === refusal.alternatives.length && cities.every((city) => refusal.alternatives.includes(city));
    if (offered) found.push(point);
  }
  if (found.length < 2) return found[0];
  const names = refusal.alternatives.map((offer) => offer.slice(0, -3).toLowerCase());
  const wrong = found.filter((point) => entries[`${point}.city`] && !names.includes(entries[`${point}.city`].toLowerCase()));
  return wrong.length === 1 ? wrong[0] : undefined;
}

export class Sheet {
  /** `share` makes the buttons that go with a bill; `curve` and `explanation` stand beside it. */
  constructor({ form, explanation, curve, share }) {
    Object.assign(this, { form, explanation, curve, share });
    this.box = byId("sheet");
    this.why = byId("why");
    byId("outcome").addEventListener("click", () => {
      this.box.scrollIntoView();
      this.box.focus({ preventScroll: true });
    });
  }

  /** Says in words what has come out; where the form is above the answer, they lead to it. */
  say(words, outcome = "") {
    byId("said").textContent = words;
    byId("outcome").textContent = outcome;
  }

  put(state, ...content) {
    const bill = state === "rated";
    document.body.dataset.answer = state;
    this.box.inert = false;
    this.box.removeAttribute("aria-busy");
    this.box.replaceChildren(...content);
    byId("outcome").textContent = "";
    this.why.hidden = !bill;
    this.why.inert = false;
    this.curve.withdraw();
  }

  prompt(missing) {
    const words = missing.length === 0 ? "Enter two postal codes, a class and a weight: the bill appears here."
      : `Still wanted: ${missing.join(", ")}.`;
    this.put("empty", element("div", { class: "panel" }, element("h2", {}, "No bill yet"), element("p", {}, words)));
    this.say("");
  }

  /** Nothing is rated before the user has looked it over. */
  ready(missing) {
    if (missing.length > 0) return this.prompt(missing);
    this.put("empty", element("div", { class: "panel" }, element("h2", {}, "No bill yet"),
      element("p", {}, "Look the entries over, then press Rate.")));
  }

  /** What is on the page can no longer be read, until the answer to the new entries is there. */
  outdate() {
    const shown = document.body.dataset.answer;
    if (shown === "stale") return;
    if (shown !== "rated") {
      this.put("waiting", element("div", { class: "panel" }, element("h2", {}, "Rating…")));
      return;
    }
    document.body.dataset.answer = "stale";
    byId("outcome").textContent = "";
    this.box.setAttribute("aria-busy", "true");
    this.box.inert = this.why.inert = true;
    this.box.prepend(element("p", { class: "banner stale", id: "stale" }, "The entries have changed: rating them…"));
    this.curve.outdate();
  }

  wait(problem) {
    this.put("waiting", element("div", { class: "panel" }, element("h2", {}, problem.title),
      element("p", {}, `${problem.message} Trying again.`)));
    this.say(`${problem.title}. Trying again.`);
  }

  rated(answer, entries) {
    this.put("rated", this.share(entries), billOf(answer));
    this.explanation.show(answer);
    const due = `Total due ${answer.bill.currency} ${money(answer.bill.total_due)}`;
    this.say(`Rated. ${due}.`, due);
  }

  /** Gives complaints about a city and a tariff their fields, which the engine does not name. */
  async placed(refusals, entries) {
    return Promise.all(refusals.map(async (refusal) => {
      if (refusal.place === "" && entries.tariff && kNoTariff.test(refusal.text)) return { ...refusal, place: "tariff" };
      if (refusal.place !== "" || refusal.alternatives.length === 0) return refusal;
      const point = await pointOf(refusal, entries);
      return point ? { ...refusal, place: `${point}.city` } : refusal;
    }));
  }

  refused(refusals, others, asked) {
    const take = (place, value) => this.form.take(place, value);
    const listed = refusals.map((refusal) => {
      const input = others.includes(refusal) ? null : this.form.at(refusal.place);
      const written = refusal.written ? ` “${refusal.written}”` : "";
      if (input) {
        return element("li", {}, element("button", { type: "button", class: "link", click: () => input.focus() }, this.form.nameOf(input)),
          `${written}: ${capital(refusal.text)}`);
      }
      return element("li", {}, refusal.place ? `${refusal.place}${written}: ` : "", capital(refusal.text), " ", ...alternatives(refusal, refusal.place, take));
    });
    const count = refusals.length === 1 ? "One thing is wrong" : `${refusals.length} things are wrong`;
    this.put("refused", element("div", { class: "panel bad" }, element("h2", {}, "Refused: no bill"),
      element("p", {}, `${count}.`), element("ul", {}, listed)));
    this.say(`Refused. ${count}. ${capital(refusals[0].text)}`, `Refused: ${count.toLowerCase()}`);
    const first = refusals.find((refusal) => !others.includes(refusal));
    if (asked) (first ? this.form.at(first.place) : this.box).focus();
  }

  /** There is no answer; that it still is not there is not said again. */
  failed(error, again) {
    const title = error instanceof Problem ? error.title : "No answer";
    const words = `${title}. ${error.message}`;
    if (document.body.dataset.answer === "failed" && byId("said").textContent === words) return;
    this.put("failed", element("div", { class: "panel bad" }, element("h2", {}, title),
      element("p", {}, error.message), element("p", {}, "There is no bill for these entries."),
      element("button", { type: "button", click: again }, "Try again")));
    this.say(words, title);
  }
}
