// Loads exported language files with i18next and compares what it says for
// every term with the tables that they were exported from.
//
//     node check.mjs TABLES FOLDER
//
// TABLES is the output of languageTables, FOLDER is where it exported to.

import fs from 'node:fs';
import path from 'node:path';
import i18next from 'i18next';

// What docs/language-files.md recommends, but with nulls told as they are
const recommended = {
    keySeparator: false,
    nsSeparator: false,
    returnNull: true,
    returnEmptyString: true,
};

const [tablesFile, folder] = process.argv.slice(2);
const tables = JSON.parse(fs.readFileSync(tablesFile, 'utf8'));

async function translator(language, options) {
    const file = path.join(folder, `${language}.json`);
    const instance = i18next.createInstance();
    await instance.init({
        lng: language,
        fallbackLng: false,
        resources: {[language]: JSON.parse(fs.readFileSync(file, 'utf8'))},
        interpolation: {escapeValue: false},
        ...options,
    });
    // Texts are compared as they are written, with placeholders
    return (key) => instance.t(key, {skipInterpolation: true});
}

async function mismatches(options) {
    const found = [];
    for(const [language, terms] of Object.entries(tables)) {
        const t = await translator(language, options);
        for(const [key, text] of Object.entries(terms)) {
            const got = t(key);
            if(got !== text)
                found.push({language, key, text, got});
        }
    }
    return found;
}

const compared = Object.values(tables).map((t) => Object.keys(t).length)
    .reduce((a, b) => a + b, 0);
const wrong = await mismatches(recommended);
for(const {language, key, text, got} of wrong)
    console.error(`${language}: t(${JSON.stringify(key)}) is ` +
        `${JSON.stringify(got)}, not ${JSON.stringify(text)}`);
console.log(`i18next agrees on ${compared - wrong.length} of ${compared} ` +
    `texts in ${Object.keys(tables).length} languages`);

// What users get without the options, one by one
for(const option of Object.keys(recommended)) {
    const {[option]: _, ...others} = recommended;
    const lost = (await mismatches(others))
        .filter((m) => !wrong.some((w) => w.key === m.key));
    console.log(`  without ${option}: ${lost.length} differ` +
        lost.slice(0, 2).map((m) => `, t(${JSON.stringify(m.key)}) is ` +
            `${JSON.stringify(m.got)}`).join(''));
}
process.exit(compared && !wrong.length ? 0 : 1);
