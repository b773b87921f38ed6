// Many shipments: a file is rated row by row, and the result comes down as a file.
import { ask } from "./api.js";
import { CsvRows, JsonRows } from "./csv_rows.js";
import { byId, element, grouped } from "./dom.js";

const kForms = {
  csv: { type: "text/csv", rows: (heard) => new CsvRows(heard, 3), header: 1, status: (fields) => fields[2] },
  ndjson: {
    type: "application/x-ndjson", rows: (heard) => new JsonRows(heard), header: 0,
    status: (line) => JSON.parse(line).status,
  },
};
const kOutcomes = ["rated", "refused", "failed"];

const formOf = (name) => (/\.(ndjson|jsonl)$/i.test(name) ? "ndjson" : /\.csv$/i.test(name) ? "csv" : null);

/** Reads a stream of text to its end, part by part. */
async function readText(stream, heard, signal) {
  const reader = stream.pipeThrough(new TextDecoderStream()).getReader();
  for (;;) {
    signal.throwIfAborted();
    const { value, done } = await reader.read();
    if (done) return;
    heard(value);
  }
}

/** How many rows a file has. */
async function countRows(file, form, signal) {
  let count = -form.header;
  const rows = form.rows(() => { ++count; });
  await readText(file.stream(), (text) => rows.push(text), signal);
  rows.finish();
  return Math.max(0, count);
}

/** The view that rates files. */
export class BatchView {
  constructor(box) {
    this.box = box;
    this.running = null;
    const input = element("input", {
      type: "file", id: "file", accept: ".csv,.ndjson,.jsonl,text/csv", class: "file",
      change: () => {
        if (input.files[0]) this.rate(input.files[0]);
        input.value = "";
      },
    });
    const zone = element("div", { class: "drop" },
      element("p", { class: "big" }, "Drop a CSV file of shipments here"),
      element("p", {}, element("label", { for: "file" }, "or choose one: "), input),
      element("p", { class: "field inline" }, element("label", { for: "result-form" }, "The result comes down as "),
        element("select", { id: "result-form" }, element("option", { value: "" }, "the same form"),
          element("option", { value: "csv" }, "CSV"), element("option", { value: "ndjson" }, "NDJSON, with whole bills"))));
    zone.addEventListener("dragenter", () => zone.classList.add("over"));
    for (const name of ["dragleave", "drop"]) zone.addEventListener(name, () => zone.classList.remove("over"));
    box.append(element("h1", {}, "Many shipments"), zone,
      element("p", { class: "hint" }, "One shipment a row. The first row names the columns: origin_zip, destination_zip, class_1 and weight_1 must be there; ",
        "class_2, weight_2, tariff, profile, discount_percent and the others may be. Columns of your own come back unchanged."),
      element("section", { id: "batch-run", "aria-label": "The file", tabindex: "-1" }),
      element("p", { id: "batch-said", class: "unseen", role: "status" }));
  }

  say(words) { byId("batch-said").textContent = words; }

  panel(...content) {
    if (this.link) URL.revokeObjectURL(this.link);
    this.link = null;
    byId("batch-run").replaceChildren(element("div", { class: "panel" }, content));
  }

  async rate(file) {
    this.running?.abort();
    const run = this.running = new AbortController();
    const form = formOf(file.name);
    if (!form) return this.stop(file, "This is neither a CSV file (.csv) nor one of JSON lines (.ndjson).");
    const tally = { rows: 0, rated: 0, refused: 0, failed: 0 };
    const show = this.progress(file, run);
    try {
      const total = await countRows(file, kForms[form], run.signal);
      show(tally, total);
      const parts = await this.send(file, form, run, tally, () => show(tally, total));
      if (run === this.running) this.finish(file, parts, tally, total);
    } catch (error) {
      if (run !== this.running) return;
      if (error.name === "AbortError") this.stop(file, `Cancelled after ${grouped(tally.rows)} rows. There is no result.`);
      else this.stop(file, tally.rows === 0 ? error.message : `The answer broke off after ${grouped(tally.rows)} rows. There is no result.`);
    }
  }

  /** Sends the file, and gives the parts of the result; counts rows as they come. */
  async send(file, form, run, tally, heard) {
    const to = byId("result-form").value || form;
    const response = await ask("/v1/batch", {
      method: "POST", body: file, signal: run.signal,
      headers: { "Content-Type": kForms[form].type, Accept: kForms[to].type },
    });
    const parts = [];
    let skip = kForms[to].header;
    const rows = kForms[to].rows((row) => {
      if (skip-- > 0) return;
      ++tally.rows;
      const status = kForms[to].status(row);
      if (!kOutcomes.includes(status)) throw new Error("The answer is not one of rows");
      ++tally[status];
    });
    const kept = new TransformStream({ transform: (bytes, out) => { parts.push(bytes); out.enqueue(bytes); } });
    await readText(response.body.pipeThrough(kept), (text) => {
      rows.push(text);
      heard();
    }, run.signal);
    rows.finish();
    this.to = to;
    return parts;
  }

  progress(file, run) {
    const bar = element("progress", { "aria-label": `Rows of ${file.name} that are answered` });
    const words = element("p", { class: "rows" }, "Counting the rows…");
    this.panel(element("h2", {}, file.name), bar, words,
      element("button", { type: "button", click: () => run.abort() }, "Cancel"));
    this.say(`Rating ${file.name}.`);
    return (tally, total) => {
      bar.max = Math.max(1, total);
      bar.value = Math.min(tally.rows, total);
      words.textContent = `${grouped(tally.rows)} of ${grouped(total)} rows answered`;
    };
  }

  finish(file, parts, tally, total) {
    this.running = null;
    const name = `${file.name.replace(/\.\w+$/, "")}.rated.${this.to}`;
    const blob = new Blob(parts, { type: kForms[this.to].type });
    const counts = element("dl", { class: "tally" }, kOutcomes.map((outcome) =>
      element("div", { class: tally[outcome] > 0 ? outcome : null }, element("dt", {}, outcome), element("dd", {}, grouped(tally[outcome])))));
    const fewer = tally.rows === total ? null : element("p", { class: "banner bad" },
      `The file has ${grouped(total)} rows by its quotes and line ends, and ${grouped(tally.rows)} were answered. Look for a quote that is not closed.`);
    this.panel(element("h2", {}, file.name), counts, fewer);
    const link = this.link = URL.createObjectURL(blob);
    const save = element("a", { class: "button main", href: link, download: name }, `Save ${name}`);
    byId("batch-run").firstChild.append(save);
    this.say(`${grouped(tally.rows)} rows: ${kOutcomes.map((outcome) => `${grouped(tally[outcome])} ${outcome}`).join(", ")}.`);
    save.focus();
  }

  stop(file, words) {
    this.running = null;
    this.panel(element("h2", {}, file.name), element("p", { class: "banner bad" }, words));
    this.say(words);
  }
}
