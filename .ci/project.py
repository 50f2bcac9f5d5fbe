"""What the checks share: the files of the project, C++ without comments, reports."""
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def files():
    """Paths of all files that are or would be committed, relative to the root, sorted."""
    # A service checks out as one user and runs as another; we only list.
    listed = subprocess.run(
        ["git", "-c", "safe.directory=*", "-C", ROOT, "ls-files", "-z", "--cached", "--others",
         "--exclude-standard"], capture_output=True, check=False)
    if listed.returncode == 0:
        paths = listed.stdout.decode().split("\0")
    else:
        paths = list(_walk())
    return sorted({p for p in paths if p and os.path.isfile(os.path.join(ROOT, p))})


def _walk():
    """The files of an unpacked archive, where git knows nothing."""
    for folder, folders, names in os.walk(ROOT):
        folders[:] = [f for f in folders if f not in (".git", "build", "__pycache__")]
        for name in names:
            yield os.path.relpath(os.path.join(folder, name), ROOT)


def read(path):
    """The text of a file, None for one that is not text."""
    with open(os.path.join(ROOT, path), "rb") as file:
        data = file.read()
    try:
        return None if b"\0" in data else data.decode("utf-8")
    except UnicodeDecodeError:
        return None


_TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\s\\"]*)\(.*?\)(?P=mark)"'
    r'|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)


def code_of(text, keep_literals=False):
    """C++ text with comments, and literals unless kept, as blanks; lines stay lines."""
    def blank(match):
        token = match.group()
        if keep_literals and not token.startswith(("//", "/*")):
            return token
        return re.sub(r"[^\n]", " ", token)
    return _TOKEN.sub(blank, text)


def is_cpp(path):
    return path.endswith((".h", ".cpp"))


def includes(path):
    """(line number, '"' or '<', name) of every #include of a file."""
    found = []
    for number, line in enumerate(code_of(read(path), keep_literals=True).split("\n"), 1):
        match = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if match:
            found.append((number, match.group(1), match.group(2)))
    return found


def finish(problems, good, advice):
    """Prints the problems and what to do, or one good line; ends with the status."""
    for problem in problems:
        print(problem)
    print(f"{len(problems)} found. {advice}" if problems else good)
    sys.exit(1 if problems else 0)
