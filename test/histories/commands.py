"""Commands that people give to the program, and what has to come of them.

Each function chooses arguments, and says which exit codes are right, what
checks the result, and the marks of texts that may be gone then.
"""

from collections import namedtuple

from people import LANGUAGES
from project import CONFLICT, DONE, FAILED, expect, is_blank, marks, values

Expected = namedtuple(
    "Expected", "arguments codes check gone may_write_again",
    defaults=[lambda output: None, set(), False])


class SourceMerge:
    """What has to come of source texts that the file has and the project
    doesn't. An import doesn't take blank ones from there, but an export
    doesn't write over them."""

    def __init__(self, history, takes_blank):
        now, base = history.files.sources(), history.base
        texts = history.texts()
        default = texts.get("en", {})
        other = {key: text for key, text in default.items()
                 if now.get(key, text) != text is not None and
                 (takes_blank or not is_blank(text, now[key]))}
        # Changed in the file alone, and in both. A text that the project had
        # before may be an old file's.
        former = history.files.former_sources()
        self.file = {key: text for key, text in other.items()
                     if base.get(key) == now[key] and text not in former}
        self.both = {key: text for key, text in other.items()
                     if key not in self.file and base.get(key) != text}
        differing = self.file | self.both
        decision = history.choice(
            ["file", "project", *(f"file:{key}" for key in differing)]) \
            if history.chance(5) else ""
        self.arguments = ["--take", decision] if decision else []
        self.is_project = decision == "project"
        self.taken = {key: text for key, text in differing.items()
                      if decision in ("file", f"file:{key}")}
        self.left = set() if self.is_project else differing.keys() - self.taken
        self.gone = marks(now, default) if decision else \
            marks([now[key] for key in self.file])
        self.is_moved = any(now.get(key) != text and text in now.values()
                            for key, text in (base or default).items())
        # With what may be a change of a text that has another key now
        self.given_up = marks(differing, [
            text for key, text in default.items()
            if self.is_moved and key not in now]) if self.is_project else set()
        # Then it may be argued which text of a new file belongs where
        self.is_open = history.is_unsure or self.is_moved and default != base
        # A second command knows keys that were new to the first one, in files
        # that don't follow moved texts
        self.may_write_again = self.is_open or bool(
            self.is_moved and texts.keys() - history.files.codes())


def import_(history):
    codes = history.some(history.files.codes())
    allow = ["--allow-empty"] if history.chance(10) else []
    merge = SourceMerge(history, bool(allow))
    wanted, right = history.files.sources(), {DONE}
    reads_default = "en" in (codes or ["en"])
    if reads_default:
        wanted |= merge.taken if merge.is_project else merge.file | merge.taken
        if merge.left & merge.both.keys():
            right = {CONFLICT}
        if merge.is_open:
            right = {DONE, CONFLICT}
    if not set(codes or ["en"]) <= set(history.texts()):
        right |= {FAILED}

    def check(output):
        now = history.files.sources()
        expect(merge.is_open or now == wanted,
               "the project has", now, "not", wanted)
        expect(codes or history.place != history.files.place() or
               set(history.texts()) <= set(history.files.codes()),
               "a language with a file wasn't added")
        history.blanks_allowed |= bool(allow)
        if reads_default:
            history.record(merge.is_open)
            # An export writes over those
            history.dead |= merge.given_up
    return Expected(codes + merge.arguments + allow, right, check, merge.gone,
                    merge.may_write_again)


def export(history):
    place = history.files.place()
    codes = history.some(history.files.codes())
    prune = ["--prune"] if history.chance(3) else []
    merge = SourceMerge(history, True)
    before = history.files.sources()
    lost = history.files.marks() - history.shown_marks - history.dead - \
        merge.gone
    # Whether a blank one is meant is for an import to ask
    is_asked = merge.left or any(
        is_blank(text, before[key]) for key, text in merge.taken.items())
    right = {CONFLICT} if is_asked else \
        {FAILED} if lost and not prune else {DONE}
    if not prune and (merge.is_moved or any(
            keys - before.keys() for keys in history.texts().values())):
        right |= {FAILED}
    if place != history.place:
        # What stays in the former place isn't lost
        right |= {DONE}
    if codes or merge.is_open or place.suffix and merge.arguments:
        right |= {DONE, CONFLICT, FAILED}

    def check(output):
        history.tidy()
        if " en.json " not in output.replace("\n", " "):
            expect("en" not in (codes or ["en"]), "doesn't write en.json")
            return
        now, wanted = history.files.sources(), before | merge.taken
        expect(merge.is_open or now == wanted,
               "the project has", now, "not", wanted)
        expect(history.texts().get("en") == now, "en.json isn't the project's")
        history.record()
    return Expected(codes + prune + merge.arguments, right, check, merge.gone,
                    merge.may_write_again)


def rename(history):
    now = history.files.sources()
    old, new = history.choice(list(now) or ["none"]), history.new_key()
    fits = now and history.texts() == history.shown and \
        history.shown.keys() == set(history.files.codes())

    def check(output):
        expect(history.files.sources() == {
            new if key == old else key: text for key, text in now.items()},
            "other texts have other keys")
        history.record()
    return Expected([old, new], {DONE} if fits else {DONE, FAILED}, check)


def confirm(history):
    code, now = history.choice(history.files.codes()), history.files.sources()
    keys, shown = history.some(now), history.shown.get(code, {})
    fits = code != "en" and all(marks(shown.get(key)) for key in keys)

    def check(output):
        for key in keys or now:
            for mark in marks(shown.get(key)):
                history.made[mark] = {now[key]}
    return Expected([code, *keys], {DONE} if fits else {DONE, FAILED}, check)


def pin(history):
    keys = [key for _, _, key in values(history.files.document())]

    def check(output):
        expect([holder.get(name + "_term") for holder, name, _ in values(
            history.files.document())] == keys, "other keys are pinned")
    # What has moved has to be exported first
    fits = history.base == history.files.sources()
    return Expected([], {DONE} if fits else {DONE, FAILED}, check)


def add(history):
    code = history.choice(LANGUAGES)
    return Expected(
        [code], {FAILED if code in history.files.codes() else DONE})


def remove(history):
    code = history.choice(history.files.codes()[1:] or ["none"])
    gone = marks(history.texts().get(code))

    def check(output):
        for mark in gone:
            history.made.pop(mark, None)
    return Expected([code], {FAILED if code == "none" else DONE}, check,
                    set() if history.place.suffix else gone)
