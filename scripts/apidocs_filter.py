#!/usr/bin/env python3
"""Turns a header's plain comments into Doxygen's: apidocs_filter.py HEADER >TEXT

Headers are written for readers: `//` prose above a declaration, or behind it on its line. What
Doxygen gets has the same lines, so that its messages point to the right ones:

- the comment at the top, and any that stands alone, describe the file;
- "// -- Title" alone begins a section of the page;
- a comment above a declaration describes it and those that follow it without a blank line, but
  for destructors and deleted functions;
- a comment behind a declaration comes before that.

`Backticks` become code, and links where that is a name of ours; lines indented by four more blanks
become a listing, "- " a list.
"""

import re
import sys

CONTAINER = re.compile(r'(?:template\s*<.*>\s*)?(?:inline\s+)?'
                       r'(namespace|class|struct|union|enum|extern "")')
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'')
PARAGRAPH = re.compile(r'(Relied on by callers|Threads|Errors|Ownership|Results)(, of |: )')
LINKED = re.compile(r'([Zz]el_\w+|Zel[A-Za-z0-9]+|SV)(::\w+)*')
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


def mark(code):
    link = '#' + code if LINKED.fullmatch(code) else escape(code)
    return f'<code>{link}</code>'


def inline(text):
    """A paragraph's text with its code marked."""
    pieces = re.split(r'`([^`]+)`', text)
    return ''.join(mark(piece) if i % 2 else escape(piece) for i, piece in enumerate(pieces))


def parts_of(lines):
    """('text' | 'list' | 'code', lines) for each part of a comment."""
    parts = []
    for line in lines:
        line = line.removeprefix(' ')
        kind = parts[-1][0] if parts else None
        if not line and kind == 'code':
            parts[-1][1].append('')
        elif not line:
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


def markup(comments, has_brief=True):
    """One line of Doxygen's for comments, the first sentence of the first one as its heading."""
    html = []
    for kind, lines in (part for comment in comments for part in parts_of(comment)):
        if kind == 'code':
            listing = escape('\n'.join(lines).rstrip('\n')).replace('\n', '<br>')
            html.append(f'<pre>{listing}</pre>')
        elif kind == 'list':
            html.append('<ul>' + ''.join(f'<li>{inline(item)}</li>' for item in lines) + '</ul>')
        elif html or not has_brief:
            html.append(f'<p>{inline(" ".join(lines))}</p>')
        else:
            html += [inline(part) for part in SENTENCE_END.split(' '.join(lines), maxsplit=1)]
    if not has_brief:
        return ' '.join(html)
    return '@brief ' + ' @details '.join([html[0], ' '.join(html[1:])][:len(html)])


class Filter:
    def __init__(self, name, lines):
        self.name = name
        self.lines = lines
        self.containers = []  # the kinds of those that are open
        self.block = []  # comment lines that may belong to the next declaration
        self.run_comment = []  # of declarations that follow each other
        self.is_file_described = False
        self.is_section_open = False

    def run(self):
        at = 0
        while at < len(self.lines):
            at = self.line(at)
        self.end_block(at)
        self.end_section(at - 1)

    def line(self, at):
        """Handles the line, or all of a declaration that begins on it; the next line to handle."""
        code, comment = split_comment(self.lines[at])
        text = code.strip()
        if text.startswith('#') and not text.startswith('#define'):
            return at + 1
        if text and not re.fullmatch(r'}.*|public:|protected:|private:', text):
            return self.declaration(at)
        if not text and comment is not None:
            self.run_comment = []
            self.block.append(comment)
            self.lines[at] = ''
            return at + 1
        self.end_block(at)
        self.run_comment = []
        if text.startswith('}') and self.containers.pop() == 'namespace':
            self.end_section(at - 1)
        return at + 1

    def end_block(self, at):
        """A comment that ends before that line, and that no declaration follows."""
        block, self.block = self.block, []
        if not block:
            return
        if block[0].startswith(' -- '):
            self.end_section(at - 1)
            self.lines[at - 1] += f'/** @name {inline(block[0][4:])} */ /** @{{ */'
            self.is_section_open = True
            return
        text = markup([block], not self.is_file_described)
        self.lines[at - len(block)] = f'/** @file {self.name} {text} */'
        self.is_file_described = True

    def end_section(self, at):
        if self.is_section_open:
            self.lines[at] += '/** @} */'
        self.is_section_open = False

    def declaration(self, at):
        end, behind, statement = self.statement(at)
        own, self.block = self.block, []
        if own:
            self.run_comment = own
        counts = own or not ('~' in statement or '= delete' in statement)
        comments = [comment for comment in (behind, counts and self.run_comment) if comment]
        container = CONTAINER.match(statement)
        opens = container and statement.endswith('{') and '(' not in statement
        if comments and not statement.startswith('extern "" {'):
            code = self.lines[at].lstrip()
            indent = self.lines[at][:-len(code)]
            self.lines[at] = f'{indent}/** {markup(comments)} */ {code}'
            if opens:
                self.run_comment = []
        if opens:
            self.containers.append(container.group(1))
        return end

    def statement(self, at):
        """Where the declaration that begins here ends, the comments behind it, and its code."""
        is_macro = self.lines[at].startswith('#')
        ends = (';', '}', ',') if self.containers[-1:] == ['enum'] else (';', '}')
        depth = 0
        statement = ''
        comments = []
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
            if depth == 0 and bare.endswith(ends):
                break
            if bare.endswith('{') and CONTAINER.match(statement) and '(' not in statement:
                break
            if ends[-1] == ',' and depth == 0 and self.lines[at].strip().startswith('}'):
                break
        return at, comments, statement


def filtered(name, text):
    """The text of a header, for Doxygen.

    >>> print(filtered('sample.h', '''// Colours.
    ...
    ... // Any of 256. As `Zel_Mask`: x::y -- 5%.
    ... class Palette {
    ... public:
    ...     // Any thread.
    ...     int Get(int i) const;  // 0 when absent
    ...     int Size() const {
    ...         return 1;  // not for readers
    ...     }
    ...     ~Palette();
    ...
    ...     void Plain();
    ... };
    ...
    ... // -- Names
    ...
    ... enum Name {
    ...     kRed,  // #f00
    ...     kBlue,
    ...     kNone  // "//"
    ... };'''))
    /** @file sample.h @brief Colours. */
    <BLANKLINE>
    <BLANKLINE>
    /** @brief Any of 256. @details As <code>#Zel_Mask</code>: x\\::y \\-- 5\\%. */ class Palette {
    public:
    <BLANKLINE>
        /** @brief 0 when absent @details <p>Any thread.</p> */ int Get(int i) const;
        /** @brief Any thread. */ int Size() const {
            return 1;  // not for readers
        }
        ~Palette();
    <BLANKLINE>
        void Plain();
    };
    <BLANKLINE>
    /** @name Names */ /** @{ */
    <BLANKLINE>
    enum Name {
        /** @brief \\#f00 */ kRed,
        kBlue,
        /** @brief &quot;//&quot; */ kNone
    };/** @} */

    A run shares its comment, of which no sentence is lost.

    >>> print(filtered('run.h', '''// They
    ... // wait.
    ... //
    ... //     &
    ... // - a
    ... //   b
    ... void f(int,
    ...        int);  // 5 s
    ... #define H \\\\
    ...     1
    ... void g() = delete;'''))
    <BLANKLINE>
    <BLANKLINE>
    <BLANKLINE>
    <BLANKLINE>
    <BLANKLINE>
    <BLANKLINE>
    /** @brief 5 s @details <p>They wait.</p> <pre>&amp;</pre> <ul><li>a b</li></ul> */ void f(int,
           int);
    /** @brief They wait. @details <pre>&amp;</pre> <ul><li>a b</li></ul> */ #define H \\
        1
    void g() = delete;
    """
    lines = text.split('\n')
    Filter(name, lines).run()
    return '\n'.join(lines)


if __name__ == '__main__':
    with open(sys.argv[1], encoding='utf-8') as header:
        print(filtered('/'.join(sys.argv[1].split('/')[-2:]), header.read()), end='')
