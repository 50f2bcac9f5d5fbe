#!/usr/bin/env python3
"""Which sources can be compiled as one: those that name nothing of their own alike.

    cmake/units.py FOLDER SOURCE...     prints the number of its unit and a source, line by line

Most of the time of a compiler goes into the headers of other libraries, and into the
templates of these. Sources are put together first fit, in their order, up to a length
that still compiles quickly. Names of their own are those of unnamed namespaces and of
static functions; a source that calls something as a header calls a type stays alone.
pelgrin_units() in PelgrinTargets.cmake asks for this.
"""
import os
import re
import sys

# Lines of a unit: what two processors compile side by side in little time and memory.
MOST_LINES = 2500
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
_TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\s\\"]*)\(.*?\)(?P=mark)"'
    r'|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)
_MACROS = re.compile(r"^(?:TEST(?:_[FP])?|TYPED_TEST\w*|INSTANTIATE_\w+)$")


def own_names(text):
    """The names that a source keeps for itself."""
    text = _TOKEN.sub(lambda found: " " if found[0].startswith("/") else "0", text)
    text = re.sub(r"^#.*(?:\\\n.*)*", "", text, flags=re.M)
    own = set(re.findall(r"^static .*?\b(\w+)\(", text, re.M))
    # The brace at its end has a comment behind it.
    for block in re.findall(r"^namespace \{(.*?)^\} +$", text, re.S | re.M):
        for members in re.findall(r"\benum [^{;]*\{([^}]*)\}", block):
            own |= set(re.findall(r"\w+", members))
        # What else stands in braces is no name of the namespace.
        while (shorter := re.sub(r"\{[^{}]*\}", ";", block)) != block:
            block = shorter
        for statement in block.split(";"):
            if name := _name_of(" ".join(statement.split())):
                own.add(name)
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


def types_of_headers(folder):
    """The types that headers declare which sources of a folder may include."""
    types = set()
    place = os.path.relpath(folder, ROOT)
    if not place.startswith("tests"):
        rooms = ["include", place.split(os.sep)[0]]
    else:
        rooms = ["include", "apps" if place == "tests/apps" else "src", "tests/support", place]
    for room in rooms:
        for place, _, names in os.walk(os.path.join(ROOT, room)):
            for name in names:
                if name.endswith(".h"):
                    with open(os.path.join(place, name), encoding="utf-8") as file:
                        types |= set(re.findall(r"^(?:struct|class|enum(?: class)?) (\w+)",
                                                file.read(), re.M))
    return types


def units(folder, sources):
    """Lists of sources of which no two keep the same name for themselves."""
    made = []
    taken = types_of_headers(folder)
    for source in sources:
        with open(os.path.join(folder, source), encoding="utf-8") as file:
            text = file.read()
        own = own_names(text)
        lines = MOST_LINES if own & taken else text.count("\n")
        for unit in made:
            if not own & unit["own"] and unit["lines"] + lines <= MOST_LINES:
                break
        else:
            unit = {"sources": [], "own": set(), "lines": 0}
            made.append(unit)
        unit["sources"].append(source)
        unit["own"] |= own
        unit["lines"] += lines
    return [unit["sources"] for unit in made]


def main():
    for number, unit in enumerate(units(sys.argv[1], sys.argv[2:])):
        for source in unit:
            print(f"{number} {source}")


if __name__ == "__main__":
    main()
