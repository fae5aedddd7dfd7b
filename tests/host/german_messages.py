#!/usr/bin/env python3
"""Whether all that the host says of bad models has a German text: german_messages.py HOST-FOLDER.

The German texts lie behind the English ones in texts/zelhost_1031.rc; one whose English text was
changed in the code alone would never be found."""

import pathlib
import re
import sys

READERS = ['file_scan.cpp', 'gml_lexer.cpp', 'gml_reader.cpp', 'node_times.cpp']
LITERAL = r'"(?:[^"\\]|\\.)*"'


def literals(source):
    """The texts of a source; neighbours are one."""
    source = re.sub(r"//.*|'\"'", '', source)
    for joined in re.findall(rf'{LITERAL}(?:\s*{LITERAL})*', source):
        text = ''.join(part[1:-1] for part in re.findall(LITERAL, joined))
        yield text.replace('\\"', '"')


def pairs(folder):
    resource = (folder / 'texts/zelhost_1031.rc').read_text(encoding='utf-8')
    line = r'"(?:[^"]|"")*"'
    found = re.findall(rf'^ +(41\d{{3}}),\s+({line}(?:\s+{line})*)$', resource, re.M)
    assert [int(number) for number, _ in found] == list(range(41000, 41000 + len(found)))
    texts = [''.join(part[1:-1].replace('""', '"') for part in re.findall(line, text))
             for _, text in found]
    return list(zip(texts[::2], texts[1::2], strict=True))


def main():
    folder = pathlib.Path(sys.argv[1])
    known = pairs(folder)
    said = {text for path in folder.rglob('*.cpp') for text in literals(path.read_text())}
    of_readers = {text for name in READERS
                  for text in literals((folder / 'model' / name).read_text()) if ' ' in text.strip()}
    wrong = [f'not in the code: {english}' for english, _ in known if english not in said]
    wrong += [f'not in German: {text}' for text in of_readers - {english for english, _ in known}]
    wrong += [f'other details: {german}' for english, german in known
              if english.count('%s') != german.count('%s')]
    print('\n'.join(wrong) or f'{len(known)} messages')
    return bool(wrong) or not known


if __name__ == '__main__':
    sys.exit(main())
