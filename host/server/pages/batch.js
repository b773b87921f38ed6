// Many shipments: a file is rated row by row, and the result comes down as a file.
import { ask } from "./api.js";
import { remarksOf, resultOf, wordsOf } from "./batch_result.js";
import { kForms, Tally } from "./batch_rows.js";
import { byId, element, grouped } from "./dom.js";

const kMebibyte = 1024 * 1024;

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

/** Why there is no answer, as one says it of a file. */
function wordsOfNo(error) {
  const most = error.kind === "too-large" ? Number(/(\d+) bytes/.exec(error.message)?.[1]) / kMebibyte : 0;
  return most > 0 ? `The file is larger than ${grouped(Math.floor(most))} MiB, the most that this service takes.` : error.message;
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
    const tally = new Tally();
    const show = this.progress(file, run);
    try {
      const total = await countRows(file, kForms[form], run.signal);
      show(tally, total);
      const result = await this.send(file, form, run, tally, () => show(tally, total));
      if (run === this.running) this.finish(file, result, tally, total);
    } catch (error) {
      if (run !== this.running) return;
      if (error.name === "AbortError") this.stop(file, `Cancelled after ${grouped(tally.rows)} rows. There is no result.`, "plain");
      else this.stop(file, tally.rows === 0 ? wordsOfNo(error) : `The answer broke off after ${grouped(tally.rows)} rows. There is no result.`);
    }
  }

  /** Sends the file, and gives the result: its form, its parts, and what is said of it. Counts rows as they come. */
  async send(file, form, run, tally, heard) {
    const to = byId("result-form").value || form;
    const response = await ask("/v1/batch", {
      method: "POST", body: file, signal: run.signal,
      headers: { "Content-Type": kForms[form].type, Accept: kForms[to].type },
    });
    const parts = [];
    const read = kForms[to].reader();
    const rows = kForms[to].rows((row) => {
      const said = read(row);
      if (said) tally.add(said);
    }, Infinity);
    const kept = new TransformStream({ transform: (bytes, out) => { parts.push(bytes); out.enqueue(bytes); } });
    await readText(response.body.pipeThrough(kept), (text) => {
      rows.push(text);
      heard();
    }, run.signal);
    rows.finish();
    return { to, parts, remarks: remarksOf(response.headers) };
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

  finish(file, { to, parts, remarks }, tally, total) {
    this.running = null;
    const name = `${file.name.replace(/\.\w+$/, "")}.rated.${to}`;
    this.panel(element("h2", {}, file.name), resultOf(tally, total, remarks));
    const link = this.link = URL.createObjectURL(new Blob(parts, { type: kForms[to].type }));
    const save = element("a", { class: "button main", href: link, download: name }, `Save ${name}`);
    byId("batch-run").firstChild.append(save);
    this.say(wordsOf(tally, remarks));
    save.focus();
  }

  /** There is no result: `tone` is "bad", or "plain" where the user wanted it so. */
  stop(file, words, tone = "bad") {
    this.running = null;
    this.panel(element("h2", {}, file.name), element("p", { class: `banner ${tone}` }, words));
    this.say(words);
  }
}
