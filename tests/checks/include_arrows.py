"""Fails on an include line that crosses the house's walls: each folder may include only what ROOMS allows it."""

import pathlib
import re
import sys

CORE = ["host/FrameworkCore", "host/Shared/Logging"]
MODEL_VIEWS = "host/Utilities/ModelViews"
MODEL_WIDGETS = f"{MODEL_VIEWS}/Widgets"
HOST = ["host", MODEL_VIEWS, MODEL_WIDGETS]  # without the rooms in which its models and dialogs are made

# A folder each; none knows another.
DOCUMENTS = "repository/documents"
PROJECT = pathlib.Path(__file__).resolve().parents[2]
FORMATS = [f"{DOCUMENTS}/{folder.name}" for folder in sorted((PROJECT / DOCUMENTS).iterdir())
           if folder.is_dir() and folder.name != "common"]

# Folder, the most deeply nested first, to the folders that its files may include from.
ROOMS = {
    "files": ["files", "host/FrameworkCore/Values"],
    "host/FrameworkCore": ["host/FrameworkCore"],
    "host/Shared/Logging": ["host/FrameworkCore", "host/Shared/Logging"],
    f"{MODEL_VIEWS}/tree": [f"{MODEL_VIEWS}/tree", MODEL_VIEWS, "host"],
    f"{MODEL_VIEWS}/monitor": [f"{MODEL_VIEWS}/monitor", f"{MODEL_VIEWS}/tree", MODEL_VIEWS, "host"],
    f"{MODEL_VIEWS}/subtrees": [f"{MODEL_VIEWS}/subtrees", *HOST],
    f"{MODEL_VIEWS}/editors": [f"{MODEL_VIEWS}/editors", *HOST],
    f"{MODEL_VIEWS}/dialogs": [f"{MODEL_VIEWS}/dialogs", f"{MODEL_VIEWS}/editors", *HOST],
    MODEL_WIDGETS: [MODEL_WIDGETS, MODEL_VIEWS, "host"],
    MODEL_VIEWS: [MODEL_VIEWS, "host", "files"],
    "host/Utilities": ["host"],
    "host/Shared/Completer": HOST,
    "host": ["host", "files"],
    "repository/documents/common": ["repository/documents/common", "host/FrameworkCore/Values"],
    **{room: [room, "repository/documents/common", "host/FrameworkCore/Values"] for room in FORMATS},
    "repository/documents": ["repository/documents", "host/FrameworkCore/Values"],
    "repository/common": ["repository/common", "repository/documents/common", *CORE],
    "repository/notification": ["repository/notification", "repository/common", *CORE],
    "repository/validation": ["repository/validation", "repository/common", *CORE],
    "repository/merge": ["repository/merge", "repository/documents", *CORE],
    "repository/backends": ["repository/backends", "repository/merge", "repository/common", "repository/documents", "files",
                            *CORE],
    "repository/store": ["repository/store", "repository/backends", "repository/notification", "repository/validation",
                         "repository/common", "repository/documents", *CORE],
    "repository/history": ["repository/history", "repository/store", "repository/backends", "repository/common", *CORE],
    "repository/transaction": ["repository/transaction", "repository/history", "repository/store", "repository/backends",
                               "repository/common", "repository/documents/common", *CORE],
    "repository/operations": ["repository/operations", "repository/transaction", "repository/history", "repository/store",
                              "repository/backends", "repository/common", *CORE],
    "repository/transfer": ["repository/transfer", "repository/operations", "repository/transaction", "repository/store",
                            "repository/backends", "repository/common", "repository/documents", *CORE],
    "repository/search": ["repository/search", "repository/operations", "repository/transaction", "repository/history",
                          "repository/store", "repository/backends", "repository/validation", "repository/common", *CORE],
    "repository/fleet": ["repository/fleet", "repository/transaction", "repository/store", "repository/backends",
                         "repository/merge", "repository/common", "repository/documents", *CORE],
    "repository/mounting": ["repository/mounting", "repository/fleet", "repository/operations",
                            "repository/transaction", "repository/history",
                            "repository/store", "repository/backends", "repository/common", "repository/documents", "files",
                            *CORE],
    "repository": ["repository", "files", "host/FrameworkCore", "host/Shared/Logging"],
    "fleet": ["fleet", "repository/fleet", "host/FrameworkCore/Values"],
    "app": ["app", "widgets", *HOST],
    "widgets": ["app", "widgets", *HOST],
    "desk/common": ["desk/common", *HOST],
    "desk/plugins": ["desk/plugins", "desk/common", *HOST, "repository", "files"],
    "desk/language": ["desk/language", *HOST],
    "desk/log": ["desk/log", "desk/common", *HOST, "repository/common"],
    "desk/files": ["desk/files", "desk/common", *HOST, "repository", "files"],
    "desk/find": ["desk/find", "desk/files", "desk/common", *HOST],
    "desk/session": ["desk/session", "desk/files", "desk/common", *HOST, "repository", "files"],
    "desk/places": ["desk/places", "desk/files", "desk/common", *HOST, "repository"],
    "desk/changes": ["desk/changes", "desk/files", "desk/common", *HOST, "repository"],
    "desk/text": ["desk/text", "desk/places", "desk/common", *HOST, "repository"],
    "desk/window": ["desk/window", "desk/session", "desk/places", "desk/changes", "desk/text", "desk/find", "desk/plugins",
                    "desk/language", "desk/log", "desk/files", "desk/common", *HOST, "repository"],
    "desk": ["desk", *HOST, "repository", "files"],
    "fuzz/program": ["fuzz", "cli", *HOST, "repository", "files"],
    "fuzz": ["fuzz", "repository/documents", "host/FrameworkCore/Values"],
    "cli": ["cli", "repository", "files", "host/FrameworkCore", "host/Shared/Logging"],
}

# What is compiled without Qt, so that fuzzers see all of it.
QT_FREE_ROOMS = ["files", "fuzz", *(room for room in ROOMS if room.startswith("repository/documents"))]
QT_FREE_FILES = tuple(
    f"host/FrameworkCore/Values/{unit}." for unit in ("IsoText", "PrintableText", "Text", "Utf8", "Value", "ValueText")
)
# What only programs with a display may include.
WIDGETS = re.compile(r"<Q(Widget|Application|Icon|Pixmap|Gui|Main|Dialog|Line|Combo|Tree|Table|Abstract(Button|ItemView))")
DISPLAY_FREE = ["files/", "host/FrameworkCore/", "host/Shared/Logging/", "repository/", "cli/"]

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|(<[^>]+>))')


def room_of(path):
    return next((room for room in ROOMS if path.startswith(room + "/")), None)


def is_by_name(room):
    """Whether a room is allowed only by its own name, not by that of a folder above it."""
    return room.startswith(MODEL_VIEWS)


def complaint(path, quoted, angled):
    """What is wrong with one include line of a file; None when it is allowed."""
    if angled:
        if angled.startswith("<Q") and (room_of(path) in QT_FREE_ROOMS or path.startswith(QT_FREE_FILES)):
            return "is compiled without Qt"
        if WIDGETS.match(angled) and any(path.startswith(start) for start in DISPLAY_FREE):
            return "needs no display"
        return None
    if quoted.startswith("ui_") or quoted.endswith(".moc"):
        return None
    if "/" not in quoted:
        return "includes are written from the project's root"
    allowed = ROOMS[room_of(path)]
    room = room_of(quoted) or ""
    if room not in allowed and (is_by_name(room) or not any(quoted.startswith(other + "/") for other in allowed)):
        return "may include only from " + ", ".join(allowed)
    return None


def circle_from(room, way=()):
    """The rooms of a circle that can be come to from the room; None when there is none."""
    if room in way:
        return (*way[way.index(room):], room)
    above = (other for other in ROOMS if room.startswith(other + "/") and not is_by_name(other))
    others = (other for other in ROOMS.get(room, []) if other not in (room, *above))
    return next(filter(None, (circle_from(other, (*way, room)) for other in others)), None)


def main(project):
    checked = 0
    wrong = 0
    for room in ROOMS:
        circle = room.startswith(("repository/", "desk/", "host/Utilities")) and circle_from(room)
        if circle:
            wrong += 1
            print("a circle: " + " -> ".join(circle))
    for top in sorted({room.split("/")[0] for room in ROOMS}):
        for file in sorted(pathlib.Path(project, top).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            path = file.relative_to(project).as_posix()
            checked += 1
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                match = INCLUDE.match(line)
                problem = match and complaint(path, *match.groups())
                if problem:
                    wrong += 1
                    print(f"{path}:{number}: {line.strip()}: {problem}")
    print(f"{checked} files checked, {wrong} includes that are not allowed")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
