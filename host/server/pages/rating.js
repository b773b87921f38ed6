// Rates what is entered: soon after the last key, or at once. The latest entries win, and no bill
// is to be read that belongs to others.
import * as api from "./api.js";

const kPause = 350;  // Milliseconds without a key before it is rated.
const kCurvePause = 250;  // Milliseconds that a bill stands before its curve is asked for.
const kCurveEnd = 20000;  // Pounds of the heaviest shipment on a curve, or a quarter more than this one.
const kMostWeight = 999999;  // Pounds of a shipment.
const kRetryPause = 4000;  // Milliseconds before a service that was not there is asked again.
const kMostTries = 4;  // Of a service that is busy.

const pause = (milliseconds, signal) => new Promise((resolve, reject) => {
  const timer = setTimeout(resolve, milliseconds);
  signal.addEventListener("abort", () => {
    clearTimeout(timer);
    reject(signal.reason);
  }, { once: true });
});

const curveEnd = (weight) => Math.min(kMostWeight, Math.max(kCurveEnd, Math.ceil(weight * 1.25 / 1000) * 1000));

/** Asks again while the service says that it will soon have time. */
async function askPatiently(question, signal, waiting) {
  for (let tries = 1; ; ++tries) {
    try {
      return await question();
    } catch (error) {
      if (error.status !== 503 || tries === kMostTries) throw error;
      waiting(error);
      await pause((error.retryAfter ?? 1) * 1000, signal);
    }
  }
}

/** Keeps the answer on the page in step with the form. */
export class Rating {
  constructor(form, sheet, curve) {
    Object.assign(this, { form, sheet, curve, timer: 0, running: null });
  }

  /** The entries have changed: what is on the page is of earlier ones from now on. */
  changed() {
    this.stop();
    if (this.form.isEmpty()) return this.sheet.prompt([]);
    const missing = this.form.missing();
    if (missing.length > 0) return this.sheet.prompt(missing);
    this.sheet.outdate();
    this.timer = setTimeout(() => this.rate(false), kPause);
  }

  /** Rates as it is, with what is missing refused too. */
  now() {
    this.stop();
    this.sheet.outdate();
    this.rate(true);
  }

  stop() {
    clearTimeout(this.timer);
    this.running?.abort();
    this.running = null;
  }

  async rate(asked) {
    const run = this.running = new AbortController();
    const shipment = JSON.stringify(this.form.shipment());
    try {
      const answer = await askPatiently(() => api.explain(shipment, run.signal), run.signal,
        (problem) => this.sheet.wait(problem));
      if (run !== this.running) return;
      this.form.refuse([]);
      this.sheet.rated(answer, this.form.entries());
      await pause(kCurvePause, run.signal);
      await this.draw(shipment, curveEnd(answer.bill.total_weight), run);
    } catch (error) {
      if (run === this.running) await this.fail(error, asked, run);
    }
  }

  async draw(shipment, to, run) {
    try {
      const answer = await askPatiently(() => api.curve(shipment, to, run.signal), run.signal, () => {});
      if (run === this.running) this.curve.show(answer);
    } catch (error) {
      if (run === this.running) this.curve.fail(error);
    }
  }

  /** Asks again while the page is looked at, until the service is there. */
  retry() {
    this.timer = setTimeout(() => (document.hidden ? this.retry() : this.rate(false)), kRetryPause);
  }

  async fail(error, asked, run) {
    if (error.status !== 422) {
      this.form.refuse([]);
      if (error instanceof api.Unreachable) this.retry();
      return this.sheet.failed(error, () => this.now());
    }
    const refusals = await this.sheet.placed(error.refusals, this.form.entries());
    if (run !== this.running) return;
    const others = this.form.refuse(refusals);
    this.sheet.refused(refusals, others, asked);
  }
}
