#include "cli/progress.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

namespace {

using namespace std::chrono_literals;

// What a progress line writes, through a pipe.
class Progress : public testing::Test {
 public:
  Progress() { EXPECT_EQ(pipe(ends_), 0); }
  ~Progress() override {
    close(ends_[0]);
    close(ends_[1]);
  }

 protected:
  std::string written() {
    char buffer[1024] = "|";
    EXPECT_EQ(write(ends_[1], "|", 1), 1);
    const ssize_t length = read(ends_[0], buffer, sizeof buffer);
    return std::string(buffer, static_cast<std::size_t>(length) - 1);
  }

  int ends_[2] = {-1, -1};
  tProgressLine::tTime start_{};
};

TEST_F(Progress, StaysAwayFromShortRunsAndGoesAtTheEnd) {
  tProgressLine line({.descriptor = ends_[1]}, 1000, start_);
  line.show(1, "a.prw", start_ + 999ms);
  line.erase();
  EXPECT_EQ(written(), "");
  line.show(137, "dir/file.prw", start_ + 1s);
  EXPECT_EQ(written(), "\r\033[K[137/1000] dir/file.prw");
  line.show(138, "b.prw", start_ + 1s + 99ms);
  EXPECT_EQ(written(), "");
  line.show(139, "c.prw", start_ + 1s + 100ms);
  line.erase();
  line.erase();
  EXPECT_EQ(written(), "\r\033[K[139/1000] c.prw\r\033[K");
}

TEST_F(Progress, NeverWrapsOrCommandsTheTerminal) {
  tProgressLine line({.descriptor = ends_[1]}, 2, start_);
  line.show(1, "a\033[2J\n" + std::string(100, 'x'), start_ + 1s);
  const std::string text = written();
  EXPECT_EQ(text.substr(4), ("[1/2] a?[2J?" + std::string(100, 'x')).substr(0, 79));
}

TEST_F(Progress, IsOneLineAfterTheOtherWhereItIsNoTerminal) {
  tProgressLine line({.descriptor = ends_[1], .isTerminal = false, .silence = 0ms}, 9, start_);
  line.show(0, "a.prw", start_);
  line.show(1, "b.prw", start_ + 999ms);
  line.erase();
  line.show(2, "c.prw", start_ + 1s);
  EXPECT_EQ(written(), "[0/9] a.prw\n[2/9] c.prw\n");
}

}  // namespace
