#ifndef UTILITY_CODETRANS_CODEMAPS_H
#define UTILITY_CODETRANS_CODEMAPS_H

/** @file
 * Loading and releasing the code-map data file: the maps from GBK and Big5 to Unicode and the automaton that detects
 * encodings. The build makes it as `codemaps.dat`; the host chooses where it lies.
 *
 * The tables belong to the process. Load them before, and destroy them after, any use by several threads: neither call
 * is guarded. In between, detection and conversion only read them. */

#include "../../Utility/UtilityExport.h"

/** Loads the data file at `path` and returns 0, or a negative code; after a failure nothing is loaded.
 *
 * -1: the file cannot be opened, `path` is null, or the GBK map is short; -2: the Big5 map is short; -3: the number of
 * records is missing; -4: fewer records follow than that number (if the stream can tell its size, before any memory is
 * taken for them); -127: no memory. No message is written. Bytes behind the last record do not matter.
 *
 * Tables of an earlier load are freed first, also when this one fails. The file is read in four block reads, its
 * integers little-endian on every machine. A failure link that leads out of the table, or that is part of a circle
 * of such links, counts as one to the root. Allocates 128 KiB and 40 bytes a record (16 of
 * them the file's, the rest a form of them that detection runs on), and 8 more a record meanwhile;
 * time linear in the file. */
UTILITY_API int CodeTrans_Initialize(const char* path);

/** Frees the tables. Without them detection gives 0 and the conversions that need them an empty output.
 *
 * May be called at any time in any state, but not while another thread uses the tables. */
UTILITY_API void CodeTrans_Destroy();

#endif
