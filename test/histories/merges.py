"""Has git merge branches in which people have translated the same project.

    merges.py PROGRAM
"""

import json
import subprocess
import sys
import tempfile
from pathlib import Path

from project import RECORD, Files

KEYS = [f"sign-text-{i}" for i in range(10)]
# Each: what happens in the branches, how many German and French texts are
# translated, outdated and missing afterwards, and which files conflict
CASES = [
    (["translate", "de", KEYS[8:]], ["translate", "fr", KEYS[:5]],
     [(11, 0, 0), (5, 0, 6)], set()),
    (["translate", "de", KEYS[:3], " new"], ["translate", "de", KEYS[8:]],
     [(11, 0, 0), (0, 0, 11)], set()),
    (["change", 2, "Changed"], ["translate", "de", KEYS[2:3], " new"],
     [(8, 1, 2), (0, 0, 11)], set()),
    (["change", 8, "Changed"], ["translate", "fr", KEYS[8:]],
     [(9, 0, 2), (1, 1, 9)], set()),
    (["change", 1, "Changed"], ["change", 9, "Changed as well"],
     [(8, 1, 2), (0, 0, 11)], set()),
    (["translate", "de", KEYS[8:9]], ["translate", "de", KEYS[8:9], " other"],
     [(10, 0, 1), (0, 0, 11)], {"languages/de.json"}),
    (["change", 5, "Changed"], ["change", 5, "Changed otherwise"],
     [(8, 1, 2), (0, 0, 11)], {"languages/en.json", "project.json"}),
]


class Project(Files):
    def program(self, *arguments):
        code, output = self.run([sys.argv[1]], *arguments)
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
        document = self.document()
        document["objects"]["sign"]["components"][index]["text"]["text"] = text
        self.save(document)
        self.program("export")

    def counts(self):
        return [(entry["translated"], entry["outdated"], entry["missing"])
                for entry in json.loads(self.program("status", "--json"))
                if entry["code"] != "en"]


def check(folder, first, second, counts, conflicts):
    project = Project(Path(folder) / "project")
    project.create("Sign", {"sign": {"components": [
        {"type": "text", "text": {"text": f"Text {i}"}} for i in range(10)]}})
    project.program("add", "de", "fr")
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
    got = set(project.git("diff", "--name-only", "--diff-filter=U").split())
    if got != conflicts | ({f"languages/{RECORD}"} if conflicts else set()):
        sys.exit(f"{first} and {second} conflict in {got}")
    for file in conflicts:
        project.git("checkout", "--ours", file)
    for command in "import", "export", "status":
        if project.counts() != counts:
            sys.exit(f"{first} and {second}: before {command} "
                     f"{project.counts()}, not {counts}")
        project.program(command)


for case in CASES:
    with tempfile.TemporaryDirectory() as place:
        check(place, *case)
print(f"{len(CASES)} merges")
