"""Compares tables of translations from before and after a journey through PO
files, and has the toolkit read and write language files in its i18next
dialects.

    compare.py BEFORE AFTER LANGUAGE_FILE...

BEFORE and AFTER are outputs of languageTables.
"""

import json
import sys

from translate.storage import jsonl10n


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def differences(before, after):
    """What docs/language-files.md doesn't tell to expect"""
    for key in before.keys() | after.keys():
        # An empty text in a PO file is no translation
        expected = before.get(key) or None
        if after.get(key) != expected:
            yield key, expected, after.get(key)


def check_tables(before, after):
    wrong = compared = 0
    for language in before:
        # The source texts aren't taken along
        if language == "en":
            continue
        compared += len(before[language])
        for key, expected, got in differences(
            before[language], after.get(language, {})
        ):
            wrong += 1
            print(f"{language}: {key!r} is {got!r}, not {expected!r}",
                  file=sys.stderr)
    print(f"{compared - wrong} of {compared} texts are the same after PO")
    return compared and not wrong


def check_dialect(dialect, path):
    terms = load(path)["translation"]
    with open(path, "rb") as file:
        store = dialect(file)
    written = json.loads(bytes(store))["translation"]
    # It writes null as a text, which the page warns of
    lost = [key for key, text in terms.items()
            if text is not None and written.get(key) != text]
    if lost:
        print(f"{dialect.__name__} changes {lost} of {path}", file=sys.stderr)
    return terms and not lost


tables_file, after_file, *language_files = sys.argv[1:]
fine = check_tables(load(tables_file), load(after_file))
for dialect in jsonl10n.I18NextFile, jsonl10n.I18NextV4File:
    read = [check_dialect(dialect, path) for path in language_files]
    fine = fine and all(read)
    print(f"{dialect.__name__} reads and writes {sum(map(bool, read))} of "
          f"{len(read)} files alike")
sys.exit(0 if fine else 1)
