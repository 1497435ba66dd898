#!/usr/bin/env python3
"""Checks the internal links of an HTML tree: every href and src that is not
an outside address must name a file of the tree, and its #fragment an id or
a name in that file.  usage: doclinks.py HTML_DIR"""
import html.parser
import os
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.anchors = set()
        self.links = []

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if value is None:
                continue
            if name in ("id", "name"):
                self.anchors.add(value)
            elif name in ("href", "src"):
                self.links.append(value)


def main(root):
    pages = {}
    for folder, _, files in os.walk(root):
        for name in files:
            if name.endswith(".html"):
                path = os.path.join(folder, name)
                page = Page()
                with open(path, encoding="utf-8") as f:
                    page.feed(f.read())
                pages[os.path.normpath(path)] = page
    if not pages:
        sys.exit(f"doclinks: no page in {root}")
    broken = []
    count = 0
    for path, page in sorted(pages.items()):
        for link in page.links:
            url = urllib.parse.urlsplit(link)
            if url.scheme or url.netloc or link.startswith("javascript:"):
                continue
            count += 1
            target = path
            if url.path:
                target = os.path.normpath(
                    os.path.join(os.path.dirname(path), urllib.parse.unquote(url.path)))
            if not os.path.exists(target):
                broken.append(f"{path}: {link}: no file {target}")
            elif url.fragment and target in pages and url.fragment not in pages[target].anchors:
                broken.append(f"{path}: {link}: no anchor #{url.fragment}")
    for line in broken:
        print(line, file=sys.stderr)
    if broken:
        sys.exit(f"doclinks: {len(broken)} broken of {count} internal links")
    print(f"doclinks: {len(pages)} pages, all {count} internal links resolve")


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else sys.exit(__doc__))
