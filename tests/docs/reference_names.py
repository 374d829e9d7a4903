"""Holds the interface reference to what Doxygen does not look at:

- each argument of a public function is named in the function's comment;
- the reference covers each header that a host comes to include.

    reference_names.py SOURCE_FOLDER XML_FOLDER
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

# What a host includes; the rest follows by their includes.
ROOTS = [
    "dalvo/configuration/configurationsetter.h",
    "dalvo/configuration/default_config.h",
    "dalvo/configuration/reader.h",
    "dalvo/inspect/inspect.h",
    "dalvo/utils/str.h",
]


def text_of(element):
    return " ".join(element.itertext()) if element is not None else ""


def unnamed_arguments(xml_folder):
    """Each argument that its function's comment does not name, and how many arguments there are."""
    found = []
    count = 0
    for path in sorted(xml_folder.glob("*.xml")):
        compound = ElementTree.parse(path).getroot().find("compounddef")
        if compound is None or compound.get("prot") == "private":
            continue
        for member in compound.iter("memberdef"):
            if member.get("kind") != "function" or member.get("prot") == "private":
                continue
            if "=delete" in member.findtext("argsstring").replace(" ", ""):
                continue
            comment = text_of(member.find("briefdescription")) + text_of(member.find("detaileddescription"))
            for name in member.findall("param/declname"):
                count += 1
                if not re.search(r"\b" + re.escape(name.text) + r"\b", comment):
                    found.append(f"{member.findtext('qualifiedname')}: its comment does not name '{name.text}'")
    return sorted(set(found)), count


def headers_of_hosts(source_folder):
    """The headers that hosts come to include and that declare something in the library's namespace."""
    reached = []
    waiting = list(ROOTS)
    while waiting:
        header = waiting.pop()
        if header in reached or not (source_folder / header).exists():
            continue
        reached.append(header)
        waiting += re.findall(r'^#include "(dalvo/[^"]*)"', (source_folder / header).read_text(), re.MULTILINE)
    declares = re.compile(r'^namespace dalvo|^extern "C"', re.MULTILINE)
    return sorted(header for header in reached if declares.search((source_folder / header).read_text()))


def covered_headers(source_folder):
    configuration = (source_folder / "docs/Doxyfile").read_text().replace("\\\n", " ")
    return sorted(re.search(r"^INPUT *= *(.*)$", configuration, re.MULTILINE).group(1).split())


def main():
    source_folder, xml_folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    complaints, count = unnamed_arguments(xml_folder)
    if count == 0:
        complaints.append(f"{xml_folder} tells of no argument")
    for header in set(headers_of_hosts(source_folder)) ^ set(covered_headers(source_folder)):
        complaints.append(f"{header}: either in INPUT of docs/Doxyfile or within reach of a host, but not both")
    print("\n".join(complaints) or f"{count} arguments are named")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
