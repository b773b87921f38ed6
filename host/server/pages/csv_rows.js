// The rows of a CSV or NDJSON text that comes in parts.

const kStart = 0, kPlain = 1, kQuoted = 2, kQuote = 3;  // Where in a field of CSV the next sign is.

/** Splits CSV into rows, header and empty lines included; tells each row's first `wanted` fields. */
export class CsvRows {
  constructor(heard, wanted = 0) {
    Object.assign(this, { heard, wanted, fields: [], field: "", at: kStart, any: false });
  }

  push(text) {
    for (let i = 0; i < text.length; ++i) this.take(text[i]);
  }

  take(sign) {
    if (sign === "\n" && this.at !== kQuoted) return this.endRow();
    this.any = true;
    if (this.at === kQuoted && sign === '"') this.at = kQuote;
    else if (this.at === kQuote && sign === '"') this.keep(sign, kQuoted);
    else if (this.at === kQuoted) this.keep(sign, kQuoted);
    else if (sign === ",") this.endField();
    else if (sign === '"' && this.at === kStart) this.at = kQuoted;
    else if (sign !== "\r") this.keep(sign, kPlain);
  }

  keep(sign, at) {
    this.at = at;
    if (this.fields.length < this.wanted) this.field += sign;
  }

  endField() {
    if (this.fields.length < this.wanted) this.fields.push(this.field);
    this.field = "";
    this.at = kStart;
  }

  endRow() {
    this.endField();
    this.heard(this.fields);
    this.fields = [];
    this.any = false;
  }

  /** The last row may have no line end. */
  finish() {
    if (this.any) this.endRow();
  }
}

/** Splits NDJSON into lines. */
export class JsonRows {
  constructor(heard) { Object.assign(this, { heard, rest: "" }); }

  push(text) {
    const lines = (this.rest + text).split("\n");
    this.rest = lines.pop();
    lines.forEach((line) => this.heard(line));
  }

  finish() {
    if (this.rest !== "") this.heard(this.rest);
  }
}
