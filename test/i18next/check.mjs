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

async function translator(language) {
    const file = path.join(folder, `${language}.json`);
    const instance = i18next.createInstance();
    await instance.init({
        lng: language,
        fallbackLng: false,
        resources: {[language]: JSON.parse(fs.readFileSync(file, 'utf8'))},
        interpolation: {escapeValue: false},
        ...recommended,
    });
    // Texts are compared as they are written, with placeholders
    return (key) => instance.t(key, {skipInterpolation: true});
}

let compared = 0;
let wrong = 0;
for(const [language, terms] of Object.entries(tables)) {
    const t = await translator(language);
    for(const [key, text] of Object.entries(terms)) {
        const got = t(key);
        ++compared;
        if(got === text)
            continue;
        ++wrong;
        console.error(`${language}: t(${JSON.stringify(key)}) is ` +
            `${JSON.stringify(got)}, not ${JSON.stringify(text)}`);
    }
}
console.log(`i18next agrees on ${compared - wrong} of ${compared} texts in ` +
    `${Object.keys(tables).length} languages`);

process.exit(compared && !wrong ? 0 : 1);
