// Applies host/checks/rules.js to the cases of test/data/checks.json, as
// test/host/checks/RulesTest.cpp does in C++.
"use strict";

const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");

const root = path.join(__dirname, "../..");
const makeChecks = require(path.join(root, "host/checks/rules.js"));
const read = file =>
    JSON.parse(fs.readFileSync(path.join(root, file), "utf8"));

const table = read("host/checks/rules.json");
const cases = read("test/data/checks.json");
const check =
    makeChecks(table, {sourceCode: "en", hasKey: key => key === "hours"});
let count = 0;

const expect = (code, key, source, translation, finds) => {
    const found = check({code, key, source, translation});
    assert.deepStrictEqual(
        found.map(({name, detail}, i) => finds[i] && !finds[i].includes(":")
            ? name : `${name}: ${detail}`),
        finds, `${code}: ${translation}`);
    ++count;
};

for(const [code, good] of Object.entries(cases.translations)) {
    expect(code, "key", cases.source, good, []);
    for(const fault of cases.faults) {
        const bad = fault.isSource ? cases.source : (fault.before || "") +
            good.replace(fault.replace || "", () => fault.by || "") +
            (fault.after || "");
        expect(code, "key", cases.source, bad, fault.finds);
    }
}
for(const [code, source, translation, ...finds] of cases.pairs)
    expect(code, "key", source, translation, finds);
for(const [key, source, translation, ...finds] of cases.plurals)
    expect("ru", key, source, translation, finds);
assert.strictEqual(makeChecks(table, {maxGrowth: 10})(
    {code: "de", key: "", source: "0123456789", translation: "0123456789 a"}
).at(-1).name, "growth");
console.log(`Rules in JavaScript: ${count} cases as in C++`);
