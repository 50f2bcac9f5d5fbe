#!/usr/bin/env python3
"""Which sources can be compiled as one: those whose names of their own mean one thing.

    cmake/units.py FOLDER SOURCE...     prints the number of its unit and a source, line by line

Most of the time of a compiler goes into the headers of other libraries, and into the
templates of these: sources that reach the same ones come together. They are put together
first fit, up to a length that still compiles in little memory. Names of their own are
those of unnamed namespaces and of static functions; no other source of a unit may use
one, nor a header that it includes declare one, so that a call means what it means where
the source is compiled alone. pelgrin_units() in PelgrinTargets.cmake asks for this.
"""
import functools
import os
import re
import sys

# Lines of a unit: what two processors compile side by side in little time and memory.
MOST_LINES = 4000
# Headers of other libraries that bring much to compile, those that bring most in front.
HEAVY = ("CLI/", "nlohmann/json.hpp", "spdlog/", "fmt/", "OpenMS/")
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# Where headers of ours are found, beside the folder of a source.
ROOMS = [os.path.join(ROOT, room) for room in ("include", "src", "apps/pelgrin", "tests")]
_TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\s\\"]*)\(.*?\)(?P=mark)"'
    r'|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)
_MACROS = re.compile(r"^(?:TEST(?:_[FP])?|TYPED_TEST\w*|INSTANTIATE_\w+)$")


@functools.lru_cache(maxsize=None)
def read(path):
    """The headers that a file includes, and its text without comments and literals."""
    with open(path, encoding="utf-8") as file:
        text = file.read()
    headers = re.findall(r'^#include [<"]([^>"]+)', text, re.M)
    text = _TOKEN.sub(lambda found: " " if found[0].startswith("/") else "0", text)
    return headers, re.sub(r"^#(?!define).*(?:\\\n.*)*", "", text, flags=re.M)


def own_names(text):
    """The names that a source keeps for itself, each with what may stand twice: an alias."""
    own = dict.fromkeys(re.findall(r"^static .*?\b(\w+)\(", text, re.M))
    # The end of a namespace is a brace with a comment behind it.
    for block in re.findall(r"^namespace \{(.*?)^\} +$", text, re.S | re.M):
        for members in re.findall(r"\benum (?!class\b)[^{;]*\{([^}]*)\}", block):
            own.update(dict.fromkeys(re.findall(r"\w+", members)))
        # What else stands in braces is no name of the namespace.
        while (shorter := re.sub(r"\{[^{}]*\}", ";", block)) != block:
            block = shorter
        for statement in block.split(";"):
            statement = " ".join(statement.split())
            if name := _name_of(statement):
                own[name] = statement if statement.startswith("using") else None
    return own


def _name_of(statement):
    """What a statement of a namespace declares, if anything."""
    if statement.startswith(("namespace", "static_assert")):
        return None
    if statement.startswith("using"):
        alias = re.match(r"using (\w+) =", statement)
        return alias and alias[1]
    if kind := re.match(r"(?:template <.*?> ?)?(?:struct|class|enum(?: class)?) (\w+)", statement):
        return kind[1]
    call = re.search(r"(\w+) ?\(", statement)
    value = statement.find("=")
    if call and not 0 <= value < call.start():
        if call[1].startswith("MATCHER"):
            return statement[call.end():].split(",")[0].strip()
        return None if _MACROS.match(call[1]) else call[1]
    names = re.findall(r"[A-Za-z_]\w*", re.sub(r"\[.*?\]", "", statement.split("=")[0]))
    return names[-1] if names else None


@functools.lru_cache(maxsize=None)
def declared(header):
    """The names that a header declares in a namespace, or as macros."""
    text = read(header)[1]
    types = re.findall(r"^(?:struct|class|enum(?: class)?|using|#define) (\w+)", text, re.M)
    functions = re.findall(r"^(?!return\b)[\w\[][^;{}()=]*?\b(\w+)\(", text, re.M)
    values = re.findall(r"^(?:inline |static )*const\w* [^;()]*?\b(\w+)(?:\[\w*\])? *[={]",
                        text, re.M)
    return frozenset(types + functions + values)


class Source:
    """A source as a unit has to know it."""

    def __init__(self, name, folder):
        path = os.path.join(folder, name)
        _, text = read(path)
        with open(path, encoding="utf-8") as file:
            self.lines = file.read().count("\n")
        self.own = own_names(text)
        # Not what is a member.
        self.used = set(re.findall(r"(?<![.\w>:])[A-Za-z_]\w*", text))
        self.name = name
        self.heavy = set()
        self._reach(path, folder, {path})

    def _reach(self, path, folder, seen):
        headers, _ = read(path)
        self.heavy |= {heavy for name in headers for heavy in HEAVY if name.startswith(heavy)}
        for name in headers:
            for place in (os.path.dirname(path), folder, *ROOMS):
                header = os.path.normpath(os.path.join(place, name))
                if header not in seen and os.path.exists(header):
                    seen.add(header)
                    self.used |= declared(header)
                    self._reach(header, folder, seen)

    def hides(self, other):
        """Whether a name of its own means something else to another source."""
        return any(alias is None or other.own.get(name) != alias
                   for name, alias in self.own.items() if name in other.used)


def units(folder, names):
    """Lists of sources that can be compiled as one."""
    made = []
    sources = [Source(name, folder) for name in names]
    for source in sorted(sources, key=lambda source: [name not in source.heavy for name in HEAVY]):
        for unit in made:
            if (sum(other.lines for other in unit) + source.lines <= MOST_LINES
                    and not any(source.hides(other) or other.hides(source) for other in unit)):
                unit.append(source)
                break
        else:
            made.append([source])
    return made


def main():
    for number, unit in enumerate(units(sys.argv[1], sys.argv[2:])):
        for source in unit:
            print(f"{number} {source.name}")


if __name__ == "__main__":
    main()
