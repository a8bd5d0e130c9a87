"""Random histories of small projects: people edit texts in any file, and the
program takes them to and fro, or is killed. Beside it is known who wrote which
text, and for which source text. Where a person couldn't tell what's right, all
of it is allowed.

    histories.py PROGRAM FAIL_AT STEPS SEED JOBS
"""

import collections
import concurrent.futures
import functools
import json
import re
import shutil
import sys
import tempfile
import traceback
from pathlib import Path

import commands
from people import People
from project import CONFLICT, DONE, FAILED, GATE, Fault, clashes, expect, \
    is_blank, marks, values

LENGTH = 50


class History(People):
    def __init__(self, program, fail_at, seed, folder):
        super().__init__(folder / "project", seed)
        self.program, self.fail_at, self.folder = program, fail_at, folder

    def begin(self):
        self.perform("add", commands.Expected(["de", "fr"], {DONE}))
        self.perform("export", commands.Expected(
            [], {DONE}, lambda output: self.record()))
        self.check()

    def step(self):
        self.random.choices(
            [self.artist, self.translator, self.command, self.lose_record],
            [40, 40, 50, 1])[0]()
        self.check()

    def command(self):
        weights = {"import_": 6, "export": 6, "confirm": 2}
        if self.files.place() == self.place:
            weights |= {"rename": 1, "add": 0.7, "remove": 0.5, "pin": 0.3}
        name = self.random.choices(list(weights), list(weights.values()))[0]
        self.perform(name.strip("_"), getattr(commands, name)(self),
                     self.chance(8))

    def record(self, is_unsure=False):
        """The program read or wrote the default language's file"""
        now = self.files.sources()
        # What isn't taken stays a difference
        base = {key: text if key in now and not is_blank(text, now[key])
                else self.base.get(key)
                for key, text in self.texts().get("en", {}).items()}
        self.base = {key: base[key] for key in base if base[key] is not None}
        self.is_known, self.is_unsure = True, is_unsure

    def run(self, *arguments):
        return self.files.run([self.program], *arguments)

    def perform(self, command, expected, killed=False):
        arguments = expected.arguments
        self.log.append(" ".join([command, *arguments]))
        before, stamps = self.files.state(), self.files.stamps()
        kept = self.files.marks()
        self.files.copy(self.folder / "before" / "project")
        if command == "import" and self.chance(5):
            code, _ = self.run(command, "--dry-run", *arguments)
            expect(self.files.stamps() == stamps, "a dry run writes")
            expect(code in expected.codes, "a dry run exits with", code)
        code, output = self.kill(command, arguments, before) if killed else \
            self.run(command, *arguments)
        self.log[-1] += f" -> {code}"
        expect(killed or code == DONE or self.files.stamps() == stamps,
               "writes, but exits with", code, output)
        expect(code in expected.codes, "not", expected.codes, output)
        if code != DONE or killed and self.files.state() == before:
            return
        told = sum(map(int, re.findall(r"(\d+) text[^\n]* dropped", output)))
        lost = kept - self.files.marks() - self.dead - expected.gone
        expect(len(lost) <= told, "lost:", lost, output)
        expected.check(output)
        if command in ("import", "export") and "--take" not in \
                arguments and not expected.may_write_again:
            stamps = self.files.stamps()
            code, output = self.run(command, *arguments)
            expect(code == DONE, "a second time, it exits with", code, output)
            expect(self.files.stamps() == stamps, "writes a second time")

    def kill(self, command, arguments, before):
        """Leaves the old or the new state, once the next command is through"""
        whole = self.files.copy(self.folder / "whole" / "project")
        result = whole.run([self.program], command, *arguments)
        self.log[-1] += " killed"
        self.files.run([self.fail_at, str(self.random.randint(1, 600)), "KILL",
                        self.program], command, *arguments)
        self.run("rename", "none", "other")
        expect(self.files.state() in (before, whole.state()),
               "neither old nor new")
        return result

    def part_keys(self):
        """No export may put a text in the place of one whose key is stored"""
        before = self.files.document()
        parted = clashes(before)
        if not parted:
            return
        expect(self.run("export")[0] in (FAILED, CONFLICT),
               "exports one of two texts")
        code, output = self.run("pin")
        expect(code == DONE, "can't part texts:", output)
        now = self.files.document()
        expect(not clashes(now), "texts share keys still")
        expect([key for index, (_, _, key) in enumerate(values(now))
                if index not in parted] ==
               [key for index, (_, _, key) in enumerate(values(before))
                if index not in parted], "other texts have other keys")

    def check(self):
        """Status has to count what an export would write"""
        self.part_keys()
        code, output = self.run("status", "--json", "--fail-under", "100")
        expect(code in (DONE, GATE), "status fails:", output)
        counts = {count["code"]: count
                  for count in json.JSONDecoder().raw_decode(output)[0]}
        copy = self.files.copy(self.folder / "copy" / "project")
        result = copy.run(
            [self.program], "export", "--take", "project", "--prune")
        expect(result[0] == DONE, "can't be exported:", result[1])
        self.shown, self.shown_marks = copy.texts(copy.place()), copy.marks()
        now = self.files.sources()
        expect(copy.sources() == now, "export changes the project")
        for language, count in counts.items():
            expect(self.shown[language].keys() == now.keys(), "wrong keys")
            if language != "en":
                self.check_counts(language, now, count)
                self.check_moves(language, now)
        expect((code == GATE) == any(count["translated"] != len(now)
               for count in counts.values()), "the gate exits with", code)

    def check_counts(self, language, now, count):
        least = collections.Counter()
        for key, source in now.items():
            text = self.shown[language][key]
            made = self.made.get(min(marks(text), default=None), set())
            if text is None or not self.blanks_allowed and \
                    is_blank(text, source):
                least["missing"] += 1
            elif made and (source not in made or len(made) == 1):
                least["translated" if source in made else "outdated"] += 1
            else:
                least["any"] += 1
        got = {name: count[name]
               for name in ("translated", "outdated", "missing")}
        expect(sum(got.values()) == count["total"] == len(now) and
               all(least[name] <= got[name] <= least[name] + least["any"]
                   for name in got), language, got, "not", dict(least))

    def check_moves(self, language, now):
        """A translation is where its source text is, if that's one place"""
        if not self.is_known or self.is_unsure:
            return
        old, chosen = list(self.base.values()), {
            holder.get(name + "_term")
            for holder, name, _ in values(self.files.document())}
        texts = self.texts().get(language, {})
        for key, text in texts.items():
            source = self.base.get(key)
            at = [other for other in now if now[other] == source]
            if source and not is_blank(text, source) and \
                    old.count(source) == 1 and len(at) == 1 and \
                    self.made.get(min(marks(text))) == {source} and \
                    (at == [key] or key not in chosen and (
                        at[0] in self.base or at[0] not in texts)):
                expect(self.shown[language][at[0]] == text, language, key, text,
                       "isn't at", at[0], "with its source", source)


def run(program, fail_at, seed, steps):
    """What went wrong, if anything"""
    folder = Path(tempfile.mkdtemp(prefix="histories-"))
    history = History(program, fail_at, seed, folder)
    try:
        history.begin()
        for _ in range(steps):
            history.step()
    except Exception as fault:
        return "\n  ".join([
            f"Seed {seed}, step {len(history.log)}, {folder}:",
            *history.log[-12:],
            str(fault) if isinstance(fault, Fault) else traceback.format_exc()])
    shutil.rmtree(folder)


def main():
    program, fail_at = sys.argv[1:3]
    steps, seed, jobs = map(int, sys.argv[3:])
    print(f"Seed {seed}", flush=True)
    parts = range(0, steps, LENGTH)
    with concurrent.futures.ProcessPoolExecutor(jobs) as pool:
        for fault in pool.map(
                functools.partial(run, program, fail_at),
                range(seed, seed + len(parts)),
                [min(LENGTH, steps - start) for start in parts]):
            if fault:
                pool.shutdown(cancel_futures=True)
                sys.exit(fault)
    print(f"{steps} steps")


if __name__ == "__main__":
    main()
