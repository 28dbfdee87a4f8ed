/* Loaded before a program's own libraries: only its own shared memory can be had, and two pieces of that. */
#include <errno.h>
#include <stddef.h>
#include <sys/syscall.h>
#include <unistd.h>

static int own[2] = {-1, -1}, count;

int shmget(int key, size_t size, int flags);
void* shmat(int id, const void* address, int flags);

int shmget(int key, size_t size, int flags) {
    if (count < 2)
        return own[count++] = (int)syscall(SYS_shmget, key, size, flags);
    errno = ENOSPC;
    return -1;
}

void* shmat(int id, const void* address, int flags) {
    if (id == own[0] || id == own[1])
        return (void*)syscall(SYS_shmat, id, address, flags); /* NOLINT */
    errno = EACCES;
    return (void*)-1; /* NOLINT */
}
