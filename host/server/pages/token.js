// The service's token, asked for once however many requests want it.
import { byId } from "./dom.js";

let asking = null;

/** The token that the user gives, or an empty text. */
export function askForToken(refused) {
  asking ??= new Promise((resolve) => {
    const dialog = byId("token-dialog");
    byId("token-reason").textContent = refused
      ? "The service does not know the token that was given. It may have been changed."
      : "Who runs the service can give you one. It is kept until this tab is closed.";
    byId("token").value = "";
    dialog.returnValue = "";
    dialog.addEventListener("close", () => {
      asking = null;
      resolve(dialog.returnValue === "give" ? byId("token").value.trim() : "");
    }, { once: true });
    dialog.showModal();
  });
  return asking;
}
