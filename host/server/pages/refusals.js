// What is wrong, at the field where it is wrong, in the library's words.
import { element } from "./dom.js";
import { offersValues } from "./fields.js";

const noteId = (input) => `${input.id}-wrong`;

/** Takes the complaint away from a field, or from all within a part of the page. */
export function clearRefusals(root) {
  for (const note of root.querySelectorAll(".wrong")) note.remove();
  for (const input of root.querySelectorAll("[aria-invalid]")) {
    input.removeAttribute("aria-invalid");
    input.removeAttribute("aria-describedby");
  }
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

/** Says a refusal at its field. A field may have several. */
export function refuseAt(input, refusal, place, take) {
  const box = input.closest(".field");
  const note = box.querySelector(".wrong") ?? element("div", { class: "wrong", id: noteId(input) });
  note.append(element("p", {}, refusal.text), ...alternatives(refusal, place, take));
  box.append(note);
  input.setAttribute("aria-invalid", "true");
  input.setAttribute("aria-describedby", noteId(input));
}
