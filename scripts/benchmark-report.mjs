// Makes a page of tables from reports of Google Benchmark.
//
//     node scripts/benchmark-report.mjs REPORT...
//
// A benchmark is named OPERATION/WHO/SIZE; WHO is "ours", "reference" or one of
// the peers, and SIZE may have several parts. Without WHO it is ours.

import fs from 'node:fs';

const peers = {
    'QUndoStack': 'Qt 5\'s undo framework with commands over a QJsonObject, ' +
        'in which the bytes of replaced texts stay, so that a record costs ' +
        'more the more often it was changed',
    'JSON Patch': 'patches of nlohmann-json, each with the one that takes it ' +
        'back',
    'nlohmann-json': 'reads a language file into a map; writes one from a ' +
        'document that is there',
    'Node': 'JSON of Node.js, likewise',
    'lupdate': 'Qt\'s lupdate over forms of a hundred texts each, which it ' +
        'reads from files; it writes its own file, too',
};

const nanoseconds = {ns: 1, us: 1e3, ms: 1e6, s: 1e9};

function timeText(time) {
    for(const [unit, size] of [['s', 1e9], ['ms', 1e6], ['µs', 1e3]])
        if(time >= size)
            return `${(time / size).toPrecision(3)} ${unit}`;
    return `${time.toPrecision(3)} ns`;
}

function sizeText(size) {
    return size.map((part) => Number(part).toLocaleString('en')).join(' × ');
}

// Time of each item of a run, or of the whole run if it counts no items
function cost(run) {
    return run.items_per_second
        ? 1e9 / run.items_per_second
        : run.real_time * nanoseconds[run.time_unit];
}

function collect(files) {
    const operations = new Map();
    for(const file of files) {
        const report = JSON.parse(fs.readFileSync(file, 'utf8'));
        for(const run of report.benchmarks) {
            if(run.error_occurred)
                throw new Error(`${run.name}: ${run.error_message}`);
            const parts = run.name.split('/')
                .filter((part) => !/^(iterations|real_time|manual_time|min_time)/.test(part));
            const first = parts.findIndex((part) => /^\d+$/.test(part));
            const end = first < 0 ? parts.length : first;
            const size = parts.slice(end);
            const last = parts[end - 1];
            const named = ['ours', 'reference'].includes(last) || last in peers;
            const who = named ? last : 'ours';
            const name = parts.slice(0, named ? end - 1 : end).join('/');
            const rows = operations.get(name) ?? new Map();
            const key = size.join('/');
            rows.set(key, {...rows.get(key), size, [who]: run});
            operations.set(name, rows);
        }
    }
    return operations;
}

function timeTable(rows) {
    const has = (quantity) => rows.some((row) => row.ours?.[quantity]);
    const others = Object.keys(peers).filter((peer) =>
        rows.some((row) => row[peer]));
    const bytes = has('bytes_per_second');
    const rate = (run) => bytes && run.bytes_per_second
        ? ` (${Math.round(run.bytes_per_second / 1e6)} MB/s)` : '';
    const text = (run) => run ? timeText(cost(run)) + rate(run) : '';

    const own = has('items_per_second') ? 'ours, each' : 'ours';
    const lines = [['size', own, 'reference', 'ratio', ...others],
        ['---:', '---:', '---:', '---:', ...others.map(() => '---:')]];
    for(const row of rows) {
        const ratio = row.ours && row.reference
            ? (cost(row.ours) / cost(row.reference)).toFixed(2) : '';
        lines.push([sizeText(row.size), text(row.ours), text(row.reference),
            ratio, ...others.map((peer) => text(row[peer]))]);
    }
    const out = lines.map((line) => `| ${line.join(' | ')} |`);

    const measured = rows.filter((row) => row.ours);
    if(measured.length > 1) {
        const growth = cost(measured.at(-1).ours) / cost(measured[0].ours);
        out.push('', `From the smallest to the largest size ours grows ` +
            `${growth.toFixed(2)} times.`);
    }
    return out;
}

function memoryTable(rows) {
    const [{ours, reference}] = rows;
    return ['| bytes per change | ours | reference |', '|---|---:|---:|',
        ...['poolBytes', 'allBytes'].map((counter) =>
            `| ${counter === 'poolBytes' ? 'in the document\'s pool' : 'in all'}` +
            ` | ${Math.round(ours[counter])} | ${Math.round(reference[counter])} |`)];
}

// All in one table, as each has a row alone
function commandTable(commands) {
    const bytes = (size) => `${Math.round(size / 1e6)} MB`;
    const out = ['| command | time | reading alone | ratio | peak memory | files | ratio |',
        '| --- | ---: | ---: | ---: | ---: | ---: | ---: |'];
    for(const [name, [{ours, reference}]] of commands)
        out.push('| ' + [name.slice('commands/'.length), timeText(cost(ours)),
            timeText(cost(reference)),
            (cost(ours) / cost(reference)).toFixed(2), bytes(ours.peakBytes),
            bytes(ours.fileBytes),
            (ours.peakBytes / ours.fileBytes).toFixed(2)].join(' | ') + ' |');
    return out;
}

// What the record of translations costs, next to the commands that write it
function recordText(commands) {
    const {ours, reference} = commands.get('commands/(record alone)').get('');
    const time = cost(ours) - cost(reference);
    const share = (name) => `${Math.round(100 * time /
        cost(commands.get(`commands/${name}`).get('').ours))} %`;
    const bytes = (size) => `${Math.round(size / 1e6)} MB`;
    return ['The record of translations takes what the row about it takes more than reading',
        `alone, ${timeText(time)}: ${share('import, one text changed')} of such an import, ` +
            `${share('export')} of an export.`,
        `Its file has ${bytes(ours.recordBytes)}, the smallest language file has ` +
            `${bytes(ours.languageBytes)}.`];
}

const operations = collect(process.argv.slice(2));
const measured = new Set([...operations.values()].flatMap((rows) =>
    [...rows.values()].flatMap((row) => Object.keys(row))));
const measuredPeers = Object.entries(peers).filter(([name]) => measured.has(name));

const out = ['# Benchmarks', '',
    `Written by \`scripts/benchmark${measuredPeers.length ? ' --peers' : ''}\`. ` +
        'The reference is hand-written',
    'code that does the same work on the same data in the same run, so ratios hold',
    'where times drift. Without "each", times are of the whole operation.'];
if(measuredPeers.length)
    out.push('', 'What one would take instead:', '',
        ...measuredPeers.map(([name, what]) => `- ${name}: ${what}`));
const commands = [...operations].filter(([name]) => name.startsWith('commands/'))
    .map(([name, rows]) => [name, [...rows.values()]]);
if(commands.length)
    out.push('', '## Whole commands', '',
        'Of a project with 500,000 terms in 5 languages. The reference parses the same',
        'files with RapidJSON and does nothing else; the peak memory is compared with',
        'the size of those files, which for an archive are the ones packed in it.', '',
        'The rows in parentheses aren\'t commands. Those about tables only parse the files',
        'with RapidJSON and fill the maps that the tools share with the editor: of the',
        'terms, and of their texts in all languages. Every command does the work of the',
        'first of them, an export that of the second but for one language. So these are',
        'about the least time and memory that commands can take.', '',
        'Goals are twice the time of reading alone for terms, 4 times for status and an',
        'import without a change, 5 times for an export, and less than 2.5 times the files',
        'in memory. What limits them:', '',
        '- terms: The table of terms alone takes more than the goal, as each term is three',
        '  strings in the nodes of two maps, whose types the editor\'s interface prescribes.',
        '  The commands also find each text and its flag in the document, and the table is',
        '  measured before it\'s printed.',
        '- status and import: Besides the table of terms, each text of each language is',
        '  compared with its key, its source and the record, most of which wait for memory.',
        '- export: The tables alone take half of the goal. The texts that are there are',
        '  read first, so that none is lost, then put on record and written.',
        '- Memory of an export: Besides the tables, the new files are held until all are',
        '  complete, as none is replaced before. They take half the size of all files.',
        '- Memory of an import with a change: The project\'s old text is there while the',
        '  new one is written, as its layout and spelling are taken from it.', '',
        ...recordText(operations), '',
        ...commandTable(commands));
for(const [name, rows] of operations) {
    if(name.startsWith('commands/'))
        continue;
    const sorted = [...rows.values()].sort((a, b) =>
        a.size.map((part, i) => part - b.size[i]).find((d) => d) ?? 0);
    out.push('', `## ${name}`, '', ...(name.startsWith('memory/')
        ? memoryTable(sorted) : timeTable(sorted)));
}
console.log(out.join('\n'));
