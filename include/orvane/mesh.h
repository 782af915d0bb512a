/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The two-dimensional mesh of the process: nodes and elements by id, their text files, the part that is drawn and the
 * node nearest to a place.
 *
 * There is one mesh. mesh2D_initBuild derives the range and the visible nodes after nodes or elements were added or
 * loaded; what was added later is not seen by them until the next build or range. Visible nodes stand in ascending
 * order of id. Nothing here has a lock: all functions are to be called from one thread at a time.
 *
 * A file has a line a node, "id, x, y", or a line an element, "id, node, node, ...". Fields stand between commas,
 * blanks around them do not count, lines may end by CR LF. A number is read up to its first wrong letter, a field
 * without one is 0.
 */
#ifndef ORVANE_MESH_H
#define ORVANE_MESH_H

#include <orvane/export.h>

/** Adds a node. @param id any @param x coordinate @param y coordinate @return false when there is a node of this id */
ORVANE_API bool mesh2D_addNode(int32_t id, double x, double y);

/** Adds an element. @param id any @param nodeIds [count] ids of its nodes, which need not exist @param count their
 * number @return false when there is an element of this id */
ORVANE_API bool mesh2D_addElement(int32_t id, const int32_t* nodeIds, int32_t count);

/** How many nodes there are. @return their number */
ORVANE_API int32_t mesh2D_getNodeSize(void);

/** How many elements there are. @return their number */
ORVANE_API int32_t mesh2D_getElementSize(void);

/** The ids of all nodes, ascending. @param out [mesh2D_getNodeSize] out @return their number */
ORVANE_API int32_t mesh2D_getAllNodeID(int32_t* out);

/** The ids of all elements, ascending. @param out [mesh2D_getElementSize] out @return their number */
ORVANE_API int32_t mesh2D_getAllElementID(int32_t* out);

/** The node ids of all elements, one element behind the other in ascending order of the elements' ids. @param out
 * [sum of their numbers] out; null to count only @return their number */
ORVANE_API int32_t mesh2D_getAllElementNodeID(int32_t* out);

/** Coordinates of nodes. @param ids [count] ids @param count their number @param out [2*count] out, x and y of each;
 * NaN for an unknown id @return whether all ids are known */
ORVANE_API bool mesh2D_getNodePosition(const int32_t* ids, int32_t count, double* out);

/** The node ids of an element. @param id element @param out [number of its nodes] out; null to count only @return their
 * number; 0 for an unknown element */
ORVANE_API int32_t mesh2D_getElementNodeID(int32_t id, int32_t* out);

/** The places of nodes among the visible ones, from 0. @param ids [count] ids @param count their number @param out
 * [count] out, filled up to the first node that is not visible @return false when there is one */
ORVANE_API bool mesh2D_getNodeIndex(const int32_t* ids, int32_t count, int32_t* out);

/** The bounding box of all nodes at the last build; 0 for no nodes. @param xMin out @param xMax out @param yMin out
 * @param yMax out */
ORVANE_API void mesh2D_getRange(double* xMin, double* xMax, double* yMin, double* yMax);

/** The box of the visible nodes. @param xMin out @param xMax out @param yMin out @param yMax out */
ORVANE_API void mesh2D_getCurrentRange(double* xMin, double* xMax, double* yMin, double* yMax);

/** Sets the box of the visible nodes: those on its edges are visible. The ends of a pair may be exchanged. @param xMin
 * end @param xMax end @param yMin end @param yMax end */
ORVANE_API void mesh2D_setCurrentRange(double xMin, double xMax, double yMin, double yMax);

/** Coordinates of the visible nodes. @param outX [number of visible nodes] out @param outY likewise; null to count
 * only @return their number */
ORVANE_API int32_t mesh2D_getSortNodePosition(double* outX, double* outY);

/** Makes the bounding box, shows all nodes, links elements to their nodes (those that exist) and makes the grid by
 * which the nearest node is found. */
ORVANE_API void mesh2D_initBuild(void);

/**
 * The visible node nearest to a place; of equally near ones the first in order.
 *
 * @param x         place
 * @param y         place
 * @param distance  out, its distance; sqrt(1.449459118e308) when there is none
 * @return its id; 0 when there is no visible node with finite coordinates nearer than that
 */
ORVANE_API int32_t mesh2D_findNearestNodeID(double x, double y, double* distance);

/**
 * Adds the nodes of a file. A line of fewer than three fields is passed over, but counts.
 *
 * @param path       zero-terminated
 * @param skipLines  lines in front
 * @param count      lines to read behind them; the file may have fewer
 * @return false when the file cannot be read or an id is there already; the whole mesh is then empty
 */
ORVANE_API bool mesh2D_loadNode(const char* path, int32_t skipLines, int32_t count);

/**
 * Adds the elements of a file.
 *
 * @param path             zero-terminated
 * @param skipLines        lines in front
 * @param count            lines to read behind them; the file may have fewer
 * @param nodesPerElement  nodes of an element; further fields of a line are ignored
 * @return false when the file cannot be read, an id is there already or a line has fewer than nodesPerElement + 1
 * fields; the whole mesh is then empty
 */
ORVANE_API bool mesh2D_loadElement(const char* path, int32_t skipLines, int32_t count, int32_t nodesPerElement);

/** Saves the nodes: "NodeSize: " with their number, then a line a node in ascending order of id, with 18 digits. The
 * file is written beside the path and renamed when it is complete. @param path zero-terminated @return false when there
 * are no nodes or the file cannot be written */
ORVANE_API bool mesh2D_saveNode(const char* path);

/** Saves the elements: "ElementSize: " with their number, then a line an element in ascending order of id; otherwise as
 * mesh2D_saveNode. @param path zero-terminated @return false when there are no elements or the file cannot be written
 */
ORVANE_API bool mesh2D_saveElement(const char* path);

#endif
