"""The rules that the source tree keeps, as functions from a tree to what breaks them.

Each rule takes the root of a checkout and returns one line a breach, "file:line: what is wrong".
"""

import os
import pathlib
import re
from collections.abc import Iterator

LINES_AT_MOST = 400

SUBSYSTEMS = frozenset(
    "shell settings media lyrics clipboard sync files calendar timer monitoring control ui".split()
)

# What a subsystem may include of other subsystems: a folder, or a single header. All may use these:
SHARED = ("ui/", "settings/", "shell/NotchModule.h")
# and these the ones named, beyond that. A new line here is a decision about the architecture.
ALLOWED = {
    "media": ("clipboard/history/SourceApp.h",),
    "settings": ("clipboard/detection/ColorParser.h",),
}

# Headers of the desktop's own libraries, which only the Linux side of the ports may know.
DESKTOP_HEADER = re.compile(
    r"(xcb/|X11/|wayland|xkbcommon/|gio/|glib|gobject/|pulse/|canberra\.h|QtDBus/|QDBus|qpa/|sys/inotify\.h)"
)

# A symbol's name in a view (a Symbol's own name, or a property that is handed on to one) or in a module.
SYMBOL_USE = re.compile(
    r"(\bSymbol \{[^{}]*?\n\s*name: [^\n]*|\b(symbol|iconSystemName): [^\n]*"
    r"|\biconSystemName\(\) const override[^\n]*)"
)

# Where time, processes, buses and the environment come from; they come in through ports instead.
WORLD = re.compile(
    r"\b(QDateTime::currentDateTime\w*|QDate::currentDate|QTime::currentTime|system_clock::now"
    r"|steady_clock::now|QTimer|QBasicTimer|QProcess|QDBusConnection::(?:session|system)Bus|qgetenv"
    r"|qEnvironmentVariable\w*|getenv)\b"
)
ABSOLUTE_PATH = re.compile(
    r'"(?:file://)?/(?:bin|boot|dev|etc|home|lib|lib64|media|mnt|opt|proc|root|run|sbin|srv|sys|tmp|usr|var)'
    r'(?:/[^"]*)?"'
)

# Put together here, so that the rule does not find itself.
UNFINISHED = re.compile(r"\b(" + "|".join(("TO" + "DO", "FIX" + "ME", "XX" + "X")) + r")\b")

SOURCE_SUFFIXES = (".cpp", ".h", ".qml", ".py", ".sh", ".cmake")
CODE_SUFFIXES = (".cpp", ".h")
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
STRING_OR_COMMENT = re.compile(
    r"""(?P<raw>R"(?P<tag>[^()\\\s]{0,16})\(.*?\)(?P=tag)")
      | (?P<string>"(?:\\.|[^"\\\n])*")
      | (?P<char>(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+')
      | (?P<comment>//[^\n]*|/\*.*?\*/)""",
    re.DOTALL | re.VERBOSE,
)


def _files(root: pathlib.Path) -> Iterator[pathlib.Path]:
    """Every file of the checkout, without what is built or belongs to git."""
    for folder, subfolders, names in os.walk(root):
        at_top = pathlib.Path(folder) == root
        subfolders[:] = sorted(
            name
            for name in subfolders
            if name not in (".git", "__pycache__", ".pytest_cache")
            and not (at_top and name in ("build", "out"))
        )
        # In a work tree of git's, ".git" is a file.
        yield from (pathlib.Path(folder, name) for name in sorted(names) if name != ".git")


def _product_code(root: pathlib.Path) -> Iterator[tuple[pathlib.PurePosixPath, str]]:
    """Path from the root and text of each C++ file that goes into the program."""
    for folder in ("Quillbar", "QuillbarKit"):
        for path in _files(root / folder):
            if path.suffix in CODE_SUFFIXES:
                yield pathlib.PurePosixPath(path.relative_to(root)), path.read_text(encoding="utf-8")


def _line(text: str, offset: int) -> int:
    return text.count("\n", 0, offset) + 1


def _blank(kinds: tuple[str, ...], text: str) -> str:
    """The text with these kinds of token blanked out, every line where it was."""

    def replace(match: re.Match[str]) -> str:
        if any(match.group(kind) for kind in kinds):
            return re.sub(r"[^\n]", " ", match.group())
        return match.group()

    return STRING_OR_COMMENT.sub(replace, text)


def layer_of(path: pathlib.PurePosixPath) -> str:
    """The layer that a file of the product belongs to.

    "support", "platform", "linux", a subsystem's name, "controller" or "executable"; "" for a folder that has
    no place. A subsystem's wiring, <Subsystem>Wiring.*, is the controller's share that stands beside it.
    """
    parts = path.parts
    if parts[0] == "Quillbar":
        return "executable"
    if len(parts) == 2:
        return "controller"
    folder = parts[1]
    if folder == "support":
        return "support"
    if folder == "platform":
        return "linux" if len(parts) > 3 and parts[2] == "linux" else "platform" if len(parts) == 3 else ""
    if folder in SUBSYSTEMS:
        return "controller" if path.stem.endswith("Wiring") else folder
    return ""


def _may_include(layer: str, target: pathlib.PurePosixPath) -> bool:
    """Whether a file of the layer may include that header of the kit."""
    goal = layer_of(pathlib.PurePosixPath("QuillbarKit") / target)
    if layer == "executable":
        return goal != ""
    if layer == "controller":
        return goal in ("support", "platform", "controller") or goal in SUBSYSTEMS
    if layer == "support":
        return goal == "support"
    if layer == "platform":
        return goal in ("support", "platform")
    if layer == "linux":
        return goal in ("support", "platform", "linux")
    if goal in ("support", "platform", layer):
        return True
    allowed = SHARED + ALLOWED.get(layer, ())
    return goal in SUBSYSTEMS and any(
        str(target) == name or (name.endswith("/") and str(target).startswith(name)) for name in allowed
    )


def include_directions(root: pathlib.Path) -> list[str]:
    """support <- platform <- subsystems <- controller <- executable, and nothing the other way round."""
    breaches = []
    for path, text in _product_code(root):
        layer = layer_of(path)
        if not layer:
            breaches.append(f"{path}:1: this folder has no place among the layers")
            continue
        for match in INCLUDE.finditer(_blank(("comment",), text)):
            quoted, system = match.groups()
            where = f"{path}:{_line(text, match.start(1 if quoted else 2))}"
            if system is not None:
                if layer != "linux" and DESKTOP_HEADER.match(system):
                    breaches.append(f"{where}: only platform/linux may include <{system}>")
            elif quoted.endswith(".moc") or quoted.startswith("moc_"):
                continue
            elif "/" in quoted or (root / "QuillbarKit" / quoted).is_file():
                if not _may_include(layer, pathlib.PurePosixPath(quoted)):
                    breaches.append(f'{where}: the {layer} layer may not include "{quoted}"')
            elif not (layer == "executable" and (root / "Quillbar" / quoted).is_file()):
                breaches.append(f'{where}: "{quoted}" is to be written from the root of QuillbarKit')
    return breaches


def support_without_gui(root: pathlib.Path, qt_headers: pathlib.Path) -> list[str]:
    """support/ builds on Qt Core alone. `qt_headers` is the folder that holds QtCore/, QtGui/ ..."""
    breaches = []
    for path, text in _product_code(root):
        if layer_of(path) != "support":
            continue
        for match in INCLUDE.finditer(_blank(("comment",), text)):
            name = match.group(2) or ""
            if not re.match(r"Q[A-Z]|Qt|q[a-z]+\.h$", name):
                continue
            if not (qt_headers / "QtCore" / name.removeprefix("QtCore/")).is_file():
                breaches.append(f"{path}:{_line(text, match.start(2))}: <{name}> is not of Qt Core")
    return breaches


def world_through_ports(root: pathlib.Path) -> list[str]:
    """Above the platform no clock, timer, process, bus, environment or absolute path is reached directly."""
    breaches = []
    for path, text in _product_code(root):
        if layer_of(path) in ("support", "platform", "linux"):
            continue
        for match in WORLD.finditer(_blank(("comment", "string", "raw"), text)):
            breaches.append(
                f"{path}:{_line(text, match.start())}: {match.group()} is for support and platform"
            )
        for match in ABSOLUTE_PATH.finditer(_blank(("comment",), text)):
            breaches.append(f"{path}:{_line(text, match.start())}: a path of the machine: {match.group()}")
    return breaches


def file_sizes(root: pathlib.Path) -> list[str]:
    """A source file past the limit has a second responsibility to look for."""
    breaches = []
    for path in _files(root):
        if path.suffix in SOURCE_SUFFIXES:
            lines = path.read_text(encoding="utf-8").count("\n")
            if lines > LINES_AT_MOST:
                breaches.append(f"{path.relative_to(root)}:{lines}: more than {LINES_AT_MOST} lines")
    return breaches


def nothing_unfinished(root: pathlib.Path) -> list[str]:
    """What is left to do stands in an issue, not in the tree. Test data may hold any bytes."""
    breaches = []
    for path in _files(root):
        if path.is_relative_to(root / "tests" / "data"):
            continue
        try:
            text = path.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue
        for match in UNFINISHED.finditer(text):
            breaches.append(f"{path.relative_to(root)}:{_line(text, match.start())}: {match.group()}")
    return breaches


def modules_tested(root: pathlib.Path) -> list[str]:
    """A module of the panel has tests of its service, of its views and of the road through the whole."""
    breaches = []
    for header in sorted((root / "QuillbarKit").glob("*/*Module.h")):
        if not re.search(r":\s*public\s+NotchModule\b", header.read_text(encoding="utf-8")):
            continue
        subsystem, name = header.parent.name, header.stem.removesuffix("Module")
        for wanted in (
            f"tests/unit/{subsystem}/*.cpp",
            f"tests/views/{name}ViewsTest.cpp",
            f"tests/desktop/test_{_snake(name)}.py",
        ):
            if not any(root.glob(wanted)):
                breaches.append(f"{header.relative_to(root)}: nothing matches {wanted}")
    return breaches


def _snake(name: str) -> str:
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", name).lower()


def symbols_known(root: pathlib.Path) -> list[str]:
    """Every symbol that a view or module names has an icon; a view with an unknown one would stop the
    process only when it is first drawn."""
    table = root / "QuillbarKit" / "ui" / "symbols.txt"
    lines = table.read_text(encoding="utf-8").splitlines() if table.exists() else []
    known = {line.split()[0] for line in lines if line and not line.startswith("#")}
    breaches = []
    for path in sorted((root / "QuillbarKit").rglob("*")):
        if path.suffix not in (".qml", ".h", ".cpp"):
            continue
        text = path.read_text(encoding="utf-8")
        for match in SYMBOL_USE.finditer(text):
            for literal in re.finditer(r'"([^"]+)"', match.group().splitlines()[-1]):
                if literal.group(1) not in known:
                    where = f"{path.relative_to(root)}:{_line(text, match.start())}"
                    breaches.append(f"{where}: no icon for the symbol {literal.group()}")
    return breaches
