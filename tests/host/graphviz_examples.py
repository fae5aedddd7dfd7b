#!/usr/bin/env python3
"""Converts graphviz's example graphs with the sample host and compares with other programs.

    graphviz_examples.py EXAMPLES COMMAND...

EXAMPLES is the folder of Debian's graphviz-doc. Each graph there that graphviz's gv2gml takes is
given to COMMAND as `NAME.gml` in the current folder, with `-oout` behind the last one. Then for
each graph: xmllint finds the GraphML well-formed, graphviz counts the same nodes and edges in it
as in the graph, captions are the same character by character, and gml2gv reads the written GML
wherever it reads what gv2gml made.
"""

import gzip
import html
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

GRAPHML = '{http://graphml.graphdrawing.org/xmlns}'
# An attribute of a node as gv2gml lays it out. It does not encode quotation marks, so a text ends
# where the next attribute or the end of the node follows.
NODE_TEXT = r'^    %s (?:"(.*?)"|(\S+))(?=\n    \w+ |\n  \])'


def run(command, data=b''):
    """The output of a command, None when it failed or complained of syntax."""
    done = subprocess.run(command, input=data, capture_output=True, check=False)
    return None if done.returncode or b'syntax error' in done.stderr else done.stdout


def count(graph):
    """Nodes and edges as graphviz's gc counts them."""
    return [int(number) for number in run(['gc', '-n', '-e'], graph).split()[:2]]


def make_models(examples, folder):
    """Name and graph of each example, with its GML beside."""
    graphs = {}
    for source in sorted(examples.rglob('*.gv*')):
        data = source.read_bytes()
        graph = gzip.decompress(data) if source.suffix == '.gz' else data
        gml = run(['gv2gml'], graph)
        if gml:
            name = source.name.split('.')[0]
            graphs[name] = graph
            (folder / f'{name}.gml').write_bytes(gml)
    return graphs


def decode(gml):
    try:
        return gml.decode('utf-8')
    except UnicodeDecodeError:
        return gml.decode('cp1252')


def captions_of_gml(gml):
    captions = []
    for node in re.findall(r'^  node \[\n.*?^  \]$', decode(gml), re.MULTILINE | re.DOTALL):
        for key in ('label', 'name', 'id'):
            found = re.search(NODE_TEXT % key, node, re.MULTILINE | re.DOTALL)
            if found:
                captions.append(html.unescape(found[1] if found[2] is None else found[2]))
                break
    return captions


def captions_of_graphml(file):
    root = ElementTree.parse(file).getroot()
    names = {key.get('id'): key.get('attr.name') for key in root.iter(GRAPHML + 'key')}
    captions = []
    for node in root.iter(GRAPHML + 'node'):
        values = {names[data.get('key')]: data.text or '' for data in node.iter(GRAPHML + 'data')}
        captions.append(values.get('label', values.get('name', node.get('id')[1:])))
    return captions


def problems_of(folder, name, graph):
    gml = folder / f'{name}.gml'
    written = folder / 'out' / f'{name}.gml'
    graphml = folder / 'out' / f'{name}.graphml'
    if not written.exists() or not graphml.exists():
        return ['was not converted']
    problems = []
    if run(['xmllint', '--noout', str(graphml)]) is None:
        problems.append('the GraphML is not well-formed')
    expected = count(graph)
    found = count(run(['graphml2gv', str(graphml)]) or b'graph {}')
    if found != expected:
        problems.append(f'nodes and edges {found} in the GraphML instead of {expected}')
    if captions_of_graphml(graphml) != captions_of_gml(gml.read_bytes()):
        problems.append('captions differ')
    if run(['gml2gv', str(gml)]) and count(run(['gml2gv', str(written)]) or b'graph {}') != expected:
        problems.append('gml2gv does not read the same graph from the written GML')
    return problems


def main():
    examples = pathlib.Path(sys.argv[1])
    with tempfile.TemporaryDirectory() as directory:
        folder = pathlib.Path(directory)
        graphs = make_models(examples, folder)
        models = [f'{name}.gml' for name in graphs]
        subprocess.run(sys.argv[2:] + models + ['-oout'], cwd=folder, check=False)
        faults = 0
        for name, graph in graphs.items():
            for problem in problems_of(folder, name, graph):
                print(f'{name}: {problem}')
                faults += 1
    print(f'{len(graphs)} graphs compared, {faults} faults')
    return 0 if graphs and not faults else 1


if __name__ == '__main__':
    sys.exit(main())
