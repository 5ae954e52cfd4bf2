"""Fails where a text for people is shown in English, or wrongly, in another language.

Every text that the sources have translated must be in the files that scripts/translations keeps, be finished, hold what
is put into it, and have a key where the English one has. A text that lupdate lists under another class than Qt looks it up by is
never found, so that is refused, too. So is a sentence that says why something failed and that nobody translates.
"""

import collections
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

# What a translation has as often as its source. An ampersand that stands before a letter makes it a key.
KEPT = [
    ("placeholders", re.compile(r"%L?\d+|%n|\{\w+\}|\\\d|\(\*\.\w+")),
    ("tags", re.compile(r"</?\w+>")),
    ("keys", re.compile(r"&\w")),
    ("lines", re.compile(r"\n")),
    ("blanks at the ends", re.compile(r"^ +| +$")),
    ("dots or colon at the end", re.compile(r"(?:\.\.\.|:)$")),
]

# A sentence as the argument of a refusal, or as a reason that is kept.
SPOKEN = ["files", "fleet", "repository"]
NESTED = r"(?:[^()\"]|\((?:[^()\"]|\([^()\"]*\))*\))*"
SENTENCE = re.compile(r"(?:\b(?:refused|refuse|refusal|fail|failAt|failure|outcomeAt)\(" + NESTED + "|"
                      r"\b(?:error|reason|fault|warning|refusal) \+?=\s+)\"(?=(?:[^\"]* ){2})((?:[^\"\\]|\\.)*)\"")


def untranslated(project):
    for folder in SPOKEN:
        for file in sorted(pathlib.Path(project, folder).rglob("*.cpp")):
            text = file.read_text(encoding="utf-8")
            for found in SENTENCE.finditer(text):
                yield f"{file.relative_to(project)}:{text.count(chr(10), 0, found.start()) + 1}: {found.group(1)!r}"


def messages(file):
    """Each message of a file of translations by its class and source."""
    found = {}
    for context in xml.etree.ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            key = (context.findtext("name"), message.findtext("source"), message.findtext("comment"))
            found[key] = message.find("translation")
    return found


def texts_of(translation):
    forms = translation.findall("numerusform")
    return [form.text or "" for form in forms] if forms else [translation.text or ""]


def kept_parts(kind, pattern, text):
    return collections.Counter("a key" if kind == "keys" else part for part in pattern.findall(text))


def complaints(source, translation):
    if translation.get("type") == "unfinished" or not all(texts_of(translation)):
        yield "it is not translated"
        return
    for text in texts_of(translation):
        for kind, pattern in KEPT:
            if kept_parts(kind, pattern, source) != kept_parts(kind, pattern, text):
                yield f"other {kind}: {text!r}"


def main(project, lupdate):
    wrong = checked = 0
    with tempfile.TemporaryDirectory() as folder:
        told = subprocess.run([pathlib.Path(project, "scripts/translations"), folder], check=True,
                              env={**os.environ, "LUPDATE": lupdate}, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, encoding="utf-8").stdout
        updated = {file.relative_to(folder): messages(file) for file in pathlib.Path(folder).rglob("*.ts")}
    for sentence in untranslated(project):
        wrong += 1
        print(f"{sentence}: it is said in English only")
    for line in re.findall(r".*(?:lacks Q_OBJECT|Qualifying with unknown).*", told):
        wrong += 1
        print(f"{line}: its texts are not found under the name they are listed by")
    for file, now in sorted(updated.items()):
        for context, source, comment in messages(pathlib.Path(project, file)).keys() - now.keys():
            wrong += 1
            print(f"{file.name}: {context}: {source!r}: no source has it any more")
        for (context, source, comment), translation in now.items():
            checked += 1
            for problem in complaints(source, translation):
                wrong += 1
                print(f"{file.name}: {context}: {source!r}: {problem}")
    print(f"{checked} texts checked, {wrong} that are not translated as they must be")
    if wrong:
        print("scripts/translations brings the files up to date; then translate what is unfinished there")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
