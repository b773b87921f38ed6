// A profile: its settings, and the discounts that it gives.
import { element, scrolling, table } from "./dom.js";

const kSwitches = [
  ["class_map", "rates classes as others"], ["surcharge", "asks a surcharge"],
  ["entered_discount", "has discounts entered"], ["discount_file", "uses groups of the discount file"],
  ["zip_discounts", "gives discounts by ranges of postal codes"],
];

/** A figure of the profile, or a dash for none; the text is the service's. */
const shown = (value) => (value === "" ? "–" : String(value));

/** Nine percentages that are alike are said once. */
function percents(list) {
  return list.every((percent) => percent === list[0]) ? [`${shown(list[0])} at every break`] : [list.map(shown).join("  ")];
}

const range = (from, to) => [from, to].filter((end) => end !== "").join("–") || "all";

function zipRanges(ranges) {
  const rows = ranges.map((one, i) => [String(i + 1), range(one.origin_first, one.origin_last), range(one.destination_first, one.destination_last),
    percents(one.percent), shown(one.flat_percent), shown(one.floor_dollars)]);
  return scrolling("Discounts by range", table("Discounts by ranges of postal codes or states, percent; floors in dollars",
    ["Record", "From", "To", "By weight break", "Flat", "Floor"], rows, { class: "figures" }));
}

function groups(profile) {
  const rows = ["1", "2"].map((group) => [group, percents(profile[`group_${group}_percent`]),
    shown(profile[`group_${group}_flat_percent`]), shown(profile[`group_${group}_floor_dollars`])]);
  return scrolling("Discounts", table("Discounts of the profile, percent; floors in dollars",
    ["Group", "By weight break", "Flat", "Floor"], rows, { class: "figures" }));
}

/** What stands within a profile when it is opened. */
export function profileDetails(profile) {
  const said = kSwitches.map(([key, words]) =>
    element("li", { class: profile[key] ? "on" : "off" }, `${profile[key] ? "" : "not: "}${words}`));
  return [
    element("ul", { class: "switches" }, said),
    profile.surcharge ? element("p", {}, `Surcharge ${profile.surcharge_percent_low} percent below the break, ${profile.surcharge_percent_high} from it on.`) : null,
    profile.class_map ? element("p", {}, element("b", {}, "Rates the set's classes, in their order, as: "), profile.class.join("  ")) : null,
    groups(profile), profile.zip_discount_records?.length ? zipRanges(profile.zip_discount_records) : null,
  ].filter(Boolean);
}
