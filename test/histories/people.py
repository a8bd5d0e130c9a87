"""What people do to the files of a project, and who wrote what for which text.
Each text has a mark of its own, so none can go unnoticed."""

import json
import random

from project import RECORD, Files, marks, values

LANGUAGES = ["de", "fr", "it", "ja", "pt-BR"]


class People:
    def __init__(self, root, seed):
        self.random = random.Random(seed)
        self.choice = self.random.choice
        self.log, self.count = [], 0
        # Of texts that their authors have replaced or removed themselves
        self.dead = set()
        # What the default language's file had when the program last wrote or
        # read it. Not known after the record is lost, unsure after the program
        # had to guess.
        self.base, self.is_known, self.is_unsure = {}, False, False
        # By a translation's mark, the source texts that it may have been made
        # for; none if nobody can know
        self.made = {}
        self.blanks_allowed = False
        self.files = Files(root)
        # Where the language files are, also after the settings changed
        self.place = self.files.languages
        self.files.create(self.text(), {f"o{i}": {"components": [
            self.component() for _ in range(self.random.randint(1, 4))]}
            for i in range(self.random.randint(1, 3))})

    def chance(self, one_in):
        return self.random.randrange(one_in) == 0

    def some(self, items):
        """Some of them in one of three cases, otherwise none"""
        items = list(items)
        return self.random.sample(items, self.random.randint(1, len(items))) \
            if items and self.chance(3) else []

    def new_key(self):
        self.count += 1
        return f"k{self.count}"

    def text(self):
        self.count += 1
        return f"T{self.count}" + self.choice(
            ["", "", " é", ' "q"', " {{n}} $t(x)"])

    def component(self):
        if self.chance(3):
            return {"type": "sign", "sign": {
                "title": self.text(), "hint": self.text()}}
        return {"type": "text", "text": {"text": self.text()}}

    def texts(self):
        return self.files.texts(self.place)

    def edited(self, before, after):
        before, after = marks(before), marks(after)
        self.dead = (self.dead | before - after) - (after - before)

    def artist(self):
        document = self.files.document()
        before = marks(document)
        edit = self.random.choices(
            [self.change_text, self.change_parts, self.change_key,
             self.change_settings], [4, 6, 1, 2])[0]
        self.log.append(f"artist: {edit(document)}")
        self.files.save(document)
        self.edited(before, document)

    def change_text(self, document):
        holder, name, key = self.choice(list(values(document)))
        new = self.text()
        # Of an empty name no archive could be made
        if name != "name":
            other = self.choice(list(self.files.sources().values()) or [new])
            new = self.random.choices(
                [new, self.base.get(key) or new, other, ""], [30, 4, 2, 1])[0]
        # A blank translation is meant then
        self.blanks_allowed |= not new
        holder[name] = new
        return f"{key} = {new!r}"

    def change_parts(self, document):
        thing = self.choice(list(document["objects"]))
        parts = document["objects"][thing]["components"]
        at = self.random.randrange(len(parts) + 1)
        if len(parts) < 2 or len(parts) < 7 and self.chance(2):
            parts.insert(at, json.loads(json.dumps(self.choice(parts)))
                         if self.chance(6) else self.component())
        elif self.chance(3):
            self.random.shuffle(parts)
        else:
            parts.pop(at - 1)
        return f"{thing} has {parts}"

    def change_key(self, document):
        holder, name, key = self.choice(list(values(document)))
        if self.chance(2):
            holder[name + "_translate"] = not holder.get(
                name + "_translate", True)
        elif not holder.pop(name + "_term", None):
            holder[name + "_term"] = self.new_key()
        return f"{key} has {holder}"

    def change_settings(self, document):
        settings = document["settings"]
        if self.chance(2):
            settings["project"]["name"] = self.text()
        else:
            settings["localization"]["enableZipCompression"] ^= True
        return f"has {settings}"

    def translator(self):
        texts = self.texts()
        code = self.choice(["en"] + 2 * LANGUAGES[:2] + LANGUAGES)
        before = texts.get(code, {})
        after = dict(before)
        for _ in range(self.choice([1, 1, 2, 5, 20])):
            self.translate(code, after, texts.get("en", {}))
        self.files.write(self.place, code, after)
        self.edited(before, after)
        self.log.append(f"{code}.json: " + str({
            key: text for key, text in after.items()
            if text != before.get(key, 0)}))

    def translate(self, code, texts, default):
        key = self.choice(self.random.choices(
            [list(default), list(self.files.sources()),
             [f"unknown{self.count}"]], [20, 2, 1])[0] or ["unknown"])
        if self.chance(12) and (code != "en" or "-" in key):
            texts[key] = self.choice(["", "None", None])
            # Those that read like the source are meant
            self.blanks_allowed |= code == "en"
            return
        texts[key] = new = self.text()
        beside = {default.get(key), self.base.get(key)}
        if self.is_known and not self.is_unsure and None not in beside and \
                code in self.files.codes():
            self.made[min(marks(new))] = beside

    def lose_record(self):
        self.log.append("the record is lost")
        (self.files.languages / RECORD).unlink(missing_ok=True)
        self.base, self.is_known = {}, False
        self.made.clear()

    def tidy(self):
        """Somebody removes the files that aren't read anymore"""
        former, self.place = self.place, self.files.place()
        if former != self.place:
            self.edited(self.files.texts(former), self.texts())
            for path in [former] if former.suffix else former.glob("*.json"):
                path.unlink(missing_ok=True)
