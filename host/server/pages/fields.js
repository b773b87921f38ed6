// Every entry of a shipment: its place in the JSON form, its column in the table form (which is its
// name in a link too), and its kind. Lines are class_1, weight_1 and so on.

export const kMostLines = 8;

const kTerms = [
  ["id", "id", "text"],
  ["description", "description", "text"],
  ["origin.zip", "origin_zip", "text"],
  ["origin.city", "origin_city", "text"],
  ["origin.state", "origin_state", "text"],
  ["origin.territory", "origin_territory", "text"],
  ["origin.intrastate", "origin_intrastate", "denial"],
  ["destination.zip", "destination_zip", "text"],
  ["destination.city", "destination_city", "text"],
  ["destination.state", "destination_state", "text"],
  ["destination.territory", "destination_territory", "text"],
  ["tariff", "tariff", "text"],
  ["profile", "profile", "text"],
  ["factor", "factor", "number"],
  ["discount.percent", "discount_percent", "number"],
  ["discount.flat_percent", "discount_flat_percent", "number"],
  ["discount.floor", "discount_floor", "number"],
  ["surcharge.low_percent", "surcharge_low_percent", "number"],
  ["surcharge.high_percent", "surcharge_high_percent", "number"],
  ["surcharge.break_index", "surcharge_break_index", "number"],
  ["service_guide", "service_guide", "flag"],
];

const kLines = Array.from({ length: kMostLines }, (_, i) => [
  [`lines[${i}].class`, `class_${i + 1}`, "text"],
  [`lines[${i}].weight`, `weight_${i + 1}`, "number"],
]).flat();

export const kFields = [...kTerms.slice(0, 11), ...kLines, ...kTerms.slice(11)]
  .map(([place, column, kind]) => ({ place, column, kind }));

/** Fields whose alternatives are values that may be put in, and not words about values. */
export const offersValues = (place) => /(class|profile|city|territory)$/.test(place);

const kSigns = [
  [",", (whole) => (whole ? "Leave the comma out" : "Write decimals behind a point, and no comma")],
  ["%", () => "Leave the percent sign out"], ["$", () => "Leave the dollar sign out"],
];

/** What of a number that was typed cannot stand in it, in words; an empty text for nothing. */
export function hintOf(place, text) {
  const whole = place.endsWith(".weight");
  if (!whole && kFields.find((field) => field.place === place)?.kind !== "number") return "";
  return kSigns.filter(([sign]) => text.includes(sign)).map(([, words]) => `${words(whole)}.`).join(" ");
}

const kNumber = /^-?(0|[1-9]\d*)(\.\d+)?$/;
const kExactDigits = 15;  // Of a decimal that a binary number gives back as it was.

/** A number where the text is one, to the digit; otherwise the text, for the service to refuse. */
function numberOf(text) {
  const whole = text.startsWith(".") ? `0${text}` : text;
  return kNumber.test(whole) && whole.replace(/\D/g, "").length <= kExactDigits ? Number(whole) : text;
}

function valueOf(kind, text) {
  if (kind === "number") return numberOf(text);
  if (kind === "text" || !["true", "false"].includes(text)) return text;
  return text === "true";
}

function put(shipment, place, value) {
  const steps = place.split(/\.|\[|\]\.?/).filter((step) => step !== "");
  const last = steps.pop();
  let part = shipment;
  steps.forEach((step, i) => {
    const next = /^\d+$/.test(steps[i + 1] ?? last) ? [] : {};
    part = part[step] ??= next;
  });
  part[last] = value;
}

/** The shipment of these entries, texts by their places; what is empty is left out. */
export function shipmentOf(entries) {
  const shipment = { origin: {}, destination: {}, lines: [] };
  for (const { place, kind } of kFields) {
    if (entries[place]) put(shipment, place, valueOf(kind, entries[place]));
  }
  if (shipment.lines.length === 0) shipment.lines.push({});
  const ordered = {};
  for (const { place } of kFields) {
    const key = place.split(/[.[]/)[0];
    if (key in shipment) ordered[key] = shipment[key];
  }
  return ordered;
}

/** Entries as the fragment of a link, in the order of the form. */
export function fragmentOf(entries) {
  const said = new URLSearchParams();
  for (const { place, column } of kFields) if (entries[place]) said.append(column, entries[place]);
  return said.toString();
}

/** What a fragment says: the entries, and the names that no entry has. */
export function entriesOf(fragment) {
  const entries = {};
  const unknown = [];
  for (const [column, text] of new URLSearchParams(fragment)) {
    const field = kFields.find((candidate) => candidate.column === column);
    if (!field || field.place in entries) unknown.push(column);
    else entries[field.place] = text;
  }
  return { entries, unknown };
}
