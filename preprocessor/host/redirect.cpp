#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "include/krpre.h"

int redirectOutPut(int* silencer) {
  if (silencer == nullptr) return -1;
  // What the host has printed so far was not meant to be silenced.
  std::fflush(stdout);
  *silencer = open("/dev/null", O_WRONLY | O_APPEND | O_CLOEXEC);
  if (*silencer < 0) return -1;
  const int saved = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
  if (saved >= 0 && dup2(*silencer, STDOUT_FILENO) >= 0) return saved;

  if (saved >= 0) close(saved);
  close(*silencer);
  *silencer = -1;  // so that restoreOutPut closes nothing of the host's
  return -1;
}

int restoreOutPut(int saved, int silencer) {
  std::fflush(stdout);
  if (saved >= 0) dup2(saved, STDOUT_FILENO);
  if (silencer >= 0) close(silencer);
  return 0;
}
