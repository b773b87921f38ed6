// The set: what cwt inspect says, on a page.
import * as api from "./api.js";
import { element, grouped, isoDate, scrolling, table } from "./dom.js";
import { profileDetails } from "./profile_details.js";
import { stateGrid } from "./state_grid.js";

const kHeaviest = 9999999;  // Pounds at which the last weight break ends in the files, for there is no end.

/** Bytes of the files that mean nothing to those who rate; they are there for those who know the files. */
const isInner = (name) => /^(OptionFlag|SetByte|DefByte)\d+$/.test(name);

const shown = (value) => (value === "" || value === null || value === undefined ? "–" : String(value));

function section(title, ...content) {
  return element("section", { "aria-label": title }, element("h2", {}, title), content);
}

function pairs(values) {
  return element("dl", { class: "pairs" }, values.map(([name, value]) =>
    element("div", {}, element("dt", {}, name), element("dd", {}, shown(value)))));
}

function settings(values) {
  const all = Object.entries(values ?? {});
  const inner = all.filter(([name]) => isInner(name));
  return [pairs(all.filter(([name]) => !isInner(name))), inner.length === 0 ? null
    : element("details", {}, element("summary", {}, "Other bytes of the files"), pairs(inner))].filter(Boolean);
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
  const rows = list.map(({ extension, need, present, bytes, records, stray_bytes: stray }) => [extension, need,
    present ? grouped(bytes) : "not there", records === undefined ? "" : grouped(records),
    stray > 0 ? `${grouped(stray)} stray bytes` : ""]);
  return scrolling("Files", table("Files of the set", ["File", "Need", "Bytes", "Records", "Remark"], rows, { class: "figures files" }));
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
    const breaks = (set.weight_breaks ?? []).map(({ name, from, to }) => [name, grouped(from), to >= kHeaviest ? "and more" : grouped(to)]);
    const labels = (set.labels ?? []).filter((label) => label !== "");
    return [
      element("h1", {}, `Set ${set.set}`), element("p", { class: "under" }, `${set.directory}, for rating by ${set.rating === "engine" ? "an engine" : set.rating}${labels.length ? ` · ${labels.join(" ")}` : ""}`),
      health(set),
      section("Profiles and their discounts", profiles(names)),
      section("Classes", element("p", { class: "words-list" }, (set.classes ?? []).join("  "))),
      section("Weight breaks", table("Weight breaks, pounds", ["Break", "From", "To"], breaks, { class: "figures short" })),
      section("States", set.states?.length ? stateGrid(set.states) : element("p", {}, "The set has no table of states.")),
      section("Files", files(set.files ?? [])),
      element("div", { class: "columns" }, section("Settings", settings(set.settings)), section("Defaults", settings(set.defaults))),
      section("Table names", element("p", { class: "words-list" }, (set.table_names ?? []).join("  "))),
    ];
  }
}
