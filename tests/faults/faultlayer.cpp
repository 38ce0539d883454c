#include "tests/faults/faultlayer.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>

// The allocator below the replaced functions.
#define REAL(name) __libc_##name
extern "C" {
void* REAL(malloc)(std::size_t);
void* REAL(calloc)(std::size_t, std::size_t);
void* REAL(realloc)(void*, std::size_t);
void* REAL(memalign)(std::size_t, std::size_t);
void REAL(free)(void*);
}

namespace {

tFault ordered;
std::atomic<bool> armed = false;
std::atomic<long> calls = 0;
std::atomic<const char*> failed = nullptr;
std::atomic<long> blocks = 0;
thread_local int pauses = 0;

void* counted(void* block) {
  if (block != nullptr) ++blocks;
  return block;
}

template <class tFunction>
tFunction* next(const char* name) {
  const tFaultPause pause;
  return reinterpret_cast<tFunction*>(dlsym(RTLD_NEXT, name));
}

bool fileFails(const char* function) {
  if (!failsNow(eFaulty::kFile, function)) return false;
  errno = ordered.error;
  return true;
}

// Of a transfer that is cut the half, at least one byte.
std::size_t part(std::size_t count, const char* function) {
  return count > 1 && failsNow(eFaulty::kPart, function) ? count / 2 : count;
}

}  // namespace

void arm(const tFault& fault) {
  ordered = fault;
  calls = 0;
  failed = nullptr;
  armed = true;
}

tFaultCount disarm() {
  armed = false;
  return {calls, failed};
}

bool failsNow(eFaulty what, const char* function) {
  if (!armed || pauses > 0 || ordered.what != what) return false;
  const long call = ++calls;
  if (ordered.nth == 0 || call < ordered.nth || (call > ordered.nth && !ordered.lasting)) {
    return false;
  }
  const char* none = nullptr;
  failed.compare_exchange_strong(none, function);
  return true;
}

tFaultPause::tFaultPause() {
  ++pauses;
}

tFaultPause::~tFaultPause() {
  --pauses;
}

tHeld held() {
  int descriptors = 0;
  for (int i = 0; i < 64; ++i) descriptors += fcntl(i, F_GETFD) >= 0 ? 1 : 0;
  return {blocks, descriptors};
}

// --- the replaced functions ---------------------------------------------------------------------

#pragma GCC visibility push(default)
// The names of the headers are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void* malloc(std::size_t size) {
  return failsNow(eFaulty::kMemory, "malloc") ? nullptr : counted(REAL(malloc)(size));
}
void* calloc(std::size_t count, std::size_t size) {
  return failsNow(eFaulty::kMemory, "calloc") ? nullptr : counted(REAL(calloc)(count, size));
}
void* realloc(void* block, std::size_t size) {
  if (failsNow(eFaulty::kMemory, "realloc")) return nullptr;
  void* const resized = REAL(realloc)(block, size);
  return block == nullptr ? counted(resized) : resized;
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
  if (failsNow(eFaulty::kMemory, "aligned_alloc")) return nullptr;
  return counted(REAL(memalign)(alignment, size));
}
void free(void* block) {
  if (block != nullptr) --blocks;
  REAL(free)(block);
}

// A call that may end in an error, `failure` being its answer.
#define FILE_CALL(result, name, parameters, arguments, failure)             \
  result name parameters {                                                  \
    static result(*const real) parameters = next<result parameters>(#name); \
    return fileFails(#name) ? failure : real arguments;                     \
  }
FILE_CALL(int, stat, (const char* name, struct stat* status), (name, status), -1)
FILE_CALL(int, lstat, (const char* name, struct stat* status), (name, status), -1)
FILE_CALL(int, fstat, (int file, struct stat* status), (file, status), -1)
FILE_CALL(int, rename, (const char* from, const char* to), (from, to), -1)
FILE_CALL(int, unlink, (const char* name), (name), -1)
FILE_CALL(int, ftruncate, (int file, off_t size), (file, size), -1)
FILE_CALL(int, flock, (int file, int what), (file, what), -1)
FILE_CALL(int, chmod, (const char* name, mode_t mode), (name, mode), -1)
FILE_CALL(int, access, (const char* name, int mode), (name, mode), -1)
FILE_CALL(int, dup2, (int from, int to), (from, to), -1)
FILE_CALL(off_t, lseek, (int file, off_t position, int from), (file, position, from), -1)
FILE_CALL(char*, realpath, (const char* name, char* path), (name, path), nullptr)
FILE_CALL(ssize_t, readlink, (const char* name, char* path, std::size_t size), (name, path, size),
          -1)
#undef FILE_CALL

int open(const char* name, int flags, ...) {
  static int (*const real)(const char*, int, ...) = next<int(const char*, int, ...)>("open");
  std::va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return fileFails("open") ? -1 : real(name, flags, mode);
}
int fcntl(int file, int what, ...) {
  static int (*const real)(int, int, ...) = next<int(int, int, ...)>("fcntl");
  std::va_list more;
  va_start(more, what);
  const long argument = va_arg(more, long);
  va_end(more);
  return what != F_GETFD && fileFails("fcntl") ? -1 : real(file, what, argument);
}
// The C library asserts that it has memory for a thread.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) {
  static auto* const real =
      next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
  const tFaultPause pause;
  return real(thread, attributes, start, argument);
}
// A descriptor is gone whatever closing it answers.
int close(int file) {
  static int (*const real)(int) = next<int(int)>("close");
  const int closed = real(file);
  return fileFails("close") ? -1 : closed;
}
ssize_t read(int file, void* bytes, std::size_t count) {
  static auto* const real = next<ssize_t(int, void*, std::size_t)>("read");
  return fileFails("read") ? -1 : real(file, bytes, part(count, "read"));
}
ssize_t write(int file, const void* bytes, std::size_t count) {
  static auto* const real = next<ssize_t(int, const void*, std::size_t)>("write");
  return fileFails("write") ? -1 : real(file, bytes, part(count, "write"));
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility pop
