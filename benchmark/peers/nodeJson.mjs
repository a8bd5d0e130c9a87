// Language files with Node's JSON: read into a table, and written from objects
// that are there.
//
//     node nodeJson.mjs FOLDER    with the output of languageFiles

import fs from 'node:fs';
import {print, run} from './report.mjs';

const benchmarks = [];
for(const terms of [1000, 10000, 100000, 1000000]) {
    const expected = fs.readFileSync(`${process.argv[2]}/${terms}.json`);
    const size = expected.length;
    benchmarks.push(run(`import/Node/${terms}`, terms, size, () => {
        const file = JSON.parse(expected.toString('utf8'));
        const out = new Map(Object.entries(file.translation));
        if(out.size !== terms)
            throw new Error('not all imported');
    }));

    const file = JSON.parse(expected.toString('utf8'));
    for(const languages of [1, 10, 50]) {
        if(terms * languages > 5000000)
            continue;
        benchmarks.push(run(`write/Node/${terms}/${languages}`,
            terms * languages, size * languages, () => {
                let content;
                for(let i = 0; i !== languages; ++i)
                    content = Buffer.from(JSON.stringify(file, null, 2) + '\n');
                if(!content.equals(expected))
                    throw new Error('not the same bytes');
            }));
    }
}
print(benchmarks);
