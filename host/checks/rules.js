// The rules for single texts in rules.json, for browsers and Node. Rules.cpp
// does the same in C++, and both have to find the same in
// test/data/checks.json.
//
//     const check = makeChecks(table, {maxGrowth: 50, hasKey: key => ...});
//     check({code: "de", key: "title", source: "Now!", translation: "Jetzt"})
//
// returns a list of findings, each with name and severity of the rule, and what
// is wrong. Both options may be left out.
"use strict";

const makeChecks = (() => {
    const MaxNamed = 3;

    const regex = pattern => new RegExp(pattern, "gu");
    const without = (text, pattern) =>
        pattern ? text.replace(pattern, "") : text;
    const lengthOf = text => (text.match(/\P{M}/gu) || []).length;

    // The values of a language or of those that it's a variant of
    const ofLanguage = (values = {}, code) => {
        for(const parts = code.split("-"); parts.length; parts.pop())
            if(parts.join("-") in values)
                return values[parts.join("-")];
    };

    // Those of a that b doesn't have
    const lacking = (a, b) => {
        const counts = new Map();
        for(const value of b)
            counts.set(value, (counts.get(value) || 0) + 1);
        return a.filter(value => {
            const count = counts.get(value) || 0;
            counts.set(value, count - 1);
            return count <= 0;
        });
    };

    const named = (what, values) => values.length === 0 ? [] : [what + " " +
        values.slice(0, MaxNamed).join(" ") +
        (values.length > MaxNamed ? " …" : "")];

    // Each kind makes a function of a rule, which says what is wrong with a
    // text, or nothing
    const kinds = {
        sameMatches(rule) {
            const pattern = regex(rule.pattern);
            const ignore = rule.ignore && regex(rule.ignore);
            const outside = rule.outside && regex(rule.outside);
            const outsideSource =
                rule.outsideSource && regex(rule.outsideSource);
            const mayLose = rule.mayLose && new RegExp(rule.mayLose, "u");
            const exceptKeys =
                rule.exceptKeys && new RegExp(rule.exceptKeys, "u");
            const optional = rule.optional && {
                key: new RegExp(rule.optional.key, "u"),
                match: new RegExp(rule.optional.match, "u"),
            };
            const zeros = [...rule.zeros || ""].map(c => c.codePointAt(0));
            const plainDigit = character => {
                const code = character.codePointAt(0);
                const zero = zeros.find(z => code >= z && code <= z + 9);
                return zero === undefined ? character : String(code - zero);
            };
            const matches = text => {
                let out = without(text, outside).match(pattern) || [];
                out = out.map(match => without(match, ignore));
                if(zeros.length)
                    out = out.map(match =>
                        [...match].map(plainDigit).join(""));
                return rule.once ? [...new Set(out)] : out;
            };
            return ({key, source, translation}) => {
                if(exceptKeys && exceptKeys.test(key))
                    return "";
                const before = matches(without(source, outsideSource));
                const now = matches(translation);
                if(rule.counted)
                    return before.length === now.length ? ""
                        : `${now.length} instead of ${before.length}`;
                const isFree = optional && optional.key.test(key)
                    ? match => optional.match.test(match) : () => false;
                const lost = lacking(before, now).filter(m => !isFree(m));
                const added = lacking(now, before).filter(m => !isFree(m));
                // Words may stand for numbers
                if(mayLose && (!lost.length || (!added.length &&
                    lost.every(match => mayLose.test(match)))))
                    return "";
                return [
                    ...named("lacks", lost),
                    ...named("adds", added),
                ].join(", ");
            };
        },

        sameStart: rule => sameEdge(rule, false),
        sameEnd: rule => sameEdge(rule, true),

        balanced(rule) {
            const isBalanced = text => {
                let depth = 0;
                for(const character of text) {
                    depth += character === rule.open;
                    depth -= character === rule.close;
                    if(depth < 0)
                        return false;
                }
                return depth === 0;
            };
            return ({source, translation}) =>
                isBalanced(translation) || !isBalanced(source) ? ""
                    : `${rule.open} and ${rule.close} don't match`;
        },

        never(rule) {
            const pattern = regex(rule.pattern);
            return ({source, translation}) => {
                const found = (translation.match(pattern) || []).filter(
                    match => !source.includes(match));
                return named("has", [...new Set(found)].map(match => "U+" +
                    match.codePointAt(0).toString(16).toUpperCase()
                        .padStart(4, "0"))).join();
            };
        },

        references(rule, {hasKey}) {
            const pattern = regex(rule.pattern);
            return ({translation}) => !hasKey ? "" : named("no key",
                [...translation.matchAll(pattern)].map(match => match[1])
                    .filter(key => !hasKey(key))).join();
        },

        normalized: () => ({translation}) =>
            translation === translation.normalize("NFC") ? ""
                : "not normalized",

        differs(rule, {sourceCode = ""}) {
            const pattern = regex(rule.pattern);
            const outside = rule.outside && regex(rule.outside);
            const primary = code => code.split("-")[0];
            return ({code, source, translation}) => {
                if(source !== translation ||
                    primary(code) === primary(sourceCode))
                    return "";
                const words = without(source, outside).match(pattern) || [];
                return words.length < rule.minimum ? "" : "not translated";
            };
        },

        growth(rule, {maxGrowth}) {
            return ({source, translation}) => {
                const before = lengthOf(source);
                const now = lengthOf(translation);
                const percent = maxGrowth !== undefined ? maxGrowth
                    : rule.limits.find(limit =>
                        !("upTo" in limit) || before <= limit.upTo).percent;
                return before === 0 || now * 100 <= before * (100 + percent)
                    ? "" : `${now} characters instead of ${before}`;
            };
        },
    };

    // Compares the mark at one edge of the texts
    const sameEdge = (rule, isEnd) => {
        const passed = new Set(rule.passOver || "");
        const outside = rule.outside && regex(rule.outside);
        // Those of the language come first, as they may mean another thing
        const marksOf = code => {
            const own = ofLanguage(rule.languages, code) || {};
            return Object.entries({...rule.marks, ...own});
        };
        const known = new Map();
        const find = (code, text) => {
            const characters = [...without(text, outside)];
            if(!isEnd)
                characters.reverse();
            while(characters.length && passed.has(characters.at(-1)))
                characters.pop();
            if(!isEnd)
                characters.reverse();
            const rest = characters.join("");
            if(!known.has(code))
                known.set(code, marksOf(code));
            for(const [name, marks] of known.get(code))
                for(const mark of marks)
                    if(isEnd ? rest.endsWith(mark) : rest.startsWith(mark))
                        return {name, mark};
            return {name: "", mark: ""};
        };
        return ({code, source, translation}) => {
            const before = find("", source);
            const now = find(code, translation);
            const free = ofLanguage(rule.optional, code);
            if(before.name === now.name ||
                (free && (before.name || free) === free &&
                    (now.name || free) === free))
                return "";
            return before.name && now.name
                ? `"${now.mark}" instead of "${before.mark}"`
                : before.name ? `lacks "${before.mark}"`
                    : `adds "${now.mark}"`;
        };
    };

    return (table, options = {}) => {
        const rules = table.rules.filter(rule => rule.kind in kinds).map(
            rule => ({...rule, find: kinds[rule.kind](rule, options)}));
        return text => rules.map(({name, severity, find}) =>
            ({name, severity, detail: find(text)})).filter(
            finding => finding.detail);
    };
})();

if(typeof module !== "undefined")
    module.exports = makeChecks;
