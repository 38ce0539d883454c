/* Runs a command and prints what it took: "STATUS NANOSECONDS KIBIBYTES".

   STATUS is the exit status, or 128 plus the signal that ended the command; NANOSECONDS the wall
   time from its start to its end; KIBIBYTES the peak memory of the largest process among it and
   those of its descendants that were waited for. The kernel counts the memory that a process had
   before it became another program, so a command started from a large program would show that
   program's peak. This one is small, and starts the command without a copy of itself. */
#define _GNU_SOURCE
#include <fcntl.h>
#include <spawn.h>
#include <stdio.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

extern char** environ;

static long long now(void) {
  struct timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return t.tv_sec * 1000000000LL + t.tv_nsec;
}

int main(int argc, char** argv) {
  if (argc < 2) {
    fputs("usage: measure PROGRAM [ARGUMENT]...\n", stderr);
    return 2;
  }
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&quiet, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

  pid_t child;
  int status;
  struct rusage used;
  const long long start = now();
  if (posix_spawnp(&child, argv[1], &quiet, NULL, argv + 1, environ) != 0) {
    perror(argv[1]);
    return 2;
  }
  if (wait4(child, &status, 0, &used) != child) return 2;
  const long long end = now();

  printf("%d %lld %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
         end - start, used.ru_maxrss);
  return 0;
}
