/* Preloaded into a workstation's processes: makes reads and writes of chosen files fail, wait or crawl, and sets the
 * clock back. The plan is one page, shared with the test: its first half is the rule in force, its second half begins
 * with the number of calls that the rule has met.
 *
 * A rule is "read|write ERROR DELAY_MS AFTER_BYTES PART-OF-PATH": from the byte on, calls on such a file take the delay
 * first and then fail with the error (0: go on). With the error -1 a call waits until the rule changes. The rule
 * "clock SECONDS" adds seconds to the clock of the day, and a look at it is a call that meets the rule. */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

enum { PageBytes = 4096, HitsAt = 2048, HoldError = -1 };

static char* page;

__attribute__((constructor)) static void Load(void) {
    const char* path = getenv("FAULT_PLAN");
    const int file = path != NULL ? open(path, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0) return;
    void* mapped = mmap(NULL, PageBytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (mapped != MAP_FAILED) page = mapped;
}

static void Sleep(long milliseconds) {
    const struct timespec span = {milliseconds / 1000, milliseconds % 1000 * 1000000};
    nanosleep(&span, NULL);
}

/* 0, or the error that the call is to fail with. */
static int Meet(const char* operation, int file, long long end) {
    if (page == NULL || page[0] == '-' || page[0] == '\0') return 0;
    char wanted[8], part[256], link[64], path[1024];
    int error = 0;
    long delay = 0;
    long long after = 0;
    if (sscanf(page, "%7s %d %ld %lld %255[^\n]", wanted, &error, &delay, &after, part) != 5) return 0;
    if (strcmp(wanted, operation) != 0 || end <= after) return 0;
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0) return 0;
    path[length] = '\0';
    if (strstr(path, part) == NULL) return 0;
    __atomic_add_fetch((long*)(page + HitsAt), 1, __ATOMIC_SEQ_CST);
    if (delay > 0) Sleep(delay);
    if (error != HoldError) return error;
    char rule[HitsAt];
    memcpy(rule, page, sizeof rule);
    while (memcmp(rule, page, strnlen(rule, sizeof rule)) == 0) Sleep(1);
    return Meet(operation, file, end);
}

static long ClockShift(void) {
    long seconds = 0;
    if (page == NULL || sscanf(page, "clock %ld", &seconds) != 1) return 0;
    __atomic_add_fetch((long*)(page + HitsAt), 1, __ATOMIC_SEQ_CST);
    return seconds;
}

#define FAIL_OR(call)                                                                                                  \
    if (error != 0) {                                                                                                  \
        errno = error;                                                                                                 \
        return -1;                                                                                                     \
    }                                                                                                                  \
    return call

ssize_t read(int file, void* buffer, size_t count) {
    const int error = page == NULL ? 0 : Meet("read", file, lseek(file, 0, SEEK_CUR) + (long long)count);
    FAIL_OR(syscall(SYS_read, file, buffer, count));
}

ssize_t write(int file, const void* buffer, size_t count) {
    const int error = page == NULL ? 0 : Meet("write", file, lseek(file, 0, SEEK_CUR) + (long long)count);
    FAIL_OR(syscall(SYS_write, file, buffer, count));
}

ssize_t pread(int file, void* buffer, size_t count, off_t at) {
    const int error = Meet("read", file, at + (long long)count);
    FAIL_OR(syscall(SYS_pread64, file, buffer, count, at));
}

ssize_t pread64(int file, void* buffer, size_t count, off_t at) {
    return pread(file, buffer, count, at);
}

ssize_t pwrite(int file, const void* buffer, size_t count, off_t at) {
    const int error = Meet("write", file, at + (long long)count);
    FAIL_OR(syscall(SYS_pwrite64, file, buffer, count, at));
}

ssize_t pwrite64(int file, const void* buffer, size_t count, off_t at) {
    return pwrite(file, buffer, count, at);
}

int clock_gettime(clockid_t clock, struct timespec* now) {
    const int result = (int)syscall(SYS_clock_gettime, clock, now);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) now->tv_sec += ClockShift();
    return result;
}

int gettimeofday(struct timeval* restrict now, void* restrict zone) {
    const int result = (int)syscall(SYS_gettimeofday, now, zone);
    if (result == 0) now->tv_sec += ClockShift();
    return result;
}
