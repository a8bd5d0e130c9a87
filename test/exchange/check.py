"""Sends texts through other programs and compares them. Run by
scripts/check-exchange:

    check.py HOST FOLDER SEED

FOLDER has projects with language files.
"""

import csv
import glob
import json
import os
import random
import re
import subprocess
import sys

from translate.storage import pypo, xliff

host, folder, seed = sys.argv[1:]
os.chdir(folder)
random.seed(int(seed))
PARTS = ["a", "Text", " ", "\n", "\r\n", "\t", "'", '"', "=", "+1", "-", "@",
         "＝", ",", ";", "&amp;", "<b>", "]]>", "é", "日本", "👋", "\\", "{{x}}",
         "\u2028", "%s", "~", "#", "None", "null"]
FORMULA = re.compile("'*[=+\\-@\t\r\n＝＋－＠]")


def run(*command):
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode:
        sys.exit(f"{command}: {result.stdout}{result.stderr}")
    return result.stdout


def text():
    # The word None alone is no translation
    return "".join(random.choices(PARTS, k=random.randint(1, 5))) + "."


def write_json(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        json.dump(content, file)


def make_project(name, count=60):
    keys = {f"k{i}{text()}" for i in range(count)}
    components = [{"type": "text", "text": {"text": text(), "text_term": key}}
                  for key in keys]
    write_json(f"{name}/project.json", {
        "settings": {"localization": {"defaultLanguage": "en"}},
        "languages": {"en": {}, "de": {}, "ja": {}},
        "objects": {"o/~": {"name": text(), "components": components}}})
    for language in "de", "ja":
        write_json(f"{name}/languages/{language}.json", {"translation": {
            key: random.choice([None, text()]) for key in keys}})


def tables(project):
    out = {}
    for path in glob.glob(f"{project}/languages/??.json"):
        with open(path, encoding="utf-8") as file:
            out[os.path.basename(path)[:2]] = json.load(file)["translation"]
    return out


def expect(project, expected, what):
    got = tables(project)
    for language, texts in expected.items():
        for key, wanted in texts.items():
            if got[language][key] != wanted:
                sys.exit(f"seed {seed}, {what}, {project}, {language}: {key!r} "
                         f"is {got[language][key]!r}, not {wanted!r}")
    outdated = [language["outdated"] for language in json.loads(
        run(host, "status", project, "--json"))]
    if any(outdated):
        sys.exit(f"seed {seed}, {what}, {project}: {outdated} are outdated")
    return sum(map(len, expected.values()))


def harmless(cell):
    return "'" + cell if FORMULA.match(cell) else cell


def original(cell):
    return cell[1:] if cell.startswith("'") and FORMULA.match(cell) else cell


def check_csv(project):
    """What Python reads is what the language files have, and what it writes is
    taken in"""
    expected = tables(project)
    run(host, "export", project, "--format", "csv", "-o", "all.csv", "--force")
    with open("all.csv", encoding="utf-8-sig", newline="") as file:
        rows = list(csv.DictReader(file, strict=True))
    sources = {key for key, source in expected["en"].items() if source}
    assert {original(row["key"]) for row in rows} == sources
    for row in rows:
        assert not any(FORMULA.match(cell) and not cell.startswith("'")
                       for cell in row.values()), row
        key = original(row["key"])
        for language, texts in expected.items():
            wanted = texts[key] or ""
            assert original(row[language]) == wanted, (language, key, row)
            if language != "en" and random.random() < 0.3:
                texts[key] = text()
                # A person doesn't write apostrophes where none are needed
                row[language] = (texts[key] if texts[key][0] != "'"
                                 else harmless(texts[key]))
    with open("all.csv", "w", encoding="utf-8", newline="") as file:
        writer = csv.DictWriter(
            file, rows[0].keys(), delimiter=random.choice(",;\t"),
            quoting=random.choice([csv.QUOTE_ALL, csv.QUOTE_MINIMAL]))
        writer.writeheader()
        writer.writerows(rows)
    run(host, "import", project, "--from", "all.csv")
    return expect(project, expected, "CSV")


def edit(store, key_of, texts):
    for unit in store.units:
        key = key_of(unit)
        if key in texts and random.random() < 0.3:
            texts[key] = text()
            unit.target = texts[key]
            unit.markfuzzy(False)
            if hasattr(unit, "marktranslated"):
                unit.marktranslated()
    store.save()


def check_xliff(project):
    """The toolkit's own store edits the files"""
    expected = tables(project)
    run(host, "export", project, "--format", "xliff", "-o", "out", "--force")
    files = [f"out/{language}.xlf" for language in expected if language != "en"]
    for file in files:
        store = xliff.xlifffile.parsefile(file)
        edit(store, lambda unit: unit.xmlelement.get("resname"),
             expected[file[-6:-4]])
    run(host, "import", project, "--from", *files)
    return expect(project, expected, "XLIFF")


def check_po(project):
    """The toolkit's programs convert to PO and back, and filter"""
    expected = tables(project)
    run(host, "export", project, "--format", "xliff", "-o", "out", "--force")
    returned = []
    for language in expected.keys() - {"en"}:
        file = f"out/{language}.xlf"
        run("xliff2po", "--progress=none", file, "de.po")
        store = pypo.pofile.parsefile("de.po")
        edit(store, lambda unit: "".join(unit.getlocations()),
             expected[language])
        returned.append(f"{language}.back.xlf")
        run("po2xliff", "--progress=none", "-t", file, "de.po", returned[-1])
        run("pofilter", "--progress=none", file, f"{language}.filtered.xlf")
        if os.path.exists(f"{language}.filtered.xlf"):
            returned.insert(0, f"{language}.filtered.xlf")
    run(host, "import", project, "--from", *returned)
    for file in returned:
        os.remove(file)
    return expect(project, expected, "PO")


projects = [f"random-{i}" for i in range(4)]
for name in projects:
    make_project(name)
for name in projects + ["museum", "hard"]:
    run(host, "import", name)
    run(host, "export", name)
for check, which in ((check_csv, projects * 5 + ["museum", "hard"]),
                     (check_xliff, projects * 5 + ["museum", "hard"]),
                     (check_po, projects[:2] + ["museum", "hard"])):
    count = sum(map(check, which))
    print(f"{check.__name__[6:]}: {count} texts are the same, seed {seed}")
