/* Writes the table of languages that the editor offers, AllLanguages.cpp, from
   the Unicode CLDR, and the licence of that data beside it. To run it, with
   Node.js 18 or newer:

    npm ci && node generate.mjs

   The same CLDR version always gives the same bytes. A new version needs a
   look at the counts below, which tell how far it moved. */

import {copyFileSync, readFileSync, writeFileSync} from 'node:fs';

const LanguageCount = 411;
const FewestReaders = 5e6;

/* Spellings that projects use, though nothing in the data singles them out */
const CommonVariants = [
    'az-Cyrl', 'ca-ES-valencia', 'en-IE', 'en-IN', 'en-NZ', 'en-ZA', 'es-AR',
    'fr-BE', 'it-CH', 'pt-AO', 'zh-MO', 'zh-SG'
];

const packages = new URL('node_modules/', import.meta.url);
const output = new URL('../../platform/OrrelinEditorData/', import.meta.url);

function check(condition, message) {
    if(condition) return;
    console.error(`generate-languages: ${message}`);
    process.exit(1);
}

function load(file) {
    return JSON.parse(readFileSync(new URL(file, packages)));
}

function englishNames(kind) {
    return load(`cldr-localenames-full/main/en/${kind}.json`)
        .main.en.localeDisplayNames[kind];
}

const languages = englishNames('languages');
const scripts = englishNames('scripts');
const territories = englishNames('territories');
const variants = englishNames('variants');
const {version} = load('cldr-core/package.json');
const levels = load('cldr-core/coverageLevels.json').effectiveCoverageLevels;
const {likelySubtags} =
    load('cldr-core/supplemental/likelySubtags.json').supplemental;
const {territoryInfo} =
    load('cldr-core/supplemental/territoryInfo.json').supplemental;

/* Speakers by language and by locale. The table is for written text, so only
   those count who read the language. */
const readers = new Map;
const official = new Set;
for(const [territory, info] of Object.entries(territoryInfo)) {
    for(const [tag, use] of Object.entries(info.languagePopulation ?? {})) {
        const language = tag.split('_')[0];
        const locale = `${language}-${territory}`;
        const people = info._population*(use._populationPercent/100)*
            ((use._writingPercent ?? info._literacyPercent)/100);
        for(const key of [language, locale])
            readers.set(key, (readers.get(key) ?? 0) + people);
        if(['official', 'de_facto_official'].includes(use._officialStatus))
            official.add(locale);
    }
}

function mostReadersFirst(a, b) {
    return readers.get(b) - readers.get(a) || (a < b ? -1 : 1);
}

/* The short name of a region where there is one: "Chinese (Hong Kong)" reads
   better in a list than "Chinese (Hong Kong SAR China)" */
function subtagName(subtag) {
    return scripts[subtag] ?? territories[`${subtag}-alt-short`] ??
        territories[subtag] ?? variants[subtag.toUpperCase()];
}

function displayName(code) {
    if(languages[code]) return languages[code];
    const [language, ...subtags] = code.split('-');
    const names = [languages[language], ...subtags.map(subtagName)];
    check(names.every(Boolean), `${code} has no English name`);
    return `${names[0]} (${names.slice(1).join(', ')})`;
}

const codes = new Set;

function add(candidates) {
    for(const code of candidates) codes.add(code);
}

function addExactly(count, what, candidates) {
    const before = codes.size;
    add(candidates);
    const added = codes.size - before;
    check(added === count, `expected ${count} ${what}, got ${added}`);
}

const named = Object.keys(languages);
const covered = Object.keys(levels);
const modern = covered.filter(code => levels[code] === 'modern');

/* Serbo-Croatian, sh, is withdrawn in favour of its successors. The undefined
   language, und, has a name and a level but isn't one. */
addExactly(183, 'two-letter languages', named.filter(code =>
    /^[a-z]{2}$/.test(code) && code !== 'sh'));
addExactly(40, 'three-letter languages with coverage', covered.filter(code =>
    /^[a-z]{3}$/.test(code) && code !== 'und'));
addExactly(31, 'language-script tags with coverage', covered.filter(code =>
    /^[a-z]{2,3}-[A-Z][a-z]{3}$/.test(code)));
addExactly(20, 'tags with a name of their own', named.filter(code =>
    /^[a-z]{2,3}-([A-Z][a-z]{3}|[A-Z]{2}|[0-9]{3})$/.test(code)));

/* Real projects name their files like this even where the region says nothing
   new */
add(['zh-CN', 'zh-TW', 'zh-HK']);
add(modern.filter(code => /^[a-z]{2}$/.test(code)).map(code =>
    `${code}-${likelySubtags[code].split('-').at(-1)}`));
add(CommonVariants);
add(named.filter(code =>
    /^[a-z]{3}$/.test(code) && readers.get(code) >= FewestReaders));

/* The most read locales that are not there yet fill the rest */
const room = LanguageCount - codes.size;
check(room >= 0, `${-room} more than the ${LanguageCount} languages expected`);
addExactly(room, 'locales to fill the table', modern.filter(code =>
    /^[a-z]{2,3}-[A-Z]{2}$/.test(code) && official.has(code) &&
    !codes.has(code)).sort(mostReadersFirst).slice(0, room));

/* Names are ordered as an English reader looks them up: letter case, accents
   and apostrophes don't count. The rules are spelled out, because a collator's
   order depends on the ICU that Node.js was built with. */
function sortKey(name) {
    const key = name.normalize('NFD').replace(/[\p{M}’ʼ]/gu, '').toLowerCase();
    check(/^[a-z0-9 (),-]+$/.test(key), `can't order or print ${name}`);
    return key;
}

const rows = [...codes].map(code => {
    const name = displayName(code);
    return {name, code, key: sortKey(name)};
}).sort((a, b) => a.key < b.key ? -1 : 1);

/* Also what makes the order above complete */
for(const column of ['key', 'code']) {
    const seen = new Map;
    for(const row of rows) {
        const value = row[column].toLowerCase();
        const other = seen.get(value);
        check(!other, `the ${column} of ${row.code} is also ${other?.code}'s`);
        seen.set(value, row);
    }
}

writeFileSync(new URL('AllLanguages.cpp', output),
`/* Generated by scripts/generate-languages from the Unicode CLDR ${version},
   don't edit. The names and codes are Unicode data files, whose copyright and
   permission notice is in LICENSE-Unicode.txt beside this file. */

#include "editor/AllLanguages.h"

namespace OrrelinEngine {

using namespace Corrade::Containers::Literals;

/* Constant-initialized, so that it's there before any other static object */
constexpr Language AllLanguages[AllLanguageCount]{
${rows.map(({name, code}) => `    {"${name}"_s, "${code}"_s},`).join('\n')}
};

}
`);
copyFileSync(new URL('cldr-core/LICENSE', packages),
    new URL('LICENSE-Unicode.txt', output));
