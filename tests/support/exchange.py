#!/usr/bin/python3
"""Converts between property lists and JSON with an independent implementation of property lists (plistlib).

    exchange.py to-json LIST.plist OUT.json          a list of dictionaries of texts
    exchange.py to-plist IN.json LIST.plist
    exchange.py domain-to-json DOMAIN.plist OUT.json
    exchange.py domain-to-plist IN.json DOMAIN.plist

In JSON, a dictionary is a list of [key, text] pairs, which preserves the order of the keys. A domain is a dictionary of
such lists; in JSON, it is a list of [key, list] pairs."""

import json
import plistlib
import sys


def pairs_of(dictionaries):
    return [list(map(list, dictionary.items())) for dictionary in dictionaries]


def dictionaries_of(pairs):
    return [dict(each) for each in pairs]


def read_plist(path):
    with open(path, "rb") as file:
        return plistlib.load(file, fmt=plistlib.FMT_XML)


def write_plist(path, root):
    with open(path, "wb") as file:
        plistlib.dump(root, file, fmt=plistlib.FMT_XML, sort_keys=False)


def read_json(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def write_json(path, root):
    with open(path, "w", encoding="ascii") as file:
        json.dump(root, file)


def main():
    direction, source, target = sys.argv[1:]
    if direction == "to-json":
        write_json(target, pairs_of(read_plist(source)))
    elif direction == "to-plist":
        write_plist(target, dictionaries_of(read_json(source)))
    elif direction == "domain-to-json":
        write_json(target, [[key, pairs_of(array)] for key, array in read_plist(source).items()])
    elif direction == "domain-to-plist":
        write_plist(target, {key: dictionaries_of(array) for key, array in read_json(source)})
    else:
        sys.exit(f"exchange.py: unknown direction {direction}")


main()
