// The rows of a file and of its result: what each says of itself, and what all of them come to.
import { CsvRows, JsonRows } from "./csv_rows.js";

export const kOutcomes = ["rated", "refused", "failed"];

/** "lines[0].class "71": Invalid Class. (code 105); possible: …" without its place and what follows. */
function firstReason(place, words) {
  const rest = place && words.startsWith(place) ? words.slice(place.length).replace(/^(?: "[^]*?")?: /, "") : words;
  return rest.split("; ")[0];
}

/** Reads the result's rows by the names that its header gives. */
function csvReader() {
  let columns = null;
  return (fields) => {
    if (!columns) {
      columns = new Map(fields.map((name, i) => [name, i]));
      return null;
    }
    const cell = (name) => fields[columns.get(name)] ?? "";
    return { status: cell("status"), noted: cell("notes") !== "", reason: firstReason(cell("place"), cell("reason")) };
  };
}

function jsonReader() {
  return (line) => {
    const { status, bill, refusals, reason } = JSON.parse(line);
    const first = refusals?.[0];
    const words = first ? `${first.text}${first.code > 0 ? ` (code ${first.code})` : ""}` : reason;
    return { status, noted: bill?.notes.length > 0, reason: words };
  };
}

/** The forms of files: their type, their rows, and how a row of a result is read. */
export const kForms = {
  csv: { type: "text/csv", header: 1, rows: (heard, wanted) => new CsvRows(heard, wanted), reader: csvReader },
  ndjson: { type: "application/x-ndjson", header: 0, rows: (heard) => new JsonRows(heard), reader: jsonReader },
};

/** What all rows come to. */
export class Tally {
  constructor() { Object.assign(this, { rows: 0, rated: 0, refused: 0, failed: 0, noted: 0, reasons: new Map() }); }

  add({ status, noted, reason }) {
    if (!kOutcomes.includes(status)) throw new Error("The answer is not one of rows");
    ++this.rows;
    ++this[status];
    if (noted) ++this.noted;
    if (status === "rated") return;
    const key = `${status}: ${reason}`;
    const { count, first } = this.reasons.get(key) ?? { count: 0, first: this.rows };
    this.reasons.set(key, { count: count + 1, first });
  }

  /** Why rows have no bill, with their counts and the first of them: what is most frequent first. */
  reasonsByCount() { return [...this.reasons].sort(([, one], [, other]) => other.count - one.count); }
}
