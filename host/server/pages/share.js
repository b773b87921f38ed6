// A quote to pass on: as a link, as JSON, as the command line that gives the same, on paper.
import * as api from "./api.js";
import { byId, element } from "./dom.js";
import { fragmentOf, shipmentOf } from "./fields.js";

const quoted = (text) => (/^[\w@%+=:,./-]+$/.test(text) ? text : `'${text.replaceAll("'", "'\\''")}'`);

/** Puts a text on the clipboard, or before the user where the browser does not let the page. */
async function copy(text, button) {
  try {
    await navigator.clipboard.writeText(text);
    const words = button.textContent;
    button.textContent = "Copied";
    byId("said").textContent = `${words}: copied.`;
    setTimeout(() => { button.textContent = words; }, 1500);
  } catch {
    byId("copy-text").value = text;
    byId("copy-dialog").showModal();
    byId("copy-text").select();
  }
}

const jsonOf = (entries) => JSON.stringify(shipmentOf(entries), null, 2);

const linkOf = (entries) => `${location.origin}${location.pathname}#${fragmentOf(entries)}`;

/** What rates the same shipment on the same data in a shell. */
async function commandOf(entries) {
  const set = await api.tariffSet();
  const words = ["cwt", "rate", "-", "--data", quoted(set.directory), "--set", quoted(set.set)];
  for (const { role, library } of set.partners ?? []) {
    words.push(role === "engine" ? "--engine" : "--service-guide", quoted(library));
  }
  return `${words.join(" ")} <<'EOF'\n${jsonOf(entries)}\nEOF\n`;
}

/** The buttons that go with a bill. */
export function shareButtons(entries) {
  const button = (words, text) => element("button", {
    type: "button", click: async (event) => {
      const { currentTarget } = event;
      try {
        await copy(await text(entries), currentTarget);
      } catch (error) {
        byId("said").textContent = error.message;
        currentTarget.textContent = "Not copied: no answer";
      }
    },
  }, words);
  return element("div", { class: "share", role: "group", "aria-label": "Pass on" },
    button("Copy link", linkOf), button("Copy JSON", jsonOf), button("Copy command", commandOf),
    element("button", { type: "button", click: () => window.print() }, "Print"));
}
