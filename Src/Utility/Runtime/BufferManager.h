#ifndef UTILITY_RUNTIME_BUFFERMANAGER_H
#define UTILITY_RUNTIME_BUFFERMANAGER_H

/** @file
 * A keeper of handed-out texts that frees the oldest of them in batches. */

#include <pthread.h>

#include <vector>

#include "../UtilityExport.h"

/** Holds heap buffers that were handed to a host which may never free them, and frees the oldest in batches.
 *
 * Every buffer was allocated with `new char[]` and is freed with `delete[]`. From the moment it is handed over it
 * belongs to the manager: the host may read it until the manager frees it and must not free it itself. An addition
 * that finds more than 20,000 entries first frees the oldest 10,000 of them, so that a buffer lives until at least
 * the 10,002nd addition after its own, unless ReleaseBuf(true) is called.
 *
 * All operations may be called from any thread at any time between construction and destruction. The buffers themselves
 * are freed outside the lock, so other threads go on adding while a batch is being freed. The fields are for looking
 * at, under `m_mutexBuf`. Not copyable. */
class UTILITY_API CBufferManager {
public:
    CBufferManager();
    /** Frees every buffer held. No other thread may be using the manager any more. */
    ~CBufferManager();
    CBufferManager(const CBufferManager&) = delete;
    CBufferManager& operator=(const CBufferManager&) = delete;

    /** Takes over `buffer`, allocated with `new char[]` (null is held like any other entry), and returns it.
     *
     * May first free a batch, otherwise takes constant time. Should memory run out, std::bad_alloc is thrown and the
     * buffer still belongs to the caller. */
    char* AddBuffer(char* buffer);

    /** Returns a new copy of `text`, which must be NUL-terminated and not null, held by the manager. As above. */
    char* AddBuffer(char const* text);

    /** Frees buffers: with `full` false the oldest 10,000, and only if more than 20,000 entries are held and no other
     * release is going on; they leave the list. With `full` true all of them, always; the list then keeps its length,
     * every entry null. */
    void ReleaseBuf(bool full);

    pthread_mutex_t m_mutexBuf;    /**< guards the two fields below */
    std::vector<char*> m_vBuffers; /**< the buffers held, oldest first; null where freed */
    int m_nReleasing;              /**< number of releases going on; 0 when idle */
};

#endif
