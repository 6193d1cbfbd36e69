"""Describes what a reader sees of an HTML page: its title, then one line per paragraph with the alignment and the
runs of text with their marks (bold, italic, underline, strike-through, colour, font, size), as a browser would
collapse blanks. Two converters agree when their descriptions do. Usage: html_runs.py FILE"""
import html.parser
import re
import sys

VOID = {"br", "meta", "img", "hr", "link", "input"}
MARKS = {"b": "b", "strong": "b", "i": "i", "em": "i", "u": "u", "s": "s", "strike": "s", "del": "s"}


class Reader(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.open = []  # (tag, marks this tag adds)
        self.title, self.in_title = "", False
        self.paragraphs = []
        self.faults = []

    def marks(self):
        merged = {}
        for _, added in self.open:
            merged.update(added)
        return tuple(sorted(merged.items()))

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if tag == "title":
            self.in_title = True
        if tag == "p":
            style = attrs.get("style") or ""
            align = attrs.get("align") or (re.search(r"text-align:\s*(\w+)", style) or [None, "left"])[1]
            self.paragraphs.append([align, []])
        if tag == "br":
            self.text("\n")
        if tag in VOID:
            return
        added = {}
        if tag in MARKS:
            added[MARKS[tag]] = "1"
        style = attrs.get("style") or ""
        colour = attrs.get("color") or (re.search(r"(?<![-\w])color:\s*(#\w+)", style) or [None, None])[1]
        if colour and colour.lower() != "#000000":
            added["colour"] = colour.lower()
        face = attrs.get("face") or (re.search(r"font-family:\s*([^;]+)", style) or [None, None])[1]
        if face:
            added["font"] = face.split(",")[0].strip(" '\"")
        size = re.search(r"font-size:\s*([\d.]+pt)", style)
        if size:
            added["size"] = size[1]
        self.open.append((tag, added))

    def handle_endtag(self, tag):
        if tag == "title":
            self.in_title = False
        if tag in VOID:
            return
        if not self.open or self.open[-1][0] != tag:
            self.faults.append(f"</{tag}> closes {self.open[-1][0] if self.open else 'nothing'}")
            return
        self.open.pop()

    def handle_data(self, data):
        if self.in_title:
            self.title += data
        elif self.paragraphs:
            self.text(re.sub(r"\s+", " ", data))

    def text(self, data):
        self.paragraphs[-1][1].extend((character, self.marks()) for character in data)


def shown(characters):
    """The runs a reader sees: no blank at a line's start or end, and a blank carries the marks before it."""
    kept = []
    for character, marks in characters:
        if character == " " and (not kept or kept[-1][0] in " \n"):
            continue
        if character == "\n" and kept and kept[-1][0] == " ":
            kept.pop()
        kept.append((character, marks))
    while kept and kept[-1][0] == " ":
        kept.pop()
    runs = []
    for character, marks in kept:
        marks = runs[-1][0] if character in " \n" and runs else marks
        if runs and runs[-1][0] == marks:
            runs[-1][1] += character
        else:
            runs.append([marks, character])
    return "".join("[" + ",".join(f"{k}={v}" for k, v in marks) + "]" + text.replace("\n", "\\n")
                   for marks, text in runs)


reader = Reader()
with open(sys.argv[1], encoding="utf-8") as page:
    reader.feed(page.read())
reader.close()
print("title:", reader.title)
for fault in reader.faults:
    print("fault:", fault)
for align, characters in reader.paragraphs:
    print(align + "|" + shown(characters))
