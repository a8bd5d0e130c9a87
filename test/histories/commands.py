"""Commands that people give to the program, and what has to come of them.

Each function chooses arguments, and says which exit codes are right, what
checks the result, and the marks of texts that may be gone then.
"""

from dataclasses import dataclass, field
from typing import Callable

from people import LANGUAGES
from project import CONFLICT, DONE, FAILED, is_blank, marks, values


class Fault(Exception):
    pass


def expect(condition, *message):
    if not condition:
        raise Fault(" ".join(map(str, message)))


@dataclass
class Expected:
    arguments: list
    codes: set
    check: Callable = lambda output: None
    gone: set = field(default_factory=set)
    may_write_again: bool = False


class SourceMerge:
    """What has to come of source texts that the file has and the project
    doesn't. An import doesn't take blank ones from there, but an export
    doesn't write over them."""

    def __init__(self, history, takes_blank):
        now, base = history.files.sources(), history.base
        default = history.texts().get("en", {})
        other = {key: text for key, text in default.items()
                 if now.get(key, text) != text is not None and
                 (takes_blank or not is_blank(text, now[key]))}
        # Changed in the file alone, and in both
        self.file = {key: text for key, text in other.items()
                     if base.get(key) == now[key]}
        self.both = {key: text for key, text in other.items()
                     if base.get(key) not in (now[key], text)}
        differing = self.file | self.both
        decision = history.choice(
            ["file", "project", *(f"file:{key}" for key in differing)]) \
            if history.chance(5) else ""
        self.arguments = ["--take", decision] if decision else []
        self.taken = differing if decision == "file" else {
            key: text for key, text in differing.items()
            if decision == f"file:{key}"}
        # Those that nobody decided about
        self.left = set() if decision == "project" else \
            differing.keys() - self.taken
        self.gone = marks(now, default) if decision else \
            marks([now[key] for key in self.file])
        self.is_moved = any(now.get(key) != text and text in now.values()
                            for key, text in (base or default).items())
        # Then it may be argued which text of a new file belongs where
        self.is_open = self.is_moved and default != base
        # A second command knows keys that were new to the first one, in files
        # that don't follow moved texts and in the default language's
        self.has_new_keys = self.is_moved and not history.texts().keys() <= \
            set(history.files.codes()) or \
            default.keys() - now.keys() - base.keys()
        self.is_project = decision == "project"


def import_(history):
    codes = history.some(history.files.codes())
    allow = ["--allow-empty"] if history.chance(10) else []
    merge = SourceMerge(history, bool(allow))
    wanted = history.files.sources()
    right = {DONE}
    if "en" in (codes or ["en"]):
        wanted |= merge.taken if merge.is_project else merge.file | merge.taken
        if merge.left & merge.both.keys():
            right = {CONFLICT}
        if merge.is_open:
            right = {DONE, CONFLICT}
    if not set(codes or ["en"]) <= set(history.texts()):
        right |= {FAILED}

    def check(output):
        now = history.files.sources()
        history.blanks_allowed |= bool(allow)
        if merge.is_project and "en" in (codes or ["en"]):
            # An export writes over them from now on
            history.dead |= marks(merge.file, merge.both)
        expect(merge.is_open or now == wanted,
               "the project has", now, "not", wanted)
        expect(codes or history.place != history.files.place() or
               set(history.texts()) <= set(history.files.codes()),
               "a language with a file wasn't added")
        if "en" in (codes or ["en"]):
            history.record()
    return Expected(
        codes + merge.arguments + allow, right, check, merge.gone,
        bool(merge.is_open or merge.has_new_keys))


def export(history):
    place = history.files.place()
    codes = history.some(history.files.codes())
    merge = SourceMerge(history, True)
    prune = ["--prune"] if history.chance(3) else []
    before, texts = history.files.sources(), history.texts()
    lost = history.files.marks() - history.shown_marks - history.dead - \
        merge.gone
    right = {CONFLICT} if merge.left else \
        {FAILED} if lost and not prune else {DONE}
    if not prune and (merge.is_moved or any(
            set(keys) - set(before) for keys in texts.values())):
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
                    bool(merge.is_open or merge.has_new_keys))


def rename(history):
    now = history.files.sources()
    old = history.choice(list(now) or ["none"])
    history.count += 1
    new = f"k{history.count}"

    def check(output):
        expect(history.files.sources() == {
            new if key == old else key: text for key, text in now.items()},
            "other texts have other keys")
        history.tidy()
        history.record()
    right = {DONE} if history.texts() == history.shown and now else \
        {DONE, FAILED}
    return Expected([old, new], right, check)


def confirm(history):
    code = history.choice(history.files.codes())
    keys, now = history.some(history.files.sources()), history.files.sources()
    shown = history.shown.get(code, {})
    right = {DONE}
    if code == "en" or not all(marks(shown.get(key)) for key in keys):
        right |= {FAILED}

    def check(output):
        for key in keys or now:
            for mark in marks(shown.get(key)):
                history.made[mark] = {now[key]}
    return Expected([code, *keys], right, check)


def pin(history):
    keys = [key for _, _, key in values(history.files.document())]

    def check(output):
        pinned = [holder.get(name + "_term")
                  for holder, name, _ in values(history.files.document())]
        expect(pinned == keys, "other keys are pinned")
    # What has moved has to be exported first
    return Expected([], {DONE} if history.base == history.files.sources()
                    else {DONE, FAILED}, check)


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
