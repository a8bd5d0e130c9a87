// Qt's lupdate over forms with as many texts, a hundred in each. It reads them
// from files and writes a file of its own, which can't be taken apart.
//
//     node lupdate.mjs FOLDER     with the output of languageFiles

import {execFileSync} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {print, run} from './report.mjs';

const escaped = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;');

function form(index, texts) {
    const labels = texts.map((text, i) => `<item><widget class="QLabel" ` +
        `name="label${i}"><property name="text"><string>${escaped(text)}` +
        `</string></property></widget></item>`);
    return `<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Form${index}</class>
<widget class="QWidget" name="Form${index}"><layout class="QVBoxLayout">
${labels.join('\n')}
</layout></widget></ui>
`;
}

function writeForms(texts, folder) {
    fs.mkdirSync(folder);
    for(let i = 0; i < texts.length; i += 100)
        fs.writeFileSync(path.join(folder, `form${i}.ui`),
            form(i, texts.slice(i, i + 100)));
}

const work = fs.mkdtempSync(path.join(os.tmpdir(), 'lupdate-'));
const benchmarks = [];
try {
    // For a million it takes more than ten minutes
    for(const terms of [1000, 10000, 100000]) {
        const file = JSON.parse(
            fs.readFileSync(`${process.argv[2]}/${terms}.json`, 'utf8'));
        const forms = path.join(work, 'forms'), out = path.join(work, 'out.ts');
        writeForms(Object.values(file.translation), forms);
        benchmarks.push(run(`gather/lupdate/${terms}`, terms, 0, () => {
            fs.rmSync(out, {force: true});
            execFileSync('lupdate', ['-silent', forms, '-ts', out]);
        }));
        const found = fs.readFileSync(out, 'utf8').split('<message>').length - 1;
        if(found !== terms)
            throw new Error(`${found} of ${terms} texts found`);
        fs.rmSync(forms, {recursive: true});
    }
} finally {
    fs.rmSync(work, {recursive: true});
}
print(benchmarks);
