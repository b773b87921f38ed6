// What is wrong, at the field where it is wrong, in the library's words.
import { byId, capital, element } from "./dom.js";
import { hintOf, offersValues } from "./fields.js";

const noteId = (input) => `${input.id}-wrong`;

/** The fields beside one another keep their columns: what is said of them stands below them all. */
const rowOf = (input) => input.closest(".point, .line");

function restore(input) {
  const note = byId(input.getAttribute("aria-describedby"));
  const shared = note ? document.querySelectorAll(`[aria-describedby="${note.id}"]`) : [];
  for (const marked of [input, ...shared]) {
    marked.removeAttribute("aria-invalid");
    marked.removeAttribute("aria-describedby");
  }
  note?.remove();
}

/** Takes the complaint away from a field, or from all within a part of the page. */
export function clearRefusals(root) {
  root.querySelectorAll("[aria-invalid]").forEach(restore);
}

/** Alternatives as buttons where they are values, as words where they tell a form. */
export function alternatives(refusal, place, take) {
  if (refusal.alternatives.length === 0) return [];
  if (!offersValues(place)) {
    return [element("span", { class: "possible" }, `Possible: ${refusal.alternatives.join(", ")}`)];
  }
  const buttons = refusal.alternatives.map((value) =>
    element("button", { type: "button", class: "chip", click: () => take(place, value) }, value));
  return [element("span", { class: "chips", role: "group", "aria-label": "Possible" }, buttons)];
}

const labelOf = (input) => input.closest(".field").querySelector("label").textContent;

/** Says a refusal at its field, or at several that are wrong together. A field may have several. */
export function refuseAt(inputs, refusal, place, take) {
  const [input] = inputs;
  const row = rowOf(input);
  const note = byId(noteId(input)) ?? element("div", { class: "wrong", id: noteId(input) });
  const hint = hintOf(place, input.value);
  note.append(element("p", {}, row ? `${inputs.map(labelOf).join(", ")}: ` : "", capital(refusal.text)),
    ...(hint ? [element("p", { class: "possible" }, hint)] : []), ...alternatives(refusal, place, take));
  (row ?? input.closest(".field")).append(note);
  for (const marked of inputs) {
    marked.setAttribute("aria-invalid", "true");
    marked.setAttribute("aria-describedby", note.id);
  }
}
