// The camera does not escape texts in its replies. A label with a quote or a backslash makes a reply
// invalid JSON, and the operator's page must still work.

/// A quote that belongs to a text, as it has no structure on either side.
const QUOTE_WITHIN_TEXT = /(?<![{[,:])"(?![:,}\]])/g;

/// The data of a reply that is invalid JSON because of its texts.
/// @return undefined if it still cannot be parsed
export function repairReply(text) {
  const escaped = text
    .replaceAll("\\", "\\\\")
    .replaceAll(/[\u0000-\u001f]/g, " ")
    .replaceAll(QUOTE_WITHIN_TEXT, '\\"');
  try {
    return JSON.parse(escaped).Response.Data;
  } catch {
    return undefined;
  }
}
