"""Reads interface definitions: what their help texts and the lines above their members say."""

import re
from dataclasses import dataclass, field
from pathlib import Path

TOKEN = re.compile(r'//(?P<comment>[^\n]*)|"(?P<text>(?:[^"\\]|\\.)*)"|(?P<word>[\w.+-]+)|(?P<sign>[^\s\w"])')
NOTE = re.compile(r"(\w+): (.*)")


@dataclass
class Parameter:
    name: str
    type: str
    attributes: dict
    help: str = ""

    @property
    def is_result(self):
        return "retval" in self.attributes

    @property
    def default(self):
        return self.attributes.get("defaultvalue")


@dataclass
class Member:
    name: str
    attributes: dict
    parameters: list
    notes: list
    result: str = "HRESULT"
    shared: bool = False

    @property
    def kind(self):
        for kind in ("propget", "propputref", "propput"):
            if kind in self.attributes:
                return kind
        return "method"

    @property
    def help(self):
        return self.attributes.get("helpstring", "")


@dataclass
class Type:
    kind: str  # interface, dispinterface, coclass, enum
    name: str
    help: str
    attributes: dict
    base: str = ""  # of a coclass: its interface
    members: list = field(default_factory=list)
    values: list = field(default_factory=list)  # (name, number, help)
    notes: list = field(default_factory=list)  # of a coclass: how its members fail


class Definitions:
    """The types of one file, in its order; `defaults` are notes for parameters of all its members."""

    def __init__(self, path):
        self.path = Path(path)
        self.types = []
        self.defaults = {}
        self.shared = False
        self.tokens = list(self.read(self.path))
        self.position = 0
        self.parse_file()

    # A file that is included lends its members to every interface that includes it.
    def read(self, path):
        for line in path.read_text(encoding="utf-8").split("\n"):
            include = re.match(r'\s*#include "(\w+\.idl)"', line)
            if include:
                yield "mark", "shared"
                yield from self.read(path.parent / include.group(1))
                yield "mark", "own"
            elif not line.lstrip().startswith("#"):
                for found in TOKEN.finditer(line):
                    yield found.lastgroup, found.group(found.lastgroup)

    def peek(self):
        return self.tokens[self.position] if self.position < len(self.tokens) else ("end", "")

    def next(self):
        token = self.peek()
        self.position += 1
        return token

    def expect(self, text):
        kind, found = self.next()
        if found != text or kind in ("comment", "text"):
            around = " ".join(token for _, token in self.tokens[max(0, self.position - 12):self.position])
            raise SystemExit(f"{self.path}: '{text}' expected after: {around}")

    # Lines of comments; one that goes on does so indented.
    def comments(self):
        notes = []
        while self.peek()[0] in ("comment", "mark"):
            kind, text = self.next()
            if kind == "mark":
                self.shared = text == "shared"
            elif text.startswith("   ") and notes:
                notes[-1] += " " + text.strip()
            else:
                notes.append(text.strip())
        return [found.groups() for found in map(NOTE.fullmatch, notes) if found]

    def attributes(self):
        result = {}
        if self.peek()[1] != "[" or self.peek()[0] == "text":
            return result
        self.expect("[")
        while True:
            name = self.next()[1]
            result[name] = ""
            if self.peek() == ("sign", "("):
                self.expect("(")
                values = []
                while self.peek() != ("sign", ")"):
                    kind, text = self.next()
                    values.append(text.replace('\\"', '"') if name != "defaultvalue" or kind != "text"
                                  else f'"{text}"')
                self.expect(")")
                result[name] = "".join(values)
            sign = self.next()[1]
            if sign == "]":
                return result
            if sign != ",":
                raise SystemExit(f"{self.path}: ',' or ']' expected after the attribute {name}")

    def parse_file(self):
        for name, help_text in self.comments():
            self.defaults[name] = help_text
        while self.peek()[0] != "end":
            notes = self.comments()
            attributes = self.attributes()
            word = self.next()[1]
            if word == "typedef":
                self.parse_enumeration()
            elif word in ("interface", "dispinterface", "coclass"):
                self.parse_type(word, attributes, notes)
            elif word == "library":
                self.types.append(Type(word, self.next()[1], attributes["helpstring"], attributes))

    def parse_enumeration(self):
        attributes = self.attributes()
        self.expect("enum")
        found = Type("enum", self.next()[1], attributes.get("helpstring", ""), attributes)
        self.expect("{")
        while self.peek()[1] != "}":
            help_text = ""
            name = self.next()[1]
            if name == "VALUE_HELP":
                self.expect("(")
                help_text = self.next()[1].replace('\\"', '"')
                self.expect(")")
                name = self.next()[1]
            self.expect("=")
            found.values.append((name, self.next()[1], help_text))
            if self.peek()[1] == ",":
                self.next()
        self.types.append(found)

    def parse_type(self, kind, attributes, notes):
        found = Type(kind, self.next()[1], attributes.get("helpstring", ""), attributes, notes=notes)
        if self.peek()[1] == ":":
            self.next()
            found.base = self.next()[1]
        if self.peek()[1] == ";":  # only named
            return
        self.expect("{")
        if kind == "coclass":
            self.attributes()
            self.expect("interface")
            found.base = self.next()[1]
            self.expect(";")
        elif kind == "dispinterface":
            for word in ("properties", ":", "methods", ":"):
                self.expect(word)
        while True:
            notes = self.comments()
            if self.peek()[1] == "}":
                break
            found.members.append(self.parse_member(notes))
        self.expect("}")
        self.types.append(found)

    def parse_member(self, notes):
        attributes = self.attributes()
        words = []
        while self.peek()[1] != "(":
            words.append(self.next()[1])
        member = Member(words[-1], attributes, [], notes, "".join(words[:-1]), self.shared)
        self.expect("(")
        while self.peek()[1] != ")":
            member.parameters.append(self.parse_parameter())
            if self.peek()[1] == ",":
                self.next()
        self.expect(")")
        self.expect(";")
        known = dict(notes)
        for parameter in member.parameters:
            parameter.help = known.get(parameter.name, self.defaults.get(parameter.name, ""))
        return member

    def parse_parameter(self):
        attributes = self.attributes()
        words = []
        while self.peek()[1] not in (",", ")"):
            words.append(self.next()[1])
        return Parameter(words[-1], "".join(words[:-1]), attributes)
