#!/usr/bin/env python3
"""Lists types that have the same name in the same namespace in several files.

The linker keeps one of two inline functions with the same name, such as destructors, without a word. A type
that only one file uses belongs in an unnamed namespace; others need names of their own. Reads the paths of
C++ files from the arguments; ends with 1 if there is such a name.
"""
import collections
import re
import sys

NOISE = re.compile(r'//[^\n]*|/\*.*?\*/|R"\w*\(.*?\)\w*"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\])+\'', re.DOTALL)
BLOCK = re.compile(
    r'(?P<namespace>\bnamespace\s+(?P<path>[\w:]*)\s*\{)'
    r'|\b(?:enum\s+class|enum|struct|class|union)\s+(?P<type>[\w:]*\w)\s*(?:final\s*)?(?::(?!:)[^;{}()]*)?\{'
    r'|\{|\}')


def types(text):
    """The qualified names of the types that a file defines outside of other types and functions."""
    open_blocks = []
    for block in BLOCK.finditer(NOISE.sub(' ', text)):
        if block.group() == '}':
            if open_blocks:
                open_blocks.pop()
            continue
        if block.group('namespace'):
            open_blocks.append(block.group('path'))
            continue
        # None: not a namespace; "": the unnamed one.
        is_visible = None not in open_blocks and '' not in open_blocks
        if block.group('type') and is_visible:
            yield '::'.join([*open_blocks, block.group('type')])
        open_blocks.append(None)


files_of = collections.defaultdict(set)
for path in sys.argv[1:]:
    with open(path, encoding='utf-8') as file:
        for name in types(file.read()):
            files_of[name].add(path)
duplicates = {name: files for name, files in files_of.items() if len(files) > 1}
for name, files in sorted(duplicates.items()):
    print(f'{name} is defined in {", ".join(sorted(files))}')
sys.exit(1 if duplicates else 0)
