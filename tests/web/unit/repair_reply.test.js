import assert from "node:assert/strict";
import { test } from "node:test";
import { repairReply } from "../../../web/repair_reply.js";

const reply = (label) =>
  `{"Response":{"Requested":"GetCamStatus","Result":"Success","Data":{"TC":"01:00:00.00","Sw1":"${label}","Sw2":"Zebra","Gain":0}}}`;

for (const label of ['Fo"cus', '"Focus" assist', 'the "A" cam', "C:\\temp", "end\\", "\\u0041", "tab\there"]) {
  test(`a label like ${JSON.stringify(label)} costs no other value`, () => {
    const { TC, Sw1, Sw2, Gain } = repairReply(reply(label));
    assert.equal(Sw1, label.replace("\t", " "));
    assert.deepEqual({ TC, Sw2, Gain }, { TC: "01:00:00.00", Sw2: "Zebra", Gain: 0 });
  });
}

test("what cannot be read is undefined", () => {
  assert.equal(repairReply("<html>"), undefined);
  assert.equal(repairReply('{"Response":'), undefined);
});
