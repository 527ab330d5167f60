#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
"""Writes the window descriptions of every language folder from the English ones.

Each resources/en.lproj/<Name>.ui is the original. For every translations/<lang>.ts other than
en.ts, the texts of the description (its <string> elements not marked notr) are replaced by the
translations of the context <Name> and the result is written to resources/<lang>.lproj/<Name>.ui.
A text without a translation stays English and is reported. Run it after editing an English
description or a translation table, and commit the results:

    scripts/localise-ui.py

To collect new texts into the tables first: the descriptions' texts and the strings-table keys
the code marks with QT_TRANSLATE_NOOP("PluginLocale", ...). Leaving src out would mark every entry
of the strings table as vanished.

    lupdate src resources/en.lproj/*.ui -ts resources/translations/<lang>.ts
"""
import html
import pathlib
import re
import sys
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(__file__).resolve().parent.parent / "resources"
STRING = re.compile(r"<string(?P<attrs>[^>]*)>(?P<text>[^<]*)</string>")


def read_table(ts_path):
    table = {}
    for context in ET.parse(ts_path).getroot().iter("context"):
        name = context.findtext("name")
        for message in context.iter("message"):
            translation = message.find("translation")
            if translation is None or translation.get("type") in ("unfinished", "obsolete", "vanished"):
                continue
            if translation.text:
                table[(name, message.findtext("source"))] = translation.text
    return table


def localise(source, context, table, missing):
    def replace(match):
        if 'notr="true"' in match.group("attrs"):
            return match.group(0)
        text = html.unescape(match.group("text"))
        if not text:
            return match.group(0)
        translated = table.get((context, text))
        if translated is None:
            missing.append(text)
            return match.group(0)
        return "<string%s>%s</string>" % (match.group("attrs"), html.escape(translated, quote=False))
    return STRING.sub(replace, source)


def main():
    failed = False
    for ts in sorted((ROOT / "translations").glob("*.ts")):
        lang = ts.stem
        if lang == "en":
            continue
        table = read_table(ts)
        for original in sorted((ROOT / "en.lproj").glob("*.ui")):
            context = ET.parse(original).getroot().findtext("class") or original.stem
            missing = []
            text = localise(original.read_text(encoding="utf-8"), context, table, missing)
            target = ROOT / f"{lang}.lproj" / original.name
            target.parent.mkdir(exist_ok=True)
            target.write_text(text, encoding="utf-8")
            for m in missing:
                failed = True
                print(f"{lang}: no translation for {context}: {m!r}", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
