#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/prog/{paths,tours}.csv.

paths.csv, row: vertices,edges,seed,start,end,cost of the shortest path (inf: none), by SciPy's Dijkstra. tours.csv, row:
name,nodes,seed,length of the best tour known, distances rounded to whole numbers: the published optimum for the TSPLIB
instances in tests/reference/prog/tours (which the Lin-Kernighan-Helsgaun heuristic reaches, through the package elkai), and
that heuristic's tour for nodes drawn at random. tests/prog/drawn_problem.h draws the same numbers.
"""
import pathlib
import sys

import elkai
import numpy as np
import scipy
from scipy.sparse import coo_array
from scipy.sparse.csgraph import dijkstra

from draws import Draw

HERE = pathlib.Path(__file__).resolve().parents[1] / "prog"
GRAPHS = [(2, 1), (2, 3), (10, 15), (10, 30), (30, 60), (100, 150), (100, 400), (1000, 1200), (1000, 5000),
          (20000, 60000), (200000, 1000000)]
KNOWN = {"berlin52": 7542, "eil51": 426, "eil76": 538, "kroA100": 21282}
DRAWN = [(150, 1), (280, 2), (500, 3), (1000, 4)]


def cost(vertices, edges, seed):
    d = Draw(seed)
    best = {}
    for _ in range(edges):
        pair = d.below(vertices), d.below(vertices)
        weight = 1 + d.below(1000)
        best[pair] = min(weight, best.get(pair, weight))
    pairs = np.array(list(best))
    graph = coo_array((np.array(list(best.values()), float), (pairs[:, 0], pairs[:, 1])), (vertices, vertices)).tocsr()
    return dijkstra(graph, indices=0)[vertices - 1]


def tour(points):
    p = np.array(points, float)
    distance = np.floor(np.sqrt(((p[:, None] - p[None]) ** 2).sum(-1)) + 0.5).astype(int)
    order = elkai.DistanceMatrix(distance.tolist()).solve_tsp()
    return int(sum(distance[a, b] for a, b in zip(order, order[1:])))


def main():
    versions = f"SciPy {scipy.__version__}, Python {sys.version.split()[0]}"
    with open(HERE / "paths.csv", "w") as out:
        out.write(f"# Written by tests/reference/make/paths.py with {versions}.\n# vertices,edges,seed,start,end,cost\n")
        for vertices, edges in GRAPHS:
            for seed in range(20 if edges <= 5000 else 1):
                out.write(f"{vertices},{edges},{seed},0,{vertices - 1},{cost(vertices, edges, seed):.15g}\n")
    with open(HERE / "tours.csv", "w") as out:
        out.write(f"# Written by tests/reference/make/paths.py with elkai 2.\n# name,nodes,seed,length\n")
        for name, optimum in KNOWN.items():
            lines = (HERE / "tours" / f"{name}.csv").read_text().splitlines()
            points = [tuple(map(float, line.split(","))) for line in lines if line[0] != "#"]
            assert tour(points) == optimum, name
            out.write(f"{name},{len(points)},0,{optimum}\n")
        for nodes, seed in DRAWN:
            d = Draw(seed)
            points = [(d.below(10000), d.below(10000)) for _ in range(nodes)]
            out.write(f"drawn,{nodes},{seed},{tour(points)}\n")


main()
