#!/usr/bin/env python3
"""Writes the large graph of the import benchmark: 600,000 nodes with graphics, 900,000 edges."""

import random
import sys


def main():
    out = sys.stdout
    node_count = int(sys.argv[1]) if len(sys.argv) > 1 else 600000
    edge_count = node_count * 3 // 2
    rng = random.Random(20240229)
    out.write('Creator "zelhost benchmark"\ngraph [\n  directed 1\n')
    for i in range(node_count):
        out.write(
            f' node [\n  id {i}\n  label "Node no {i}"\n  graphics [\n'
            f'   x {rng.uniform(0, 10000):.3f}\n   y {rng.uniform(0, 10000):.3f}\n'
            f'   w {rng.randint(20, 90)}\n   h 30\n  ]\n ]\n')
    for i in range(edge_count):
        out.write(
            f'  edge [\n    source {rng.randrange(node_count)}\n'
            f'    target {rng.randrange(node_count)}\n    weight {rng.random():.3f}\n  ]\n')
    out.write(']\n')


if __name__ == '__main__':
    main()
