#!/usr/bin/env python3
"""Makes the site in build/site and checks its links; run by scripts/docs from the top folder."""
import html.parser
import json
import os
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree
from pathlib import Path

SITE = Path("build/site")
SOURCE = Path("docs/site")

# The order of the pages; others in docs/ follow, and then what lies in the top folder.
FIRST = (
    "index", "tutorial", "guide", "concepts", "qvpres", "vocabulary", "json", "text-formats", "enumerations",
    "comparison", "performance", "reliability",
)
TOP = ("CONTRIBUTING", "CHANGELOG")
NAMES = {"index": "overview", "json": "JSON", "CONTRIBUTING": "contributing", "CHANGELOG": "changes"}


def run(*command, **options):
    result = subprocess.run(command, text=True, capture_output=True, **options)
    if result.returncode:
        sys.exit("%s\n%s\nfailed: %s" % (result.stdout, result.stderr, " ".join(command)))
    return result.stdout


def version():
    header = Path("public/qvpreslayer/Version.h").read_text()
    return ".".join(re.search(r"VERSION_%s (\d+)" % part, header).group(1) for part in ("MAJOR", "MINOR", "PATCH"))


def make_reference():
    """Doxygen's pages, with a way back to the documents among their tabs."""
    layout = Path("build/site-layout.xml")
    run("doxygen", "-l", str(layout))
    tab = '<tab type="user" url="@ref documents" title="Documents"/>'.replace("@ref documents", "../index.html")
    text = layout.read_text().replace('<tab type="mainpage"', tab + '\n    <tab type="mainpage"', 1)
    layout.write_text(text.replace('<tab type="mainpage" visible="yes"', '<tab type="mainpage" visible="no"'))
    run("doxygen", str(SOURCE / "Doxyfile"), env={**os.environ, "QVPRESLAYER_VERSION": version()})


def read_reference():
    """The pages of classes and functions by the names that documents use."""
    pages = {}
    for compound in xml.etree.ElementTree.parse(SITE / "api.tag").getroot().iter("compound"):
        kind, name = compound.get("kind"), compound.findtext("name")
        file = compound.findtext("filename", "")
        prefix = ""
        if kind in ("class", "struct", "namespace"):
            pages.setdefault(name, file if file.endswith(".html") else file + ".html")
            prefix = name + "::"
        elif kind != "file":
            continue
        for member in compound.iter("member"):
            target = "%s#%s" % (member.findtext("anchorfile"), member.findtext("anchor"))
            pages.setdefault(prefix + member.findtext("name"), target)
    (SITE / "api.tag").unlink()
    return {name: file for name, file in pages.items() if len(name) > 3}


def page_names():
    there = {path.stem for path in Path("docs").glob("*.md")}
    return [name for name in FIRST if name in there] + sorted(there - set(FIRST)) + list(TOP)


def title_of(text):
    return re.search(r"^# (.*)$", text, re.MULTILINE).group(1)


def make_page(name, names, reference):
    source = Path(name + ".md") if name in TOP else Path("docs") / (name + ".md")
    text = source.read_text()
    pages = [
        {"file": other + ".html", "name": NAMES.get(other, other.replace("-", " ")), "current": other == name}
        for other in names
    ]
    metadata = {
        "title": title_of(text),
        "version": version(),
        "pages": pages,
        "reference": ["`%s=%s`" % entry for entry in reference.items()],  # as code: nothing in it is markup
    }
    described = Path("build/site-page.json")
    described.write_text(json.dumps(metadata))
    page = run(
        "pandoc", "--from=gfm", "--to=html5", "--standalone", "--template=%s" % (SOURCE / "template.html"),
        "--metadata-file=%s" % described, "--lua-filter=%s" % (SOURCE / "page.lua"), "--wrap=none", str(source),
    )
    (SITE / (name + ".html")).write_text(re.sub(r"<!--.*?-->\n?", "", page, flags=re.DOTALL))


class Links(html.parser.HTMLParser):
    """What a page refers to, and what can be referred to in it."""

    def __init__(self, text):
        super().__init__()
        self.targets, self.resources, self.anchors = [], [], set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        for name in ("id", "name"):
            if attributes.get(name):
                self.anchors.add(attributes[name])
        if tag == "a" and attributes.get("href"):
            self.targets.append(attributes["href"])
        elif attributes.get("src") or tag == "link" and attributes.get("href"):
            self.resources.append(attributes.get("src") or attributes["href"])


def check_links():
    pages = {path: Links(path.read_text(errors="replace")) for path in SITE.rglob("*.html")}
    complaints = []
    for path, page in pages.items():
        where = path.relative_to(SITE)
        for resource in page.resources:
            if re.match(r"(https?:)?//", resource):
                complaints.append("%s takes %s from outside" % (where, resource))
            elif not resource.startswith("javascript:") and not (path.parent / resource).exists():
                complaints.append("%s: there is no %s" % (where, resource))
        for target in page.targets:
            # Doxygen promises nested classes also where all of them are private, and not shown.
            if re.match(r"[a-z]+:", target) or target == "#nested-classes":
                continue
            file, _, anchor = target.partition("#")
            aim = (path.parent / file).resolve() if file else path.resolve()
            aim = SITE / aim.relative_to(SITE.resolve()) if aim.is_relative_to(SITE.resolve()) else aim
            if not aim.exists():
                complaints.append("%s: there is no %s" % (where, target))
            elif anchor and aim in pages and anchor not in pages[aim].anchors:
                complaints.append("%s: there is no place %s" % (where, target))
    if complaints:
        sys.exit("\n".join(sorted(complaints)))
    return sum(len(page.targets) for page in pages.values())


def main():
    run(sys.executable, "docs/pictures/pictures.py", "--check")
    shutil.rmtree(SITE, ignore_errors=True)
    SITE.mkdir(parents=True)
    make_reference()
    reference = read_reference()
    shutil.copy(SOURCE / "style.css", SITE)
    shutil.copytree("docs/pictures", SITE / "pictures", ignore=shutil.ignore_patterns("*.py"))
    names = page_names()
    for name in names:
        make_page(name, names, reference)
    print("build/site/index.html: %d pages and the reference, %d links lead somewhere" % (len(names), check_links()))


main()
