"""A project's files, read and written as people do it: without the program."""

import json
import re
import shutil
import subprocess
import zipfile
from pathlib import Path

RECORD = "translation-record.txt"
DONE, FAILED, GATE, CONFLICT = 0, 2, 3, 4


class Fault(Exception):
    pass


def expect(condition, *message):
    if not condition:
        raise Fault(" ".join(map(str, message)))


def marks(*values):
    """The marks of all texts in the values; each text is written once"""
    return set(re.findall(r"\bT\d+\b", str(values)))


def is_blank(text, source):
    """Whether it's what tools write where there's no translation"""
    return text is None or (text in ("", "None") and text != source)


def values(document):
    """Each text as the object that holds it, its name there and its key"""
    project = document["settings"]["project"]
    yield project, "name", project.get("name_term", "projectName")
    for thing, content in document["objects"].items():
        for index, component in enumerate(content["components"]):
            kind = component["type"]
            for name in ["text"] if kind == "text" else ["title", "hint"]:
                key = f"{thing}-text-{index}" if kind == "text" else \
                    f"{thing}-js-{index}-{name}"
                yield component[kind], name, \
                    component[kind].get(name + "_term", key)


def sources(document):
    """The texts that are to be translated, by their keys. Of several with the
    same key, the first one counts."""
    first = {}
    for holder, name, key in values(document):
        first.setdefault(key, (holder[name], holder.get(name + "_translate")))
    return {key: text for key, (text, translate) in first.items()
            if translate is not False}


def clashes(document):
    """Places among the values of those whose generated key is stored for
    another text"""
    everywhere = list(values(document))
    stored = {key: holder[name] for holder, name, key in everywhere
              if name + "_term" in holder}
    return {index for index, (holder, name, key) in enumerate(everywhere)
            if name + "_term" not in holder and
            stored.get(key, holder[name]) != holder[name]}


def contents(place):
    """Of the language files in a folder or an archive, by their names"""
    if place.is_dir():
        return {path.name: path.read_text("utf-8")
                for path in sorted(place.glob("*.json"))}
    if not place.exists():
        return {}
    with zipfile.ZipFile(place) as archive:
        return {name: archive.read(name).decode()
                for name in sorted(archive.namelist())}


class Files:
    def __init__(self, root):
        self.root = Path(root)
        self.languages = self.root / "languages"

    def create(self, name, objects):
        self.languages.mkdir(parents=True)
        (self.root / "components.json").write_text(
            '{"sign": {"title": "string", "hint": "string"}}')
        self.save({"settings": {"project": {"name": name}, "localization": {
            "defaultLanguage": "en", "languagesFolder": "languages",
            "format": "i18next", "enableZipCompression": False}},
            "languages": {}, "objects": objects})

    def document(self):
        return json.loads((self.root / "project.json").read_text("utf-8"))

    def save(self, document):
        (self.root / "project.json").write_text(
            json.dumps(document, indent=4, ensure_ascii=False), "utf-8")

    def sources(self):
        return sources(self.document())

    def codes(self):
        return list(self.document()["languages"])

    def place(self):
        """Where the language files are by the project's settings"""
        settings = self.document()["settings"]
        if settings["localization"]["enableZipCompression"]:
            return self.languages / (settings["project"]["name"] + ".zip")
        return self.languages

    def texts(self, place):
        """By language and key"""
        return {name.removesuffix(".json"): json.loads(content)["translation"]
                for name, content in contents(place).items()}

    def former_sources(self):
        record = self.languages / "translation-record.txt"
        if not record.exists():
            return set()
        _, _, former = record.read_text("utf-8").partition("[former sources]\n")
        return {json.loads(line.partition(" ")[2])
                for line in former.splitlines() if not line.startswith("[")}

    def write(self, place, code, texts):
        content = json.dumps({"translation": texts}, indent=2)
        if place == self.languages:
            (place / f"{code}.json").write_text(content, "utf-8")
            return
        entries = contents(place) | {f"{code}.json": content}
        with zipfile.ZipFile(place, "w") as archive:
            for name, entry in entries.items():
                archive.writestr(name, entry)

    def all(self, read):
        return {path.relative_to(self.root): read(path)
                for path in self.root.rglob("*") if path.is_file()}

    def state(self):
        """All that there is, with archives unpacked"""
        return self.all(lambda path: contents(path) if path.suffix == ".zip"
                        else path.read_text("utf-8"))

    def marks(self):
        return marks(*[content for path, content in self.state().items()
                       if path.name != RECORD])

    def stamps(self):
        """Differ if a file is written again, even if it's the same"""
        return self.all(lambda path: (path.stat().st_ino,
                                      path.stat().st_mtime_ns))

    def copy(self, root):
        shutil.rmtree(root, ignore_errors=True)
        shutil.copytree(self.root, root)
        return Files(root)

    def run(self, program, command, *arguments):
        """Exit code and output"""
        done = subprocess.run(
            [*program, command, self.root.name, *arguments], text=True,
            cwd=self.root.parent, timeout=60, capture_output=True)
        return done.returncode, done.stdout + done.stderr
