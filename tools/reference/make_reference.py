#!/usr/bin/env -S python3 -B
"""Makes the reference, docs/reference/*.md and the lists of docs/reference.md, from the interface
definitions, the labels that the members report under, and the examples beside this file.

    tools/reference/make_reference.py           writes what has changed
    tools/reference/make_reference.py --check   says what would change, and fails when something would
"""

import re
import sys
from pathlib import Path

from definitions import Definitions

ROOT = Path(__file__).resolve().parents[2]
FOLDER = ROOT / "docs" / "reference"
INDEX = ROOT / "docs" / "reference.md"
SOURCES = ["src/component/tessera.idl", "src/host/kelos.idl", "hostkit/model.idl",
           "hostkit/services.idl", "hostkit/hostkit.idl"]
SIMPLE_TYPES = {"BSTR": "String", "long": "Long", "short": "Integer", "double": "Double",
                "VARIANT_BOOL": "Boolean", "VARIANT": "Variant", "IDispatch*": "Object",
                "IUnknown*": "Unknown"}
NOTE = "<!-- Made by tools/reference/make_reference.py from the interface definitions. -->"
END = "<!-- end -->"


def fail(text):
    raise SystemExit(f"tools/reference: {text}")


def read_labels():
    """{(class, member): {"source|label"}}, as the suite finds them by making every member fail."""
    labels = {}
    for line in (ROOT / "tests/server/contract/labels.txt").read_text().splitlines():
        place, report = line.split(": ", 1)
        labels.setdefault(tuple(place.split(".")), {})[report] = True
    return labels


def read_examples():
    sections = {}
    for line in (Path(__file__).parent / "examples.vbs").read_text().splitlines():
        begin = re.fullmatch(r"' == (\S+)", line)
        if begin:
            lines = sections.setdefault(begin.group(1), [])
        elif sections:
            lines.append(line)
    return sections


class Reference:
    def __init__(self):
        files = [Definitions(ROOT / source) for source in SOURCES]
        self.types = {type.name: type for file in files for type in file.types}
        self.component = [type for type in files[0].types if type.kind == "coclass"]
        self.contract = [type for type in files[1].types if type.kind in ("interface", "dispinterface")]
        self.kit = [type for type in files[4].types if type.kind == "coclass"]
        self.enumerations = [type for file in files for type in file.types if type.kind == "enum"]
        self.class_of = {type.base: type.name for type in self.component + self.kit}
        self.shows_kit = False
        self.labels = read_labels()
        self.examples = read_examples()

    # ---- Links and types

    def page_of(self, name):
        """The page of a type, and the place in it."""
        if name in self.class_of:
            return self.class_of[name], f"{self.class_of[name]}.md"
        if self.types[name].kind == "enum":
            return name, f"enumerations.md#{name.lower()}"
        # What a host answers is one of the kit's classes on the kit's pages.
        for base, kit_class in self.class_of.items():
            if self.shows_kit and self.types[base].base == name:
                return kit_class, f"{kit_class}.md"
        return name, f"host.md#{name.lower()}"

    def type_text(self, type, linked=False):
        name = type.rstrip("*")
        if name not in self.types:
            return SIMPLE_TYPES.get(type) or SIMPLE_TYPES.get(name) or name
        title, page = self.page_of(name)
        return f"[{title}]({page})" if linked else title

    def default_text(self, parameter):
        values = {"VARIANT_BOOL": {"0": "False", "-1": "True"}}.get(parameter.type, {})
        return values.get(parameter.default, parameter.default)

    # ---- Members

    def inherited(self, type):
        """The interfaces below which this one stands, the nearest first."""
        while type.base in self.types:
            type = self.types[type.base]
            yield type

    def groups(self, members):
        """Members by name, in order: a property's parts are one."""
        groups = {}
        for member in members:
            groups.setdefault(member.name, []).append(member)
        return groups

    def signature(self, parts):
        first = parts[0]
        given = [p for p in first.parameters if not p.is_result]
        if first.kind in ("propput", "propputref"):
            given = given[:-1]
        texts = []
        for parameter in given:
            text = f"{parameter.name} As {self.type_text(parameter.type)}"
            if parameter.default is not None:
                text += f" = {self.default_text(parameter)}"
            optional = parameter.default is not None or "optional" in parameter.attributes
            texts.append(f"[{text}]" if optional else text)
        name = f"{first.name}({', '.join(texts)})" if texts or first.kind == "method" else first.name
        result = self.result_of(first)
        if first.kind == "method":
            return f"Function {name} As {self.type_text(result)}" if result else f"Sub {name}"
        kinds = {part.kind for part in parts}
        access = "" if "propget" in kinds and len(kinds) > 1 else \
            "ReadOnly " if "propget" in kinds else "WriteOnly "
        value = result or first.parameters[-1].type
        return f"{access}Property {name} As {self.type_text(value)}"

    def result_of(self, member):
        for parameter in member.parameters:
            if parameter.is_result:
                return parameter.type[:-1]
        return "" if member.result in ("HRESULT", "void") else member.result

    def parameter_lines(self, owner, parts):
        first = parts[0]
        value = 1 if first.kind in ("propput", "propputref") else 0
        given = [p for p in first.parameters if not p.is_result]
        given = given[:len(given) - value]
        if not given:
            return []
        lines = ["| Parameter | Type | Default | |", "|---|---|---|---|"]
        for parameter in given:
            if not parameter.help:
                fail(f"{owner}.{first.name}: nothing is said of the parameter {parameter.name}")
            default = "" if parameter.default is None else f"`{self.default_text(parameter)}`"
            if parameter.default is None and "optional" in parameter.attributes:
                default = "may be left out"
            kind = self.type_text(parameter.type, linked=True)
            if "out" in parameter.attributes:
                kind += ", changed"
            lines.append(f"| `{parameter.name}` | {kind} | {default} | {parameter.help} |")
        return lines + [""]

    def note_lines(self, owner, parts):
        notes = parts[0].notes
        lines = [f"{text}\n" for name, text in notes if name == "Remark"]
        failures = dict(self.types[owner].notes) if owner in self.types else {}
        if parts[0].name in failures:
            lines.append(f"Fails: {failures[parts[0].name]}.\n")
        reports = list(self.labels.get((owner, parts[0].name), {}))
        sources = [source for (holder, _), found in self.labels.items() if holder == owner
                   for source in (report.split("|")[0] for report in found)]
        reports += [f"{sources[0]}|{text}" for name, text in notes if name == "Report"]
        if reports:
            texts = [f"`{report.split('|')[1]}`" for report in reports]
            lines.append(f"Reports failures as {', '.join(texts)} of `{reports[0].split('|')[0]}`.\n")
        return lines

    def member_lines(self, owner, parts, level="##"):
        first = parts[0]
        if not first.help:
            fail(f"{owner}.{first.name}: no help text")
        lines = [f"{level} {first.name}", "", "```vb", self.signature(parts), "```", ""]
        lines += [sentence(first.help), ""]
        lines += self.parameter_lines(owner, parts)
        result = self.result_of(first)
        if result.rstrip("*") in self.types:
            lines += [f"Gives: {self.type_text(result, linked=True)}.", ""]
        return lines + self.note_lines(owner, parts)

    # ---- Pages

    def class_page(self, found):
        interface = self.types[found.base]
        self.shows_kit = found in self.kit
        lines = [f"# {found.name}", "", self.creation(found), "", sentence(interface.help), ""]
        lines += self.example_lines(found.name)
        ancestors = list(self.inherited(interface))
        own = [m for m in interface.members if not m.shared or interface.name == "IHostKitObject"]
        # The contract's members of the same role stand here, too; those of every object only once.
        is_told_elsewhere = interface.base == "IKelosObject" and interface.name != "IHostKitObject"
        taken = [] if is_told_elsewhere else ancestors[:1]
        whole = own + [member for ancestor in taken for member in ancestor.members]
        groups = self.groups(member for member in whole if not is_hidden(member))
        unknown = [name for name, _ in found.notes if name not in groups] if self.shows_kit else []
        if unknown:
            fail(f"{found.name} has no member {unknown[0]}")
        if groups:
            lines += ["| Member | |", "|---|---|"]
            lines += [f"| [{name}](#{name.lower()}) | {sentence(parts[0].help)} |"
                      for name, parts in groups.items()]
            lines.append("")
        lines += self.collection_lines(whole + [m for a in ancestors for m in a.members])
        lines += self.inherited_lines(interface, ancestors[len(taken):])
        for parts in groups.values():
            lines += self.member_lines(found.name, parts)
        return lines

    def creation(self, found):
        program = program_name(found.help) if self.shows_kit else f"Tessera.{found.name}"
        if program:
            return f"Created by the name `{program}`; speaks `{found.base}`."
        return f"Not created by name: members of other classes give it; speaks `{found.base}`."

    def example_lines(self, name):
        if name not in self.examples:
            fail(f"examples.vbs has no example for {name}")
        return ["```vb", *self.examples[name], "```", ""]

    def collection_lines(self, members):
        names = {member.name for member in members}
        if "_NewEnum" not in names:
            return []
        default = any(member.attributes.get("id") == "0" for member in members)
        text = "`For Each` walks over what it holds when the walk begins."
        if default:
            text += " `Item` is the default member: `List(1)` is `List.Item(1)`."
        return [text, ""]

    def inherited_lines(self, interface, ancestors):
        lines = []
        if any(m.shared for m in interface.members) and interface.name != "IHostKitObject":
            lines += self.also("[HostKitObject](HostKitObject.md)", self.types["IHostKitObject"])
        for ancestor in ancestors:
            lines += self.also(f"[{ancestor.name}](host.md#{ancestor.name.lower()})", ancestor)
        return lines

    def also(self, title, type):
        names = list(self.groups(member for member in type.members if not is_hidden(member)))
        return [f"Also has the members of {title}: {', '.join(f'`{name}`' for name in names)}.", ""]

    def contract_page(self):
        self.shows_kit = False
        lines = ["# The host contract", "",
                 "What a host answers to the component, and so to scripts; the kit's classes add to it.", ""]
        lines += [f"- [{type.name}](#{type.name.lower()}): {sentence(type.help)}" for type in self.contract]
        for type in self.contract:
            lines += ["", f"## {type.name}", "", sentence(type.help), ""]
            for ancestor in self.inherited(type):
                lines += [f"Also has the members of [{ancestor.name}](#{ancestor.name.lower()}).", ""]
            for parts in self.groups(type.members).values():
                lines += self.member_lines(type.name, parts, "###")
        return lines

    def enumeration_page(self):
        lines = ["# Enumerations"]
        for type in self.enumerations:
            lines += ["", f"## {type.name}", "", sentence(type.help), "", "| Name | Value | |", "|---|---:|---|"]
            for name, number, help_text in type.values:
                if not help_text:
                    fail(f"{name}: no help text")
                lines.append(f"| `{name}` | {number} | {sentence(help_text)} |")
        return lines

    def pages(self):
        pages = {f"{type.name}.md": self.class_page(type) for type in self.component + self.kit}
        pages["host.md"] = self.contract_page()
        pages["enumerations.md"] = self.enumeration_page()
        return {FOLDER / name: finished([NOTE, ""] + lines) for name, lines in pages.items()}

    def index(self):
        table = lambda types: ["| Class | |", "|---|---|"] + \
            [f"| [{type.name}](reference/{type.name}.md) | {sentence(with_marked_program_name(type.help))} |"
             for type in types]
        text = INDEX.read_text(encoding="utf-8")
        creatable = [type for type in self.kit if "noncreatable" not in type.attributes]
        others = [type for type in self.kit if "noncreatable" in type.attributes]
        for mark, lines in (("component", table(self.component)), ("kit", table(creatable)),
                            ("model", table(others)), ("preface", ["```vb", *self.examples["*"], "```"])):
            begin = f"<!-- {mark}, made by tools/reference -->"
            if begin not in text:
                fail(f"{INDEX.name} has no line {begin}")
            before, rest = text.split(begin + "\n", 1)
            text = f"{before}{begin}\n" + "\n".join(lines) + f"\n{END}\n" + rest.split(f"{END}\n", 1)[1]
        return {INDEX: text}


def program_name(help_text):
    found = re.match(r"(Kelos\w*\.\w+): ", help_text)
    return found.group(1) if found else ""


def with_marked_program_name(help_text):
    name = program_name(help_text)
    return f"`{name}`{help_text[len(name):]}" if name else help_text


# The names of default members and of walks are for early-bound callers.
def is_hidden(member):
    return member.name.startswith("_")


def sentence(text):
    """As a sentence; the first letter stays, for it may begin a quoted text."""
    return text if text.endswith((".", "!")) else text + "."


def finished(lines):
    text = "\n".join(lines).rstrip() + "\n"
    return re.sub(r"\n{3,}", "\n\n", text)


def main():
    reference = Reference()
    pages = {**reference.pages(), **reference.index()}
    stale = [path for path in FOLDER.glob("*.md") if path not in pages]
    changed = [path for path, text in pages.items()
               if not path.exists() or path.read_text(encoding="utf-8") != text]
    if "--check" in sys.argv[1:]:
        for path in sorted(stale + changed):
            print(f"{path.relative_to(ROOT)} is not what tools/reference/make_reference.py writes")
        sys.exit(1 if stale or changed else 0)
    FOLDER.mkdir(exist_ok=True)
    for path in changed:
        path.write_text(pages[path], encoding="utf-8")
    for path in stale:
        path.unlink()
    print(f"{len(pages)} pages, {len(changed)} written, {len(stale)} removed")


if __name__ == "__main__":
    main()
