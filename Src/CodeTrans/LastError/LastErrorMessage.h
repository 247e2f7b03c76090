#ifndef UTILITY_CODETRANS_LASTERRORMESSAGE_H
#define UTILITY_CODETRANS_LASTERRORMESSAGE_H

/** @file
 * The description of the last failure, handed out to the host. */

#include "../../Utility/UtilityExport.h"

/** Returns a new NUL-terminated copy of `g_sLastErrorMessage`, in UTF-8 when `g_nEncodeType` is 1, else GBK.
 *
 * Never null; an empty message gives an empty text. When `g_pBufManager` is set the copy belongs to that
 * manager, which may free a batch of older buffers now and frees this one in a later batch: do not free it.
 * Otherwise the caller frees it with `delete[]`.
 *
 * The conversion to UTF-8 is that of ANSIToUTF8: it sets the process-wide locale to "zh_CN.gbk" and ends the
 * text before the first sequence that is no GBK character. When the library describes a failure in another
 * thread meanwhile, the result is the earlier or the later message, never a mixture; the host must not write
 * the settings meanwhile. */
UTILITY_API char* GetLastErrorMsg();

#endif
