// What the service is asked, and how it says no.
import { askForToken } from "./token.js";

const kTokenKey = "hundredweight-token";

/** The service's own no: an RFC 9457 document. */
export class Problem extends Error {
  constructor(document, status, retryAfter) {
    super(document.detail || document.title || `The service answered ${status}`);
    this.kind = String(document.type || "").replace("urn:hundredweight:problem:", "");
    this.title = document.title || `The service answered ${status}`;
    this.status = status;
    this.refusals = document.refusals || [];
    this.retryAfter = retryAfter;
  }
}

/** No answer at all, or one that is not the service's. */
export class Unreachable extends Error {}

async function problemOf(response) {
  const retryAfter = Number(response.headers.get("Retry-After")) || null;
  try {
    return new Problem(await response.json(), response.status, retryAfter);
  } catch {
    return new Problem({}, response.status, retryAfter);
  }
}

/** Sends a request, with the token where there is one; throws what is no 2xx. */
export async function ask(path, { method = "GET", body, headers = {}, signal } = {}) {
  for (;;) {
    const token = sessionStorage.getItem(kTokenKey);
    const sent = token ? { ...headers, Authorization: `Bearer ${token}` } : headers;
    let response;
    try {
      response = await fetch(path, { method, body, signal, headers: sent, cache: "no-store" });
    } catch (error) {
      if (error.name === "AbortError") throw error;
      throw new Unreachable("The service cannot be reached.");
    }
    if (response.ok) return response;
    const problem = await problemOf(response);
    if (response.status !== 401) throw problem;
    if (token !== sessionStorage.getItem(kTokenKey)) continue;
    const given = await askForToken(token !== null);
    if (!given) throw problem;
    sessionStorage.setItem(kTokenKey, given);
  }
}

async function document(path, options) {
  const response = await ask(path, options);
  try {
    return await response.json();
  } catch (error) {
    if (error.name === "AbortError") throw error;
    throw new Unreachable("The answer of the service broke off.");
  }
}

const post = (path, body, signal) =>
  document(path, { method: "POST", body, signal, headers: { "Content-Type": "application/json" } });

export const explain = (shipment, signal) => post("/v1/rate?explain=1", shipment, signal);
export const curve = (shipment, to, signal) => post(`/v1/curve?from=1&to=${to}`, shipment, signal);
export const stateOf = (code) => document(`/v1/states/${encodeURIComponent(code)}`);
export const citiesOf = (code) => document(`/v1/cities/${encodeURIComponent(code)}`);
export const classesOf = (tariff) =>
  document(`/v1/classes${tariff ? `?tariff=${encodeURIComponent(tariff)}` : ""}`);
export const profileNames = () => document("/v1/profiles");
export const profile = (name) => document(`/v1/profiles/${encodeURIComponent(name)}`);

let set = null;
/** What is in the tariff set; asked once, and anew when told to. */
export function tariffSet(anew = false) {
  if (!set || anew) {
    set = document("/v1/set");
    set.catch(() => { set = null; });
  }
  return set;
}
