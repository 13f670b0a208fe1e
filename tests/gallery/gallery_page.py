"""What the gallery's page says, read from its HTML: the code blocks and the files that they write."""

import html.parser
import pathlib


class CodeBlocks(html.parser.HTMLParser):
    """Collects (file that the code writes, language, code)."""

    def __init__(self):
        super().__init__()
        self.blocks = []
        self._file = None
        self._language = None

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if "data-file" in attributes:
            self._file = attributes["data-file"]
        if tag == "pre" and self._file and attributes.get("class"):
            self._language = attributes["class"]
            self.blocks.append((self._file, self._language, ""))

    def handle_data(self, data):
        if self._language:
            file, language, code = self.blocks[-1]
            self.blocks[-1] = (file, language, code + data)

    def handle_endtag(self, tag):
        if tag == "pre":
            self._language = None
        if tag == "details":
            self._file = None


def code_blocks(directory):
    """Of the gallery in a directory, by language: {language: [(file, code)]}."""
    parser = CodeBlocks()
    parser.feed((pathlib.Path(directory) / "index.html").read_text(encoding="utf-8"))
    languages = {}
    for file, language, code in parser.blocks:
        languages.setdefault(language, []).append((file, code))
    return languages
