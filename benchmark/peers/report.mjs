// Times work the way Google Benchmark does and reports it in its form.

import {performance} from 'node:perf_hooks';

const seconds = Number(process.env.BENCHMARK_SECONDS ?? 0.2);

// One line of a report: WORK is done until it took long enough
export function run(name, items, bytes, work) {
    work(); // To warm up
    let iterations = 0, elapsed = 0;
    while(elapsed < seconds * 1e3) {
        const begin = performance.now();
        work();
        elapsed += performance.now() - begin;
        ++iterations;
    }
    const each = elapsed / 1e3 / iterations;
    return {
        name, iterations, real_time: each * 1e3, time_unit: 'ms',
        ...(items && {items_per_second: items / each}),
        ...(bytes && {bytes_per_second: bytes / each}),
    };
}

export function print(benchmarks) {
    console.log(JSON.stringify({benchmarks}, null, 2));
}
