"""Fails where a widget may take a text of people, such as a name, a path or a value, for markup or for keys.

Qt renders any text that looks like HTML in tool tips, labels and message boxes, and follows what it names. So all
of them are made by the helpers that show a text as it is; what is written in the sources may be as it is.
"""

import pathlib
import re
import sys

FOLDERS = ("app", "desk", "host", "widgets")
HELPERS = "host/Utilities/ModelViews/Widgets/Plain"  # they make the rest plain

# A text of the sources, with nothing put into it.
LITERAL = re.compile(r'^(?:tr|translate|QStringLiteral|QLatin1String|QString::fromLatin1|QCoreApplication::translate)'
                     r'\((?:\s*"(?:[^"\\]|\\.)*"\s*,?)+\)$|^QString\(\)$|^\{\}$')

# The beginning of a call, which of its arguments is a text, and what may be there beside a text of the sources.
CALLS = [
    (re.compile(r"\bsetToolTip\("), -1, re.compile(r"\btoolTipText\("), "a tool tip is made by toolTipText"),
    (re.compile(r"\bQToolTip::showText\("), 1, re.compile(r"\btoolTipText\("), "a tool tip is made by toolTipText"),
    (re.compile(r"\b(?:setStatusTip|setWhatsThis|setHtml|insertHtml|appendHtml)\("), 0, None,
     "only a text of the sources may be markup"),
    (re.compile(r"\bsetInformativeText\("), 0, None, "PlainMessageBox::setInformation shows a text as it is"),
    (re.compile(r"\baddAction\((?=[^)])"), 0,
     re.compile(r"menuText\(|^(?:\w*[aA]ction|show\w+|\w+->toggleViewAction\(\)|text|allText|QString::fromLatin1\(text\))$"),
     "a menu's entry is made by menuText"),
]
ICON = re.compile(r"^(?:QIcon|iconOf)\(")  # it may come before the text
# What must not be used at all, but by the helpers.
BANNED = [
    (re.compile(r"\bnew QLabel\b|: public QLabel\b"), "a label is a PlainLabel"),
    (re.compile(r"\bQMessageBox::(?:question|warning|information|critical)\(|\bnew QMessageBox\b|"
                r"<QMessageBox>(?=[\s({])|\bQMessageBox \w+[({]|: public QMessageBox\b"), "a message box is a PlainMessageBox"),
    (re.compile(r"\bQFileDialog::get\w+\(|\bQFileDialog \w+[({]|<QFileDialog>(?=[\s({])|\bnew QFileDialog\b|"
                r": public QFileDialog\b"), "a file dialog is a PlainFileDialog"),
    (re.compile(r"\bQErrorMessage\b|\bsetText\w*\(\s*Qt::(?:RichText|AutoText|MarkdownText)"),
     "texts are shown as they are"),
]
ABOUT = re.compile(r"\bQMessageBox::about\(")


def without_comments(text):
    """The text with comments and include lines blanked, so that places stay."""
    blank = lambda match: re.sub(r"[^\n]", " ", match.group(0)) if match.group(0)[0] in "/#" else match.group(0)
    return re.sub(r'//[^\n]*|#include[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"', blank, text, flags=re.S)


def arguments_at(text, begin):
    """The arguments of the call whose bracket opens before the place."""
    arguments, depth, start, i = [], 0, begin, begin
    while i < len(text):
        letter = text[i]
        if letter == '"':
            i = re.compile(r'"(?:[^"\\]|\\.)*"').match(text, i).end() - 1
        elif letter in "([{":
            depth += 1
        elif letter in ")]}" and depth:
            depth -= 1
        elif letter == ")" or (letter == "," and not depth):
            arguments.append(" ".join(text[start:i].split()))
            start = i + 1
            if letter == ")":
                break
        i += 1
    return arguments


def complaints(path, text):
    code = without_comments(text)
    if path.startswith(HELPERS):
        return
    for begin, which, allowed, problem in CALLS:
        for match in begin.finditer(code):
            arguments = arguments_at(code, match.end())
            if arguments and ICON.match(arguments[0]):
                arguments = arguments[1:]
            argument = arguments[which] if -len(arguments) <= which < len(arguments) else ""
            if not LITERAL.match(argument) and not (allowed and allowed.search(argument)):
                yield match.start(), problem
    for banned, problem in BANNED:
        for match in banned.finditer(code):
            yield match.start(), problem
    for match in re.finditer(r"case Qt::ToolTipRole:|== Qt::ToolTipRole", code):
        if "toolTipText(" not in code:
            yield match.start(), "a tool tip is made by toolTipText"
    for match in ABOUT.finditer(code):  # markup of the sources
        body = code[code.rfind("\n}", 0, match.start()):match.start()]
        for argument in re.findall(r"\.arg\((.*?)\)[;\s]", body, flags=re.S):
            if argument.count("toHtmlEscaped") < 1 + argument.count(",\n"):
                yield match.start(), "what is put into markup is escaped"


def form_complaints(text, sources):
    """Labels of a form that the sources give another text."""
    for match in re.finditer(r'<widget class="QLabel" name="(\w+)">(.*?)</widget>', text, flags=re.S):
        if re.search(r"\b" + match.group(1) + r"->setText\((?!tr\()", sources) and "Qt::PlainText" not in match.group(2):
            yield match.start(), "a label that is given a text has the textFormat Qt::PlainText"


def main(project):
    files = [file for folder in FOLDERS for file in sorted(pathlib.Path(project, folder).rglob("*"))]
    checked = wrong = 0
    for file in files:
        if file.suffix not in (".h", ".cpp", ".ui"):
            continue
        checked += 1
        path = file.relative_to(project).as_posix()
        text = file.read_text(encoding="utf-8")
        if file.suffix == ".ui":
            source = file.with_suffix(".cpp")
            found = form_complaints(text, source.read_text(encoding="utf-8") if source.exists() else "")
        else:
            found = complaints(path, text)
        for place, problem in found:
            wrong += 1
            line = text.count("\n", 0, place) + 1
            print(f"{path}:{line}: {text.splitlines()[line - 1].strip()}: {problem}")
    print(f"{checked} files checked, {wrong} places where a text may be taken for something else")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
