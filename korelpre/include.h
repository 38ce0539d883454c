#pragma once

#include <memory>

#include "lib_base/stringz.h"

namespace precomp {

class KorelPreYaccClass;

/// An #include that was carried out, or the standard header: the file and the processor that read
/// it.
class tInclude {
 public:
  /// `line` is that of the directive, from 1; 0 for the standard header. `includer` is the
  /// processor of the file that holds the directive; it must outlive this object.
  tInclude(int line, const tString& name, KorelPreYaccClass& includer);
  ~tInclude();
  tInclude(const tInclude&) = delete;
  tInclude& operator=(const tInclude&) = delete;

  /// Reads and compiles the file. False when it was optional and is missing, or is already being
  /// compiled further up; everything else that is wrong is raised.
  bool process();

  int line() const { return line_; }
  /// As written in the directive.
  const tString& name() const { return name_; }
  KorelPreYaccClass& processor() { return *processor_; }

 private:
  int line_;
  tString name_;
  std::unique_ptr<KorelPreYaccClass> processor_;
};

}  // namespace precomp
