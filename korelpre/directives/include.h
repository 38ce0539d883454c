#pragma once

#include <memory>
#include <utility>

#include "lib_base/stringz.h"

namespace precomp {

class KorelPreYaccClass;
class tHeaderImage;

/// An #include that was carried out, or the standard header: the file, and the processor that read
/// it or the image that stands for it.
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
  /// After process().
  KorelPreYaccClass& processor() { return *processor_; }
  /// Null when the file was read.
  const tHeaderImage* image() const { return image_.get(); }
  void setImage(std::shared_ptr<const tHeaderImage> image) { image_ = std::move(image); }

 private:
  int line_;
  tString name_;
  KorelPreYaccClass& includer_;
  std::shared_ptr<const tHeaderImage> image_;
  std::unique_ptr<KorelPreYaccClass> processor_;
};

}  // namespace precomp
