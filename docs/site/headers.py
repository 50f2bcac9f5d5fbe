"""Public headers as they are pleasant to read in an editor become input of doxygen:
the comment at the head of a file is its description, a comment stands for all
declarations below it up to an empty line, and characters mean themselves."""
import re

import markdown

_CODE = re.compile(r"^ {4,}\S")


def escaped(words, behaviours):
    """Words of a comment; doxygen's own commands are those at its beginning."""
    command = re.match(r"\s*\\(throws|param|return|def)\b", words)
    front = command.group() if command else ""
    rest = words[len(front):]
    rest = re.sub(r"\\", r"\\\\", rest)
    rest = re.sub(r'([<>&#@%"])', r"\\\1", rest)
    rest = re.sub(r"\bB-(\d\d)\b", lambda m: f'@ref {behaviours[m.group(1)]} "{m.group()}"', rest)
    return front + re.sub(r"\bdocs/[\w/-]+\.md\b",
                          lambda m: f'@ref {markdown.page_id(m.group())} "{m.group()}"', rest)


def symbols(texts):
    """Names that pages may use -> names for doxygen: classes and their members."""
    found = {}
    for text in texts:
        space = owner = ""
        for line in text.split("\n"):
            match = re.match(r"namespace (\w+) \{", line)
            if match:
                space = match.group(1)
            match = re.match(r"class VORLAN_API (\w+)", line)
            if match:
                owner = match.group(1)
                found[owner] = f"{space}::{owner}"
            if line.startswith("private:"):
                owner = owner and owner + " private"
            match = re.match(r"    (?!return)[\w:<>&*, ]*?[ &*](\w+)(\(| = |;)", line)
            if match and owner and " " not in owner:
                found[f"{owner}::{match.group(1)}"] = f"{space}::{owner}::{match.group(1)}"
    return found


def translated(name, text, behaviours):
    lines = text.split("\n")
    head = 0
    while lines[head].startswith("//"):
        lines[head] = "///" + lines[head][2:]
        head += 1
    # One empty line goes for the one that comes, so that lines stay lines.
    body = lines[head:]
    body.remove("")
    return "\n".join([f"/// \\file {name}"]
                     + _grouped(_escaped_lines(lines[:head], behaviours)
                                + _escaped_lines(body, behaviours)))


def _escaped_lines(lines, behaviours):
    out = []
    code = False
    before = ""
    for line in lines:
        match = re.match(r"( *)(.*?)(///<?)(.*)$", line)
        words = match.group(4) if match else ""
        code = bool(_CODE.match(words)) and (code or not before)
        if match and not code:
            line = "".join(match.groups()[:3]) + escaped(words, behaviours)
        out.append(line)
        before = words.strip()
    return out


def _grouped(lines):
    """Puts a comment and the several declarations below it between @{ and @}."""
    out = []
    place = 0
    while place < len(lines):
        if not re.match(r"    ///( |$)", lines[place]):
            out.append(lines[place])
            place += 1
            continue
        end = place
        while re.match(r"    ///( |$)", lines[end]):
            end += 1
        last = end
        while re.match(r"    ( *[^ /}]|\}|        )", lines[last]):
            last += 1
        declarations = lines[end:last]
        ends = sum(bool(re.match(r"    .*(;|\})$", d)) and not d.startswith("     ")
                   or d.endswith(";") and d.startswith("     ") for d in declarations)
        if ends > 1 and not any("///<" in d or "enum" in d or "struct" in d
                                for d in declarations):
            out.append("    /**@{*/ " + lines[place].strip())
            out += lines[place + 1:last - 1]
            out.append(lines[last - 1] + " /**@}*/")
        else:
            out += lines[place:last]
        place = last
    return out
