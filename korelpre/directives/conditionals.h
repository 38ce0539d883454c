#pragma once

#include <vector>

namespace precomp {

/// The open conditionals of a file.
///
/// Note [skipped regions]
/// In a region that a conditional skips only the four conditionals act, and without a name, so that
/// nesting is still counted.
class tConditionals {
 public:
  /// Whether the text is being skipped.
  bool skipping() const { return skip_; }
  bool empty() const { return open_.empty(); }
  /// The line of the innermost one, from 1; 0 when it was opened in a skipped region.
  int innermostLine() const { return open_.back().line; }

  /// Opens one, whose text up to its #else is skipped when `skip` is set. With `ignored` set its
  /// #else does nothing.
  void open(int line, bool skip, bool ignored);
  /// #else. There must be an open one.
  void turn();
  /// #endif. There must be an open one.
  void close();

 private:
  struct tOpen {
    int line;
    bool skip;  // holds inside the block
    bool ignored;
  };

  std::vector<tOpen> open_;
  bool skip_ = false;
};

}  // namespace precomp
