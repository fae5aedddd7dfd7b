#!/usr/bin/env python3
"""Turns a header's plain comments into Doxygen's: apidocs_filter.py HEADER >TEXT

Headers are written for readers: `//` prose above a declaration, or behind it on its line. What
Doxygen gets has the same lines, so that its messages point to the right ones:

- the comment at the top, and any that stands alone, describe the file;
- a comment above a declaration describes it and those that follow it without a blank line;
- a comment behind a declaration adds to that;
- an enumerator without one is described by the comment of its enumeration.

`Backticks` become code, lines indented by four more blanks a listing, "- " a list.
"""

import re
import sys

CONTAINER = re.compile(r'(template\s*<.*>\s*)?(inline\s+)?(namespace|class|struct|union|enum|extern ")')
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'')
PARAGRAPH = re.compile(r'(Relied on by callers|Threads|Errors|Ownership|Results)(, of |: )')
SENTENCE_END = re.compile(r'(?<=[.?!])\s+(?=[A-Z`"(])')


def split_comment(line):
    """Code and comment of a line; no comment: None."""
    blanked = LITERAL.sub(lambda literal: '"' * len(literal.group()), line)
    at = blanked.find('//')
    if at < 0:
        return line.rstrip(), None
    return line[:at].rstrip(), line[at + 2:].rstrip()


def escape(text):
    for plain, coded in (('&', '&amp;'), ('<', '&lt;'), ('>', '&gt;'), ('"', '&quot;')):
        text = text.replace(plain, coded)
    text = re.sub(r'([\\@#%$])', r'\\\1', text)
    return text.replace('*/', '*&zwj;/').replace('::', r'\::').replace('--', r'\--')


def inline(text):
    """A paragraph's text with its code marked."""
    pieces = re.split(r'`([^`]+)`', text)
    return ''.join(f'<code>{escape(piece)}</code>' if i % 2 else escape(piece)
                   for i, piece in enumerate(pieces))


def paragraphs(lines):
    """('text' | 'list' | 'code', lines) for each part of a comment."""
    parts = []
    for line in lines:
        line = line[1:] if line.startswith(' ') else line
        kind = parts[-1][0] if parts else None
        if not line:
            if kind == 'code':
                parts[-1][1].append('')
            else:
                parts.append((None, []))
        elif line.startswith('    ') and kind != 'list':
            if kind != 'code':
                parts.append(('code', []))
            parts[-1][1].append(line[4:])
        elif line.startswith('- '):
            if kind != 'list':
                parts.append(('list', []))
            parts[-1][1].append(line[2:])
        elif kind == 'list' and line.startswith('  '):
            parts[-1][1][-1] += ' ' + line.strip()
        elif kind != 'text' or PARAGRAPH.match(line):
            parts.append(('text', [line]))
        else:
            parts[-1][1].append(line)
    return [(kind, content) for kind, content in parts if kind]


def description(*comments):
    """One line of Doxygen's for comments, the first sentence of the first one as its heading."""
    html = []
    for comment in comments:
        for kind, lines in paragraphs(comment):
            if kind == 'code':
                code = '\n'.join(lines).rstrip('\n')
                html.append('<pre>' + escape(code).replace('\n', '<br>') + '</pre>')
            elif kind == 'list':
                html.append('<ul>' + ''.join(f'<li>{inline(item)}</li>' for item in lines) + '</ul>')
            else:
                text = ' '.join(lines)
                if html:
                    html.append('<p>' + inline(text) + '</p>')
                else:
                    brief, *rest = SENTENCE_END.split(text, maxsplit=1)
                    html.append(f'@brief {inline(brief)} @details {inline("".join(rest))}')
    return ' '.join(html)


class Filter:
    def __init__(self, name, lines):
        self.name = name
        self.lines = lines
        self.containers = []  # the kinds of those that are open
        self.block = None     # comment lines that may belong to the next declaration
        self.block_at = 0
        self.group = None     # the comment of declarations that follow each other
        self.described_enum = False
        self.is_file_described = False

    def run(self):
        at = 0
        while at < len(self.lines):
            at = self.line(at)
        self.end_block()

    def line(self, at):
        """Handles the line, or all of a declaration that begins on it; the next line to handle."""
        line = self.lines[at]
        code, comment = split_comment(line)
        text = code.strip()
        if not text and comment is None:
            self.end_block()
            self.group = None
        elif not text:
            if self.block is None:
                self.block, self.block_at, self.group = [], at, None
            self.block.append(comment)
            self.lines[at] = ''
        elif text.startswith('#') and not text.startswith('#define'):
            pass
        elif text.startswith('}'):
            self.containers.pop()
            self.group = None
        elif re.fullmatch(r'(public|protected|private):', text):
            self.block = self.group = None
        else:
            return self.declaration(at)
        return at + 1

    def end_block(self):
        """A comment that no declaration follows is about the file."""
        if self.block is not None and not self.block[0].startswith(' -- '):
            text = description(self.block)
            if self.is_file_described:
                text = text.replace('@brief ', '<p>').replace(' @details ', ' ')
            self.lines[self.block_at] = f'/** @file {self.name} {text} */'
            self.is_file_described = True
        self.block = None

    def declaration(self, at):
        end, comments, statement = self.statement(at)
        own, self.block = self.block, None
        if own is not None:
            self.group = own
        container = CONTAINER.match(statement)
        opens = container and '(' not in statement and not statement.endswith((';', '}'))
        if statement.startswith('extern ""'):
            self.containers.append('extern')
            return end
        texts = [text for text in (comments, self.group) if text]
        doc = description(*texts) if texts else ''
        if not doc and self.described_enum and self.containers[-1:] == ['enum']:
            doc = '<!-- as the enumeration says -->'
        is_enum = container and container.group(3) == 'enum'
        if is_enum:
            self.described_enum = bool(doc)
            if not opens and doc:
                self.describe_enumerators(at, end)
        if doc and not statement.startswith('}'):
            indent = self.lines[at][:len(self.lines[at]) - len(self.lines[at].lstrip())]
            self.lines[at] = f'{indent}/** {doc} */ {self.lines[at].lstrip()}'
        if opens:
            self.containers.append(container.group(3))
            self.group = None
        return end

    def describe_enumerators(self, at, end):
        """Of an enumeration that is written on one line."""
        for i in range(at, end):
            head, brace, rest = self.lines[i].partition('{')
            if brace:
                rest = re.sub(r'\b(\w+)( = [^,}]+)?(?=\s*[,}])',
                              r'/** <!-- --> */ \1\2', rest)
                self.lines[i] = head + brace + rest

    def statement(self, at):
        """Where the declaration that begins here ends, the comments behind it, and its code."""
        depth = 0
        statement = ''
        comments = []
        is_macro = self.lines[at].lstrip().startswith('#')
        while at < len(self.lines):
            code, comment = split_comment(self.lines[at])
            bare = LITERAL.sub('""', code).strip()
            if comment is not None and bare and '{' not in statement:
                comments.append(comment)
                self.lines[at] = code
            statement = f'{statement} {bare}'.strip()
            at += 1
            if is_macro:
                if not bare.endswith('\\'):
                    break
                continue
            depth += sum(map(bare.count, '({[')) - sum(map(bare.count, ')}]'))
            opens = CONTAINER.match(statement) and '(' not in statement and bare.endswith('{')
            if opens or depth == 0 and bare.endswith((';', '}', ',')) and not self.is_list(statement):
                break
            if depth == 0 and self.containers[-1:] == ['enum'] and self.lines[at].lstrip() == '};':
                break
        return at, comments, statement

    @staticmethod
    def is_list(statement):
        """Whether a comma at the end goes on with something else than an enumerator."""
        return statement.endswith(',') and ('(' in statement or ':' in statement)


def main():
    with open(sys.argv[1], encoding='utf-8') as header:
        lines = header.read().split('\n')
    name = '/'.join(sys.argv[1].split('/')[-2:])
    Filter(name, lines).run()
    print('\n'.join(lines), end='')


main()
