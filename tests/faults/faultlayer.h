#pragma once

/// Memory and files that fail on order. The C functions for them are replaced in the program that
/// this is linked into, for every library that it has loaded, too.

/// What can fail: an allocation, a call of the file system, a read or write that transfers only a
/// part, a call into the virtual machine.
enum class eFaulty { kNothing, kMemory, kFile, kPart, kMachine };

/// The `nth` call of its kind, from 1, fails; with `lasting` all calls behind it do, too.
struct tFault {
  eFaulty what = eFaulty::kNothing;
  long nth = 0;
  bool lasting = false;
  int error = 0;  // the errno of kFile
};

/// From now on calls are counted, and `fault` happens.
void arm(const tFault& fault);

/// What has happened since arm().
struct tFaultCount {
  long calls;            // of the kind that was to fail
  const char* function;  // the first that failed; null: none did
};

/// Ends the fault. May be called more than once.
tFaultCount disarm();

/// Counts one call of this kind; true when it is to fail.
bool failsNow(eFaulty what, const char* function);

/// While it lives the calls of this thread are not counted: they are the test's own.
class tFaultPause {
 public:
  tFaultPause();
  ~tFaultPause();
  tFaultPause(const tFaultPause&) = delete;
  tFaultPause& operator=(const tFaultPause&) = delete;
};

/// What the process holds: blocks of memory that were not freed, and descriptors.
struct tHeld {
  long blocks;
  int descriptors;
  bool operator==(const tHeld&) const = default;
};
tHeld held();
