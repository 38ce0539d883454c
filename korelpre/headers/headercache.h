#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "korelpre/headers/headerimage.h"
#include "lib_base/stringz.h"

namespace precomp {

/// The headers that a run over many files has read, so that each is read once. The processors of
/// all its files share it, those of several threads too.
class tHeaderCache {
 public:
  using tImage = std::shared_ptr<const tHeaderImage>;

  /// With a `directory` the standard header is also kept in a file there, from one run to the
  /// next.
  explicit tHeaderCache(tString directory = {}) : directory_(std::move(directory)) {}
  const tString& directory() const { return directory_; }
  bool saves() const { return !directory_.empty(); }

  /// Why a standard header could not be kept, or one that is kept could not be read: what was noted
  /// first. Empty: nothing was.
  std::string problem() const;
  void noteProblem(std::string_view problem);

  /// The images of the header that is requested by this name, the latest first.
  std::vector<tImage> find(std::string_view name) const;
  void add(std::string_view name, tImage image);
  /// Says that no image can be made of a header, so that nobody waits for one.
  void giveUp(std::string_view name);

  /// Who finds no image of a header and wants to make one takes a turn; others that want it too
  /// wait until it is over, and find the image then.
  class tTurn {
   public:
    tTurn(tHeaderCache& cache, std::string_view name);
    ~tTurn();
    tTurn(const tTurn&) = delete;
    tTurn& operator=(const tTurn&) = delete;
    /// False when no image is wanted (any more).
    bool wanted() const { return wanted_; }

   private:
    tHeaderCache& cache_;
    std::string name_;
    bool wanted_ = false;
  };

  /// Whether the last attempt to read a standard header failed, or its image turned out to be
  /// damaged; the next one compiles its text.
  bool bTryAgain() const { return tryAgain_; }
  void setTryAgain(bool tryAgain) { tryAgain_ = tryAgain; }

  /// How often the text of a header was compiled to make an image of it, and how often an image was
  /// used instead.
  int compiled() const { return compiled_; }
  int reused() const { return reused_; }
  void countCompiled() { ++compiled_; }
  void countReused() { ++reused_; }

 private:
  struct tEntry {
    std::vector<tImage> images;  // the latest last
    bool hopeless = false;
    bool building = false;
  };

  const tString directory_;
  std::string problem_;
  std::atomic<bool> tryAgain_{false};
  std::atomic<int> compiled_{0};
  std::atomic<int> reused_{0};
  mutable std::mutex mutex_;
  std::condition_variable turnOver_;
  std::map<std::string, tEntry, std::less<>> entries_;
};

}  // namespace precomp
