/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Shortest paths in a network, and round tours through all its nodes.
 *
 * A weight at or above 1e100 is no edge. Paths need weights of 0 or more: a negative weight or a NaN anywhere means
 * that no path is found. In tours a weight may be negative; a NaN is no edge. Failure is a cost or a length of 1e300.
 * All functions may run at the same time, on distinct handles.
 */
#ifndef ORVANE_PATHS_H
#define ORVANE_PATHS_H

#include <orvane/export.h>

/** A directed graph and the shortest path between two of its vertices. */
typedef struct ShortestPath ShortestPath;

/** A set of nodes with the weights between them, and the round tour through all of them. */
typedef struct TravellingSalesman TravellingSalesman;

/**
 * Shortest path in a graph given by its directed edges.
 *
 * @param from        [edges] vertex that an edge leaves; ids need not be contiguous
 * @param to          [edges] vertex that it reaches
 * @param weight      [edges] weights
 * @param edges       number of edges; 0 or less is no graph
 * @param start       id of the first vertex
 * @param end         id of the last vertex
 * @param path        [number of vertices, at least 2] out, ids from start to end; untouched on failure
 * @param pathLength  out, number of ids in path; untouched on failure
 * @param cost        out, sum of the weights; 1e300 on failure
 * @return 1 found, 0 not. start equal to end needs no graph: the path is start twice, the cost 0
 */
ORVANE_API uint8_t progMinimumDistance1(const uint32_t* from, const uint32_t* to, const double* weight, int32_t edges,
                                        uint32_t start, uint32_t end, uint32_t* path, uint32_t* pathLength,
                                        double* cost);

/**
 * progMinimumDistance1 for a graph given by a matrix.
 *
 * @param matrix      [n*n] row-major, weight from row to column
 * @param n           number of vertices, their ids from 0
 * @param noEdge      reserved, not read
 * @param start       id of the first vertex
 * @param end         id of the last vertex
 * @param path        [n, at least 2] out
 * @param pathLength  out
 * @param cost        out
 * @return 1 found, 0 not
 */
ORVANE_API uint8_t progMinimumDistance2(const double* matrix, uint32_t n, uint32_t noEdge, uint32_t start, uint32_t end,
                                        uint32_t* path, uint32_t* pathLength, double* cost);

/**
 * Keeps a graph given by its edges and searches the shortest path; arguments as in progMinimumDistance1.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API ShortestPath* progSP_Create(const uint32_t* from, const uint32_t* to, const double* weight, int32_t edges,
                                       uint32_t start, uint32_t end);

/**
 * progSP_Create for a graph given by a matrix; arguments as in progMinimumDistance2.
 *
 * @return handle, released by api_FreeHandle
 */
ORVANE_API ShortestPath* progSP_Create2(const double* matrix, uint32_t n, uint32_t start, uint32_t end);

/**
 * Cost of the found path when the weights have changed.
 *
 * @param search  handle
 * @param weight  [edges] the new weights in the order of the edges; for a matrix [n*n]
 * @return sum over the path's edges; 1e300 if no path was found or one of them is an edge no more
 */
ORVANE_API double progSP_calcWeight(const ShortestPath* search, const double* weight);

/**
 * The found path.
 *
 * @param search  handle
 * @param path    [result] out, ids from start to end; null asks for the count alone
 * @return number of ids; 0 if no path was found
 */
ORVANE_API int32_t progSP_getPath(const ShortestPath* search, uint32_t* path);

/**
 * How much dearer a path is than the shortest.
 *
 * @param search  handle
 * @param path    [count] ids from start to end; of parallel edges the cheapest counts
 * @param count   number of ids
 * @return its cost less the least cost; 1e300 if no path was found, or this one has other ends or a missing edge
 */
ORVANE_API double progSP_calcSPError(const ShortestPath* search, const uint32_t* path, int32_t count);

/**
 * Nodes by the weights between them.
 *
 * @param rows  [n] rows of [n] weights: rows[i][j] from node i to node j; the diagonal is not read
 * @param n     number of nodes
 * @return handle, released by api_FreeHandle
 */
ORVANE_API TravellingSalesman* api_TSP_initByWeight(const double* const* rows, uint32_t n);

/**
 * Nodes by their places in the plane; weights are Euclidean distances.
 *
 * @param positions  [n*2] x, y of each node
 * @param n          number of nodes
 * @return handle, released by api_FreeHandle
 */
ORVANE_API TravellingSalesman* api_TSP_initBy2DPosition(const double* positions, int32_t n);

/**
 * Nodes by their places in space; weights are Euclidean distances.
 *
 * @param positions  [n*3] x, y, z of each node
 * @param n          number of nodes
 * @return handle, released by api_FreeHandle
 */
ORVANE_API TravellingSalesman* api_TSP_initBy3DPosition(const double* positions, int32_t n);

/**
 * How much longer a tour is than the one that api_TSP_getPath gives, which is found on first use.
 *
 * @param tsp   handle
 * @param tour  [len] a permutation of the nodes
 * @param len   number of nodes
 * @return its length less the found one; below 0 for a better tour; 1e300 if it is no tour or none was found
 */
ORVANE_API double api_TSP_calcTSPError(TravellingSalesman* tsp, const uint32_t* tour, int32_t len);

/**
 * The tour, found on first use as by api_Prog_SolveTSP.
 *
 * @param tsp   handle
 * @param path  [n] out, the nodes in order from node 0; untouched on failure
 * @return number of nodes; 0 if there is no tour
 */
ORVANE_API int32_t api_TSP_getPath(TravellingSalesman* tsp, uint32_t* path);

/**
 * Length of a round tour: through the nodes in the given order and back to the first.
 *
 * @param rows    [n] rows of weights; the weight from a to b is rows[a][b*stride]
 * @param stride  distance of neighbouring weights in a row; below 1 counts as 1
 * @param n       number of nodes
 * @param tour    [len] nodes
 * @param len     number of nodes of the tour; up to 1 gives 0
 * @return the length; 1e300 for a node out of range
 */
ORVANE_API double api_TSP_clacTSP(const double* const* rows, int32_t stride, int32_t n, const uint32_t* tour,
                                  int32_t len);

/**
 * A short round tour through all nodes: from every node one tour is grown at both ends by nearest nodes; the best of
 * them are improved by exchanges of two edges and by moves of short pieces, the best one by many local changes more.
 * The result depends on the weights alone, not on the threads.
 *
 * @param rows     [n] rows of [n] weights: rows[i][j] from node i to node j; the diagonal is not read
 * @param n        number of nodes
 * @param threads  worker threads for the growing, at least 1
 * @param tour     [n] out, the nodes in order from node 0; untouched on failure
 * @return the length; 1e300 if some node has no edge to another one or no tour closes
 */
ORVANE_API double api_Prog_SolveTSP(const double* const* rows, int32_t n, int32_t threads, uint32_t* tour);

#endif
