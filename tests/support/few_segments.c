/* Loaded before a program's own libraries: memory to share can be had twice, then no more. */
#include <errno.h>
#include <stddef.h>
#include <sys/syscall.h>
#include <unistd.h>

int shmget(int key, size_t size, int flags);

int shmget(int key, size_t size, int flags) {
    static int segments;
    if (++segments > 2) {
        errno = ENOSPC;
        return -1;
    }
    return (int)syscall(SYS_shmget, key, size, flags);
}
