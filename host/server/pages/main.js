// The page: its views, and what of it hears from what.
import * as api from "./api.js";
import { BatchView } from "./batch.js";
import { Curve } from "./curve.js";
import { byId, element, isoDate } from "./dom.js";
import { Explanation } from "./explanation.js";
import { entriesOf, fragmentOf } from "./fields.js";
import { Rating } from "./rating.js";
import { SetView } from "./set_page.js";
import { shareButtons } from "./share.js";
import { Sheet } from "./sheet.js";
import { ShipmentForm } from "./shipment_form.js";

const kTitles = { rate: "Rate a shipment", batch: "Many shipments", set: "The set" };

const form = new ShipmentForm({ changed: () => rating.changed(), now: () => rating.now(), cleared });
const curve = new Curve();
const explanation = new Explanation(document.querySelector(".answer"));
const sheet = new Sheet({ form, explanation, curve, share });
const rating = new Rating(form, sheet, curve);
const batch = new BatchView(byId("view-batch"));
const set = new SetView(byId("view-set"));
const linkTo = (name) => document.querySelector(`nav [data-view="${name}"]`);
let written = null;  // The fragment of the entries on the form.

/** What is rated becomes the address, so that going back, reloading and sharing give the same. */
function share(entries) {
  written = fragmentOf(entries);
  linkTo("rate").href = `#${written}`;
  if (!("told" in byId("serving").dataset)) tellSet();
  if (!byId("view-rate").hidden) history.replaceState(null, "", `#${written}`);
  return shareButtons(entries);
}

/** An empty form leaves nothing of the shipment before in the address. */
function cleared() {
  written = "";
  linkTo("rate").href = "#";
  document.querySelector(".banner.link")?.remove();
  history.replaceState(null, "", location.pathname);
}

function view(name) {
  for (const other of Object.keys(kTitles)) {
    byId(`view-${other}`).hidden = other !== name;
    const link = linkTo(other);
    if (other === name) link.setAttribute("aria-current", "page");
    else link.removeAttribute("aria-current");
  }
  document.title = `${kTitles[name]} – Hundredweight`;
}

/** Says in the head of the page which set is rated by, or that none is. */
async function tellSet() {
  const box = byId("serving");
  box.dataset.told = "";
  try {
    const { set: name, level_date: date, loads } = await api.tariffSet();
    box.textContent = loads === false ? `The set ${name} does not load` : `Set ${name}${date ? `, level date ${isoDate(date)}` : ""}`;
  } catch {
    box.textContent = "The service does not answer";
    box.removeAttribute("data-told");
  }
}

/** Shows what the address says. */
function follow() {
  const fragment = location.hash.slice(1);
  if (fragment === "set" || fragment === "batch") {
    view(fragment);
    if (fragment === "set") set.show();
    return;
  }
  view("rate");
  if (fragment === written) return;
  written = fragment;
  const { entries, unknown } = entriesOf(fragment);
  const lost = [...unknown, ...form.write(entries)];
  document.querySelector(".banner.link")?.remove();
  if (lost.length > 0) {
    rating.stop();
    sheet.ready(form.missing());
    byId("shipment").prepend(element("p", { class: "banner bad link", role: "alert" },
      `The link says what this page cannot enter: ${lost.join(", ")}. Look the entries over, and rate.`));
  } else {
    rating.changed();
  }
}

addEventListener("hashchange", follow);
addEventListener("dragover", (event) => event.preventDefault());
addEventListener("drop", (event) => {
  event.preventDefault();
  const [file] = event.dataTransfer.files;
  if (!file) return;
  location.hash = "batch";
  batch.rate(file);
});
follow();
if (form.isEmpty() && matchMedia("(min-width: 60em)").matches && !byId("view-rate").hidden) byId("origin-zip").focus();
form.offer();
tellSet();
