// Makes a page of tables from reports of Google Benchmark.
//
//     node scripts/benchmark-report.mjs REPORT...
//
// A benchmark is named OPERATION/WHO/SIZE; WHO is "ours", "reference" or
// another variant of ours, and SIZE may have several parts.

import fs from 'node:fs';

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

// What each item of a run took, or the whole run if it counts none
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
                .filter((part) => !/^(iterations|real_time|min_time)/.test(part));
            const first = parts.findIndex((part) => /^\d+$/.test(part));
            const end = first < 0 ? parts.length : first;
            const size = parts.slice(end);
            const paired = ['ours', 'reference'].includes(parts[end - 1]);
            const who = paired ? parts[end - 1] : 'ours';
            const name = parts.slice(0, paired ? end - 1 : end).join('/');
            const rows = operations.get(name) ?? new Map();
            const key = size.join('/');
            rows.set(key, {...rows.get(key), size, [who]: run});
            operations.set(name, rows);
        }
    }
    return operations;
}

function timeTable(rows) {
    const items = rows.some((row) => row.ours?.items_per_second);
    const bytes = rows.some((row) => row.ours?.bytes_per_second);
    const rate = (run) => run?.bytes_per_second
        ? ` (${Math.round(run.bytes_per_second / 1e6)} MB/s)` : '';
    const text = (run) => run ? timeText(cost(run)) + (bytes ? rate(run) : '')
        : '';
    const lines = [`| size | ours${items ? ', each' : ''} | reference | ratio |`,
        '|---:|---:|---:|---:|'];
    for(const {size, ours, reference} of rows) {
        const ratio = ours && reference
            ? (cost(ours) / cost(reference)).toFixed(2) : '';
        lines.push(`| ${sizeText(size)} | ${text(ours)} | ` +
            `${text(reference)} | ${ratio} |`);
    }
    const own = rows.filter((row) => row.ours?.items_per_second);
    if(own.length > 1) {
        const growth = cost(own.at(-1).ours) / cost(own[0].ours);
        lines.push('', `From the smallest to the largest size the cost of each ` +
            `grows ${growth.toFixed(2)} times.`);
    }
    return lines;
}

function memoryTable(rows) {
    const [{ours, reference}] = rows;
    return ['| bytes per change | ours | reference |', '|---|---:|---:|',
        ...['poolBytes', 'allBytes'].map((counter) =>
            `| ${counter === 'poolBytes' ? 'in the document\'s pool' : 'in all'}` +
            ` | ${Math.round(ours[counter])} | ${Math.round(reference[counter])} |`)];
}

const out = ['# Benchmarks', '',
    'Written by `scripts/benchmark`. The reference is hand-written code that does',
    'the same work on the same data in the same run, so ratios hold where times',
    'drift.'];
for(const [name, rows] of collect(process.argv.slice(2))) {
    const sorted = [...rows.values()].sort((a, b) =>
        a.size.map((part, i) => part - b.size[i]).find((d) => d) ?? 0);
    out.push('', `## ${name}`, '', ...(name.startsWith('memory/')
        ? memoryTable(sorted) : timeTable(sorted)));
}
console.log(out.join('\n'));
