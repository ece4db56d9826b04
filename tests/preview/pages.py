"""Content documents that the pages of the test are made of."""

from xml.sax.saxutils import quoteattr

# What would leave a script element, an attribute or a line, were it not written as something else.
HOSTILE = "</script ><script >throw 'run'</script ><!--<b>\"'&amp;\u2028\u2029\U0001F600\u202e]]>"


def item(name, kind, data):
    return f"<{name} Type={quoteattr(kind)} Data={quoteattr(data)}/>"


def content(pointer, text, path="A|B", name="Value", direction="IO", unit="FLOW.LMIN"):
    return (f'<Content Version="1"><KelosObject Version="1">{item("SystemUID", "String", path)}'
            f'{item("PathFullName", "String", path)}</KelosObject><Property Version="2">'
            f'{item("GetName", "String", name)}{item("PhysUnit", "String", unit)}</Property>'
            f'<Value Version="1">{item("IOMode", "String", direction)}</Value>'
            f'<Document Version="1">{item("Pointer", "String", pointer)}</Document>'
            f'<ValueItems Version="1"><ValueItem Version="1">{item("Value", "String", text)}'
            f'{item("DisplayValue", "String", text)}</ValueItem></ValueItems></Content>')


def document(contents):
    return f'<Contents Version="1">{"".join(contents)}</Contents>'


PAGES = {
    "empty.xml": [],
    "old.xml": [content("Pumps!A1", "one", "A10|P1", "Name", "O", ""),
                content("Pumps!B2", "12,5", "A10|P1|Flow"),
                content("Pumps!C2", "gone", "A10|P2", "Name")],
    "new.xml": [content("Pumps!A1", "one", "A10|P1", "Name", "O", ""),
                content("Pumps!B2", "13", "A10|P1|Flow"),
                content("Pumps!B2", "also", "A10|P9"),
                content("Pumps!D90", "far", "A10|P3", "Description"),
                content("Tanks!XFD1048576", "last", "A20|T1"),
                content("nowhere", "lost", "A20|T2")],
    "hostile.xml": [content("<b>&\"'!A1", HOSTILE, HOSTILE, HOSTILE, "X<", HOSTILE)],
    "large.xml": [content(f"Sheet{n % 4}!{'ABCDEFGHIJ'[n % 10]}{n // 10 + 1}", f"value {n}",
                          f"A{n % 7}|U{n % 50}|P{n}", ("Name", "Value", "Description")[n % 3],
                          ("I", "O", "IO")[n % 3]) for n in range(20000)],
}

if __name__ == "__main__":
    for name, contents in PAGES.items():
        with open(name, "w", encoding="utf-8") as file:
            file.write(document(contents))
