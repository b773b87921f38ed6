// A profile: its settings, and the discounts that it gives.
import { element, scrolling, table } from "./dom.js";

const kSwitches = [
  ["class_map_on", "rates classes as others"], ["surcharge_on", "asks a surcharge"],
  ["entered_discounts", "has discounts entered"], ["discount_file_groups", "uses groups of the discount file"],
  ["zip_range_discounts", "gives discounts by ranges of postal codes"],
];

/** A figure of the profile, or a dash for none; the text is the service's. */
const shown = (value) => (value === "" ? "–" : String(value));

/** Nine percentages that are alike are said once. */
function percents(list) {
  return list.every((percent) => percent === list[0]) ? [`${shown(list[0])} at every break`] : [list.map(shown).join("  ")];
}

const range = (from, to) => [from, to].filter((end) => end !== "").join("–") || "all";

function zipRanges(ranges) {
  const rows = ranges.map((one, i) => [String(i + 1), range(one.origin_from, one.origin_to), range(one.destination_from, one.destination_to),
    percents(one.break_percent), shown(one.flat_percent), shown(one.floor)]);
  return scrolling("Discounts by range", table("Discounts by ranges of postal codes or states, percent; floors in dollars",
    ["Record", "From", "To", "By weight break", "Flat", "Floor"], rows, { class: "figures" }));
}

function entered(discounts) {
  const rows = discounts.map((one, i) => [String(i + 1), percents(one.break_percent), shown(one.flat_percent), shown(one.floor)]);
  return scrolling("Discounts", table("Discounts of the profile, percent; floors in dollars",
    ["Group", "By weight break", "Flat", "Floor"], rows, { class: "figures" }));
}

/** What stands within a profile when it is opened. */
export function profileDetails(profile) {
  const said = kSwitches.map(([key, words]) =>
    element("li", { class: profile[key] ? "on" : "off" }, `${profile[key] ? "" : "not: "}${words}`));
  return [
    element("ul", { class: "switches" }, said),
    profile.surcharge_on ? element("p", {}, `Surcharge ${profile.surcharge_low_percent} percent below the break, ${profile.surcharge_high_percent} from it on.`) : null,
    profile.class_map_on ? element("p", {}, element("b", {}, "Rates the set's classes, in their order, as: "), profile.class_map.join("  ")) : null,
    entered(profile.discounts), profile.zip_ranges?.length ? zipRanges(profile.zip_ranges) : null,
  ].filter(Boolean);
}
