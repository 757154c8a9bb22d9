#!/usr/bin/python3
"""Property lists by another implementation: lists of dictionaries of texts, as JSON on the other side.

    exchange.py to-json LIST.plist OUT.json      reads with plistlib
    exchange.py to-plist IN.json LIST.plist      writes with plistlib

JSON holds each dictionary as a list of [key, text], so that the order of keys stays."""

import json
import plistlib
import sys


def main():
    direction, source, target = sys.argv[1:]
    if direction == "to-json":
        with open(source, "rb") as file:
            dictionaries = plistlib.load(file, fmt=plistlib.FMT_XML)
        with open(target, "w", encoding="ascii") as file:
            json.dump([list(map(list, dictionary.items())) for dictionary in dictionaries], file)
    else:
        with open(source, encoding="utf-8") as file:
            dictionaries = [dict(pairs) for pairs in json.load(file)]
        with open(target, "wb") as file:
            plistlib.dump(dictionaries, file, fmt=plistlib.FMT_XML, sort_keys=False)


main()
