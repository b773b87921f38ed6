// The set: what cwt inspect says, on a page.
import * as api from "./api.js";
import { capital, element, grouped, isoDate, scrolling, table } from "./dom.js";
import { profileDetails } from "./profile_details.js";
import { stateGrid } from "./state_grid.js";

const kHeaviest = 9999999;  // Pounds at which the last weight break ends in the files, for there is no end.

/** Bytes of the files that mean nothing to those who rate; they are there for those who know the files. */
const isHosts = ([name]) => /^(host|saved)_/.test(name);

const shown = (value) => (value === "" || value === null || value === undefined ? "–" : String(value));

const shownSetting = (value) => (typeof value === "boolean" ? (value ? "yes" : "no") : shown(value));

function section(title, ...content) {
  return element("section", { "aria-label": title }, element("h2", {}, title), content);
}

function pairs(fields) {
  return element("dl", { class: "pairs" }, fields.map(([name, { value, meaning }]) =>
    element("div", {}, element("dt", {}, name), element("dd", {}, shownSetting(value)), element("dd", { class: "meaning" }, meaning))));
}

/** A section of settings.json, under its name there. */
function settings([name, values]) {
  const fields = Object.entries(values);
  const hosts = fields.filter(isHosts);
  return section(capital(name.replaceAll("_", " ")), pairs(fields.filter((field) => !isHosts(field))), hosts.length === 0 ? []
    : element("details", {}, element("summary", {}, "Bytes of the host's own"), pairs(hosts)));
}

function health(set) {
  const line = (good, words) => element("li", { class: good ? "good" : "ill" }, words);
  const partners = (set.partners ?? []).map(({ role, library, works, says }) =>
    line(works, `The ${role} ${library} ${works ? "works" : "does not work"}${says ? `: ${says}` : ""}.`));
  return element("ul", { class: "health" },
    line(set.loads, set.loads ? "The set loads." : `The set does not load: ${shown(set.failure?.text ?? set.failure)}`),
    partners, set.level_date ? line(true, `Level date: ${isoDate(set.level_date)}`) : null);
}

function files(list) {
  const rows = list.map(({ extension, meaning, sheet, need, present, bytes, records, stray_bytes: stray }) => [extension, meaning, sheet, need,
    present ? grouped(bytes) : "not there", records === undefined ? "" : grouped(records),
    stray > 0 ? `${grouped(stray)} stray bytes` : ""]);
  return scrolling("Files", table("Files of the set, and where cwt export writes them",
    ["File", "What it holds", "As text", "Need", "Bytes", "Records", "Remark"], rows, { class: "figures files" }));
}

function profiles(names) {
  if (names.length === 0) return [element("p", {}, "There are no profiles.")];
  return names.map((name) => {
    const box = element("div", {});
    const details = element("details", { class: "profile" }, element("summary", {}, name), box);
    details.addEventListener("toggle", async () => {
      if (!details.open || box.firstChild) return;
      box.append(element("p", {}, "Reading the profile…"));
      try {
        box.replaceChildren(...profileDetails(await api.profile(name)));
      } catch (error) {
        box.replaceChildren(element("p", { class: "wrong" }, error.message));
      }
    });
    return details;
  });
}

/** The view of the set; read anew whenever it is gone to. */
export class SetView {
  constructor(box) { this.box = box; }

  async show() {
    const turn = this.turn = (this.turn ?? 0) + 1;
    if (!this.box.firstChild) this.box.append(element("p", { role: "status" }, "Reading the set…"));
    try {
      const [set, names] = await Promise.all([api.tariffSet(true), api.profileNames()]);
      if (turn === this.turn) this.box.replaceChildren(...this.content(set, names.profiles));
    } catch (error) {
      if (turn !== this.turn) return;
      this.box.replaceChildren(element("h1", {}, "The set"), element("p", { class: "banner bad", role: "alert" }, error.message),
        element("button", { type: "button", click: () => this.show() }, "Try again"));
    }
  }

  content(set, names) {
    const breaks = (set.weight_breaks ?? []).map(({ label, lowest_pounds: lowest, highest_pounds: highest }) =>
      [label, grouped(lowest), highest >= kHeaviest ? "and more" : grouped(highest)]);
    const items = (set.accessorials ?? []).map(({ item_code: code, description }) => [shown(code), shown(description)]);
    const labels = (set.labels ?? []).filter((label) => label !== "");
    return [
      element("h1", {}, `Set ${set.set}`), element("p", { class: "under" }, `${set.directory}, for rating by ${set.rating === "engine" ? "an engine" : set.rating}${labels.length ? ` · ${labels.join(" ")}` : ""}`),
      health(set),
      section("Profiles and their discounts", profiles(names)),
      section("Classes", element("p", { class: "words-list" }, (set.classes ?? []).join("  "))),
      section("Weight breaks", table("Weight breaks, pounds", ["Break", "From", "To"], breaks, { class: "figures short" })),
      items.length === 0 ? [] : section("Accessorial items", table("Accessorial items of the tariff", ["Code", "Item"], items, { class: "figures short" })),
      section("States", set.states?.length ? stateGrid(set.states) : element("p", {}, "The set has no table of states.")),
      section("Files", files(set.files ?? [])),
      element("div", { class: "columns" }, Object.entries(set.sections ?? {}).map(settings)),
      section("Table names", element("p", { class: "words-list" }, (set.table_names ?? []).join("  "))),
    ].flat();
  }
}
