#pragma once

#include <cstdarg>
#include <string_view>

/// Where messages go. One sink at a time for each thread; standard output when none is set.
class tOutputSink {
 public:
  virtual ~tOutputSink() = default;
  virtual void write(std::string_view text) = 0;
};

/// Makes `sink` the calling thread's sink while this object lives, then restores the one before.
/// `sink` must outlive it.
class tOutputScope {
 public:
  explicit tOutputScope(tOutputSink& sink) noexcept;
  ~tOutputScope();
  tOutputScope(const tOutputScope&) = delete;
  tOutputScope& operator=(const tOutputScope&) = delete;

 private:
  tOutputSink* previous_;
};

/// Writes a text to the calling thread's sink as it stands.
void writeOutput(std::string_view text);

/// Formatted output by printf's rules to the calling thread's sink. No length limit.
void qdprintf(const char* pattern, ...) __attribute__((format(printf, 1, 2)));
