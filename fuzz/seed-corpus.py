#!/usr/bin/env python3
"""Fills a scratch corpus directory for one fuzz target.

Seeds: the target's own checked-in corpus (fuzz/corpus/<target>/), the XML
files of the examples and the embedded resources, and the XML texts written
as string literals in the tests. Each XML seed gets the target's leading
mode byte(s). For the loader a dictionary of the registered names is written
too (taken from the Q_PROPERTY lines and Z_REGISTER_* lines of the sources).

usage: seed-corpus.py <target> <source root> <corpus dir> [<dict file>]
"""
import hashlib
import os
import re
import shutil
import sys

STRING = re.compile(r'R"\((.*?)\)"|"((?:[^"\\\n]|\\.)*)"', re.S)
ESCAPES = {'n': '\n', 't': '\t', 'r': '\r', '0': '\0', '\\': '\\', '"': '"', "'": "'"}


def unescape(s):
    out, i = [], 0
    while i < len(s):
        c = s[i]
        if c == '\\' and i + 1 < len(s):
            n = s[i + 1]
            if n == 'x':
                m = re.match(r'[0-9a-fA-F]{1,2}', s[i + 2:])
                if m:
                    out.append(chr(int(m.group(0), 16)))
                    i += 2 + len(m.group(0))
                    continue
            out.append(ESCAPES.get(n, n))
            i += 2
            continue
        out.append(c)
        i += 1
    # \xNN escapes are bytes; everything else is already UTF-8 text.
    return ''.join(out).encode('latin-1', errors='ignore') if all(ord(ch) < 256 for ch in out) \
        else ''.join(out).encode('utf-8')


def literals(path):
    """XML-looking string literals, adjacent pieces joined."""
    text = open(path, encoding='utf-8', errors='replace').read()
    pieces, last_end, current = [], -1, b''
    for m in STRING.finditer(text):
        value = m.group(1).encode('utf-8') if m.group(1) is not None else unescape(m.group(2))
        between = text[last_end:m.start()] if last_end >= 0 else 'x'
        if last_end >= 0 and between.strip() == '':
            current += value
        else:
            if current:
                pieces.append(current)
            current = value
        last_end = m.end()
    if current:
        pieces.append(current)
    return [p for p in pieces if b'<' in p and b'>' in p and len(p) > 4]


def xml_seeds(root):
    seeds = []
    for top in ('examples', 'src/theme/resources'):
        for d, _, files in os.walk(os.path.join(root, top)):
            seeds += [open(os.path.join(d, f), 'rb').read() for f in files if f.endswith('.xml')]
    for d, _, files in os.walk(os.path.join(root, 'tests')):
        for f in files:
            if f.endswith('.cpp'):
                seeds += literals(os.path.join(d, f))
    return seeds


def names(root):
    words = set()
    prop = re.compile(r'Q_PROPERTY\(\s*[\w:<>*, ]+?[\s*&]+(\w+)\s+READ')
    reg = re.compile(r'Z_REGISTER_\w+\((\w+)\)')
    enum = re.compile(r'enum\s+\w+\s*(?::\s*\w+\s*)?\{([^}]*)\}')
    for d, _, files in os.walk(os.path.join(root, 'src')):
        for f in files:
            if not f.endswith(('.h', '.cpp')):
                continue
            text = open(os.path.join(d, f), encoding='utf-8', errors='replace').read()
            words.update(prop.findall(text))
            words.update(reg.findall(text))
            for body in enum.findall(text):
                words.update(re.findall(r'^\s*(\w+)', body, re.M))
                words.update(re.findall(r',\s*(\w+)', body))
    return sorted(w for w in words if w)


def main():
    target, root, out = sys.argv[1], sys.argv[2], sys.argv[3]
    os.makedirs(out, exist_ok=True)
    own = os.path.join(root, 'fuzz', 'corpus', target)
    if os.path.isdir(own):
        for f in os.listdir(own):
            shutil.copy(os.path.join(own, f), os.path.join(out, f))

    # Mode bytes: xmlnode's first byte selects parser options (0 = defaults);
    # the loader's selects window (0x02) or widget (0x03) load of raw text;
    # the converter reads its choice bytes and then takes the rest as text.
    prefixes = {'xmlnode': [b'\x00', b'\x08'], 'loader': [b'\x02', b'\x03'], 'converter': []}[target]
    seeds = xml_seeds(root)
    if target == 'converter':
        seeds = []
        for s in xml_seeds(root):
            seeds += [bytes([i, 0, 0]) + v.encode() for i, v in enumerate(
                re.findall(r'="([^"]{1,60})"', s.decode('utf-8', errors='ignore'))[:40])]
    for seed in seeds:
        for p in prefixes or [b'']:
            data = p + seed
            name = 'seed-' + hashlib.sha1(data).hexdigest()[:16]
            with open(os.path.join(out, name), 'wb') as fh:
                fh.write(data)

    if len(sys.argv) > 4:
        with open(sys.argv[4], 'w') as fh:
            for w in names(root) + ['uitree', 'uiskin', 'uihelper', 'x:data', 'x:event', 'x:invoke',
                                    'objectArgument', 'skinName', 'function', 'arguments', 'model',
                                    'signal', 'slot', 'connect', '<!--', '-->', '<![CDATA[', ']]>']:
                fh.write('"%s"\n' % w.replace('\\', '\\\\').replace('"', '\\"'))
    print('%s: %d seeds' % (target, len(os.listdir(out))))


if __name__ == '__main__':
    main()
