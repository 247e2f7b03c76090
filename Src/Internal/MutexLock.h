#ifndef UTILITY_INTERNAL_MUTEXLOCK_H
#define UTILITY_INTERNAL_MUTEXLOCK_H

// Holds a POSIX mutex for a scope. The public classes and functions deal in pthread_mutex_t, which std::lock_guard does
// not take.

#include <pthread.h>

namespace utility::internal {

class MutexLock {
public:
    explicit MutexLock(pthread_mutex_t& mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
    ~MutexLock() { pthread_mutex_unlock(&mutex_); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

private:
    pthread_mutex_t& mutex_;
};

}  // namespace utility::internal

#endif
