"""Pages as the project writes them become pages as doxygen wants them: headings with
the anchors of hosting services, links that doxygen resolves, symbols that lead to the
API. Lines stay lines, so that a warning names the line of the original."""
import os
import re

_CODE_SPAN = re.compile(r"(`[^`\n]+`)")
_LINK = re.compile(r"(?<!!)\[((?:[^\[\]`]|`[^`\n]*`)+)\]\(([^)\s]+)\)")
_CODE_OR_LINK = re.compile(r"`[^`]*`[.,;:)]*|\[(?:[^\[\]`]|`[^`]*`)+\]\([^)\s]+\)[.,;:]*")
_QUOTED = re.compile(r'("[^"\n]*")')  # taken by doxygen as it stands
_ENTITY = re.compile(r"&(?=#?\w+;)")  # here four or more characters, as they stand
_BEHAVIOUR = re.compile(r"\bB-(\d\d)\b")
_LISTED = re.compile(r"\s*([-*+]|\d+\.) ")


def page_id(path):
    """The name of a page's HTML file: docs/formats/mgf.md is formats-mgf."""
    if path == "README.md":
        return "index"
    name = re.sub(r"^docs/", "", re.sub(r"\.md$", "", path)).lower()
    return re.sub(r"[^a-z0-9]+", "-", name).strip("-")


def slug(heading):
    """The anchor that hosting services give a heading."""
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def anchor(path, heading):
    return f"{page_id(path)}--{heading}"


def _whole(match):
    """Code or a link in one line; what follows begins the next one."""
    breaks = match.group().count("\n")
    return re.sub(r"\n *", " ", match.group()) + "\n" * breaks


def _unbroken(text):
    """The text with links and code in one line each, outside of blocks of code."""
    parts = re.split(r"(^```.*?^```$)", text, flags=re.MULTILINE | re.DOTALL)
    for place in range(0, len(parts), 2):
        paragraphs = re.split(r"(\n\n+)", parts[place])
        parts[place] = "".join(p if p.startswith("    ") else _CODE_OR_LINK.sub(_whole, p)
                               for p in paragraphs)
    return "".join(parts)


def lines_of(text):
    """(line, is it code?) of a page: fenced blocks, and indented ones outside of lists."""
    fenced = indented = listed = False
    before = ""
    for line in _unbroken(text).split("\n"):
        blank = not line.strip()
        if line.startswith("```"):
            fenced = not fenced
            yield line, True
        elif fenced:
            yield line, True
        else:
            if _LISTED.match(line):
                listed = True
            elif not blank and not line.startswith(" "):
                listed = False
            if listed:
                code = line.startswith(" " * 6) and (indented or not before.strip())
            else:
                code = line.startswith(" " * 4) and (indented or not before.strip())
            indented = code or (indented and blank)
            yield line, code
            before = line


class Page:
    """Translates one page. site tells what else there is: site.pages (paths of pages),
    site.files (paths of shown files), site.symbols (names of the API) and
    site.behaviours (number to anchor); site.problem(path, text) takes faults."""

    def __init__(self, site, path, text):
        self.site = site
        self.path = path
        self.text = text

    def translated(self):
        out = []
        titled = False
        headings = len(re.findall(r"^##+ ", self.text, re.MULTILINE))
        is_main = page_id(self.path) == "index"
        for line, is_code in lines_of(self.text):
            heading = None if is_code else re.match(r"(#+) +(.*)$", line)
            if heading and not titled:
                titled = True
                out.append(f"# {heading.group(2)}" + ("" if is_main else f" {{#{page_id(self.path)}}}"))
            elif heading and is_main:
                # Else the sections of the main page stand among the chapters of the site.
                name = anchor(self.path, slug(heading.group(2)))
                out.append(f"<h2>@anchor {name} {heading.group(2)}</h2>")
            elif heading:
                name = anchor(self.path, slug(heading.group(2)))
                out.append(f"{heading.group(1)} {heading.group(2)} {{#{name}}}")
            elif len(out) == 1 and headings > 2 and not is_main:
                out.append("[TOC]" + line)
            elif is_code:
                out.append(line.replace("```cpp", "```{.cpp}"))
            else:
                out.append(self._line(line))
        return "\n".join(out)

    def _line(self, line):
        kept = []

        def keep(text):
            kept.append(text)
            return f"\0{len(kept) - 1}\0"

        line = _LINK.sub(lambda m: keep(self._link(m.group(1), m.group(2))), line)
        line = _CODE_SPAN.sub(lambda m: keep(self._span(m.group())), line)
        line = self._text(line)
        while "\0" in line:
            line = re.sub("\0(\\d+)\0", lambda m: kept[int(m.group(1))], line)
        return line

    def _text(self, text):
        parts = _QUOTED.split(text)
        for place in range(0, len(parts), 2):
            part = _ENTITY.sub("&amp;", parts[place])
            part = re.sub(r"(\\(?![|*_`])|[<@#])", r"\\\1", part)
            parts[place] = _BEHAVIOUR.sub(self._behaviour, part)
        return "".join(parts)

    def _behaviour(self, match):
        place = self.site.behaviours.get(match.group(1))
        return f"[{match.group()}](@ref {place})" if place else match.group()

    def _span(self, span):
        symbol = self.site.symbols.get(span.strip("`"))
        if symbol:
            return f"<code>[{span.strip('`')}](@ref {symbol})</code>"
        # Between single ticks an apostrophe would end the code.
        return f"`{_ENTITY.sub('&amp;', span)}`"

    def _link(self, text, target):
        # The words of a link are taken as they stand, ticks included.
        shown = re.sub(r"([<@#])", r"\\\1", text.replace("`", ""))
        if re.match(r"[a-z]+:", target):
            return f"[{shown}]({target})"
        name, _, place = target.partition("#")
        folder = os.path.dirname(self.path)
        goal = os.path.normpath(os.path.join(folder, name)) if name else self.path
        if goal in self.site.pages:
            reference = anchor(goal, place) if place else page_id(goal)
        elif goal in self.site.files or goal == self.site.examples:
            reference = page_id(goal)
        elif goal.startswith("include/"):
            reference = os.path.basename(goal)
        else:
            self.site.problem(self.path, f"the site does not show {goal}")
            return shown
        return f"[{shown}](@ref {reference})"
