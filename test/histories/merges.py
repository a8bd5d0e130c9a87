"""Has git merge branches in which people have translated the same project.

    merges.py PROGRAM
"""

import json
import subprocess
import sys
import tempfile
from pathlib import Path

from project import RECORD, Files

PROGRAM = sys.argv[1]
KEYS = [f"sign-text-{i}" for i in range(10)]


class Project(Files):
    def program(self, *arguments):
        code, output = self.run([PROGRAM], *arguments)
        if code != 0:
            sys.exit(f"{arguments} fails: {output}")
        return output

    def git(self, *arguments, check=True):
        identity = ["-c", "user.name=x", "-c", "user.email=x@example.org"]
        return subprocess.run(
            ["git", *identity, *arguments], cwd=self.root, check=check,
            text=True, capture_output=True).stdout

    def commit(self):
        self.git("add", "-A")
        self.git("commit", "-m", "x")

    def translate(self, code, keys, mark=""):
        texts = self.texts(self.languages)[code]
        texts |= {key: f"{code}{mark} of {key}" for key in keys}
        self.write(self.languages, code, texts)
        self.program("import", code)

    def change(self, index, text):
        """Changes a source text"""
        document = self.document()
        document["objects"]["sign"]["components"][index]["text"]["text"] = text
        self.save(document)
        self.program("export")

    def counts(self, code):
        return next((entry["translated"], entry["outdated"], entry["missing"])
                    for entry in json.loads(self.program("status", "--json"))
                    if entry["code"] == code)


# Each: what happens in the branches, the files that conflict, and how many
# German and French texts are translated, outdated and missing afterwards
CASES = [
    (["translate", "de", KEYS[8:]], ["translate", "fr", KEYS[:5]],
     set(), (11, 0, 0), (5, 0, 6)),
    (["translate", "de", KEYS[:3], " new"], ["translate", "de", KEYS[8:]],
     set(), (11, 0, 0), (0, 0, 11)),
    (["change", 2, "Changed"], ["translate", "de", KEYS[2:3], " new"],
     set(), (8, 1, 2), (0, 0, 11)),
    (["change", 8, "Changed"], ["translate", "fr", KEYS[8:]],
     set(), (9, 0, 2), (1, 1, 9)),
    (["change", 1, "Changed"], ["change", 9, "Changed as well"],
     set(), (8, 1, 2), (0, 0, 11)),
    (["translate", "de", KEYS[8:9], " mine"],
     ["translate", "de", KEYS[8:9], " other"],
     {"languages/de.json"}, (10, 0, 1), (0, 0, 11)),
    (["change", 5, "Changed"], ["change", 5, "Changed otherwise"],
     {"languages/en.json", "project.json"}, (8, 1, 2), (0, 0, 11)),
]


def check(first, second, conflicts, german, french):
    with tempfile.TemporaryDirectory() as folder:
        project = Project(Path(folder) / "project")
        project.create("Sign", {"sign": {"components": [
            {"type": "text", "text": {"text": f"Text {i}"}}
            for i in range(10)]}})
        project.program("add", "en", "de", "fr")
        project.program("export")
        project.translate("de", ["projectName", *KEYS[:8]])
        project.git("init", "-b", "a")
        project.commit()
        for branch, edit in ("b", second), ("a", first):
            project.git("checkout", "-B", branch, "a")
            getattr(project, edit[0])(*edit[1:])
            project.commit()
        project.git("merge", "b", check=False)

        # As people take one side. In the record, the marks stay.
        got = set(project.git(
            "diff", "--name-only", "--diff-filter=U").split())
        marked = {f"languages/{RECORD}"} if conflicts else set()
        if got != conflicts | marked:
            sys.exit(f"{first} and {second} conflict in {got}")
        for file in conflicts:
            project.git("checkout", "--ours", file)
        for command in "import", "export", "status":
            counts = project.counts("de"), project.counts("fr")
            if counts != (german, french):
                sys.exit(f"{first} and {second}, before {command}: {counts}")
            project.program(command)


for case in CASES:
    check(*case)
print(f"{len(CASES)} merges")
