#!/usr/bin/env python3
"""Checks that lupdate finds every text that people read.

    check_translations.py <source root> [<lupdate>]

Counts the texts that the sources mark and those that lupdate finds, and reports each one that it does not
find, with the reason where the source shows it:

- A text belongs to the tr() of its class. Classes without Q_OBJECT declare it with Q_DECLARE_TR_FUNCTIONS, and a
  file-local struct Texts does so for functions without a class. A literal context of QCoreApplication::translate()
  would hide a misspelled class name.
- The text of tr() is a literal. A text of a table, or one passed to a function that translates it, carries
  QT_TR_NOOP() or QT_TRANSLATE_NOOP() where it is written.
- lupdate follows neither aliases of classes nor templates of members: write the name of the class.
- The class information "label" is a title: Q_CLASSINFO("label", QT_TR_NOOP("...")).
- What is set as the text of a widget or an action is marked.
"""
import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

FOLDERS = ("sdk", "host", "bench", "tools")
SUFFIXES = {".h", ".cpp", ".ui"}
LUPDATE = "/usr/lib/qt6/bin/lupdate"
# Functions and macros that mark a text, with the index of the text among their arguments.
MARKS = {"tr": 0, "QT_TR_NOOP": 0, "QT_TR_N_NOOP": 0, "translate": 1, "QT_TRANSLATE_NOOP": 1,
         "QT_TRANSLATE_N_NOOP": 1}
WRAPPERS = {"QStringLiteral", "QLatin1String", "QString", "fromLatin1", "fromUtf8", "u"}
SETTERS = set("""setText setWindowTitle setToolTip setStatusTip setWhatsThis setTitle setLabelText
    setPlaceholderText setAccessibleName setAccessibleDescription setInformativeText setHorizontalHeaderLabels
    addAction addMenu addTab addRow QAction QLabel QPushButton QCheckBox QRadioButton QGroupBox showMessage
    critical warning information question about getText getMultiLineText getInt getDouble getItem getOpenFileName getOpenFileNames
    getSaveFileName getExistingDirectory addItem addItems insertItem setItemText setTabText setHeaderLabels setHeaderLabel
    setSuffix setPrefix setSpecialValueText ZORSysException ZORSysFileException ZORSysFileOpenException""".split())
SHOWN_CLASS_INFO = '"label"'
TOKEN = re.compile(r"""//[^\n]*|/\*.*?\*/|(?:u8|u|U|L)?R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"|
    (?:u8|u|U|L)?"(?:\\.|[^"\\\n])*"|(?:u8|u|U|L)?'(?:\\.|[^'\\\n])+'|\d[\w.']*|\w+|::|->|\S""", re.S | re.X)
ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}
CLASS = re.compile(r"\b(?:class|struct)\s+(?:\w+_EXPORT\s+)?(\w+)[^;{}]*\{\s*Q_(?:OBJECT|GADGET)\b")
DECLARED = re.compile(r"Q_DECLARE_TR_FUNCTIONS \( (\w+) \)")


class Source:
    """The tokens of a C++ file, without comments."""

    def __init__(self, path):
        self.path = path
        self.text = path.read_text(encoding="utf-8")
        found = [m for m in TOKEN.finditer(self.text) if not m.group().startswith(("//", "/*"))]
        self.tokens = [m.group() for m in found]
        self.lines = []
        line, position = 1, 0
        for m in found:
            line += self.text.count("\n", position, m.start())
            position = m.start()
            self.lines.append(line)

    def arguments(self, start):
        """The ranges of the arguments of the call whose parenthesis opens at a token."""
        depth, ranges, begin = 0, [], start + 1
        for i in range(start, len(self.tokens)):
            token = self.tokens[i]
            if depth == 1 and token in {",", ")"}:
                ranges.append(range(begin, i))
                begin = i + 1
            depth += (token in "([{") - (token in ")]}")
            if depth == 0:
                break
        return ranges

    def calls(self, names):
        for i, token in enumerate(self.tokens[:-1]):
            if token in names and self.tokens[i + 1] == "(":
                yield i, self.arguments(i + 1)


    def translated_classes(self):
        text = " ".join(self.tokens)
        return {*CLASS.findall(text), *DECLARED.findall(text)}


def is_literal(token):
    return token.endswith('"')


def decode(token):
    if re.match(r'\w*R"', token):
        return token[token.index("(") + 1 : token.rindex(")")]
    text = token[token.index('"') + 1 : -1]
    text = re.sub(r"\\(?:u(\w{4})|U(\w{8}))", lambda m: chr(int(m[1] or m[2], 16)), text)
    return re.sub(r"\\(.)", lambda m: ESCAPES.get(m[1], m[1]), text)


def is_shown(text):
    return re.search(r"[^\W\d_]{2}", text)


def translating_function(source, position, name):
    """The function around a position that has a parameter of a name, and the parameter's index."""
    tokens = source.tokens
    for i in range(position, 2, -1):
        if tokens[i - 3 : i + 1] == ["const", "char", "*", name]:
            depth, index = 0, 0
            for k in range(i, 0, -1):
                depth += (tokens[k] == ")") - (tokens[k] == "(")
                index += tokens[k] == "," and depth == 0
                if depth < 0:
                    return tokens[k - 1], index
    return None, 0


def check_variable(source, position, argument):
    """Problems of a tr() whose text is not a literal: its texts must be marked elsewhere in the file."""
    words = [source.tokens[i] for i in argument]
    if any(map(is_literal, words)):
        yield source.lines[position], "the text of tr() is one literal, without conditions and further marks"
    elif not any("_NOOP" in token for token in source.tokens):
        yield source.lines[position], f"nothing marks the texts of tr({' '.join(words)})"
    elif len(words) == 1:
        function, index = translating_function(source, position, words[0])
        for i, arguments in source.calls({function} if function else set()):
            if index < len(arguments) and is_literal(source.tokens[arguments[index].start]):
                yield source.lines[i], f"{function}() translates this text, so it needs QT_TR_NOOP()"


def plain_literals(source, argument):
    """Yields the literals of an argument that are no arguments of a function, but of the constructors of strings."""
    calls = []
    for i in argument:
        token = source.tokens[i]
        if token in {"(", "{", "["}:
            before = source.tokens[i - 1]
            calls.append(before if token != "{" and re.match(r"\w+$", before) and i > argument.start else "")
        elif token in {")", "}", "]"} and calls:
            calls.pop()
        elif is_literal(token) and all(call in WRAPPERS or not call for call in calls) and "=" not in source.tokens[i - 4 : i]:
            yield token  # which is not compared with something


def check_shown(source):
    """Problems of texts that are not marked although people read them."""
    for i, arguments in source.calls({"Q_CLASSINFO"}):
        key, value = (source.tokens[argument.start] for argument in arguments)
        if key == SHOWN_CLASS_INFO and is_literal(value):
            yield source.lines[i], 'the class information "label" is a title, so it needs QT_TR_NOOP()'
    for i, arguments in source.calls(SETTERS):
        for argument in arguments:
            for text in plain_literals(source, argument):
                if is_shown(re.sub(r"%\w+|<[^>]*>", "", decode(text))):
                    yield source.lines[i], f"{source.tokens[i]}() shows a text that is not marked: {text}"


def read_source(source):
    """The texts that a source marks, with their lines, and its problems."""
    texts, problems = [], list(check_shown(source))
    for i, arguments in source.calls(MARKS):
        name = source.tokens[i]
        if name == "translate" and source.tokens[i - 2 : i] != ["QCoreApplication", "::"]:
            continue
        if name == "translate" and is_literal(source.tokens[arguments[0].start]):
            problems.append((source.lines[i], "a text belongs to the tr() of its class"))
        if len(arguments) <= MARKS[name]:
            continue
        argument = arguments[MARKS[name]]
        words = [source.tokens[k] for k in argument]
        if words and all(map(is_literal, words)):
            texts.append((source.lines[i], "".join(map(decode, words))))
        elif words and name == "tr":
            problems.extend(check_variable(source, i, argument))
    return texts, problems


def read_form(path):
    strings = ElementTree.parse(path).getroot().iter("string")
    return list(enumerate(s.text for s in strings if s.text and s.get("notr") != "true"))


def run_lupdate(program, files):
    """What lupdate finds: texts by file with their contexts, and its warnings."""
    folders = sorted({str(parent) for path in files for parent in path.parents})
    with tempfile.TemporaryDirectory() as folder:
        names = pathlib.Path(folder) / "files.lst"
        names.write_text("".join(f"{path}\n" for path in files))
        result = pathlib.Path(folder).resolve() / "texts.ts"
        options = ["-silent", "-locations", "absolute", *(f"-I{name}" for name in folders)]
        command = [program, *options, f"@{names}", "-ts", result]
        run = subprocess.run(command, capture_output=True, text=True, check=True)
        found = collections.defaultdict(collections.Counter)
        contexts = collections.defaultdict(set)
        for context in ElementTree.parse(result).getroot().iter("context"):
            for message in context.iter("message"):
                for location in message.iter("location"):
                    path = (result.parent / location.get("filename")).resolve()
                    found[path][message.findtext("source")] += 1
                    contexts[context.findtext("name")].add(path)
    return found, contexts, [line for line in (run.stdout + run.stderr).splitlines() if line.strip()]


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    files = sorted(p for name in FOLDERS for p in (root / name).rglob("*") if p.suffix in SUFFIXES)
    found, contexts, problems = run_lupdate(sys.argv[2] if len(sys.argv) > 2 else LUPDATE, files)
    problems = [line.replace(f"{root}/", "") for line in problems]
    declared, numMarked = set(), 0
    for path in files:
        if path.suffix == ".ui":
            texts, wrong = read_form(path), []
            declared.add(ElementTree.parse(path).getroot().findtext("class"))
        else:
            source = Source(path)
            texts, wrong = read_source(source)
            declared.update(source.translated_classes())
        numMarked += len(set(texts))
        visible = collections.Counter(found[path])
        for line, text in sorted(set(texts)):  # lupdate counts a text once a line
            if visible[text] == 0:
                wrong.append((line, f"lupdate does not find {text!r}"))
            visible[text] -= 1
        problems.extend(f"{path.relative_to(root)}:{line}: {message}" for line, message in sorted(wrong))
    for name, paths in sorted(contexts.items()):
        if name not in declared:
            problems.append(f"{min(paths).relative_to(root)}: no class of the context '{name}' has tr()")
    numFound = sum(sum(counter.values()) for counter in found.values())
    print(*problems, sep="\n", end="\n" if problems else "")
    print(f"{numMarked} texts are marked, lupdate finds {numFound} in {len(contexts)} classes")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
