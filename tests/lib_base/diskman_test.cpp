#include "lib_base/diskman.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "tests/support/childprocess.h"
#include "tests/support/maxsizescope.h"
#include "tests/support/memorydisk.h"

namespace {

/// The whole content of a file, or "<none>".
std::string readFile(tDiskMan& disk, const std::string& name) {
  const auto file = disk.open(name.c_str());
  tString text;
  if (!file || !file->readAll(text)) return "<none>";
  return std::string(text.view());
}

bool writeFile(tDiskMan& disk, const std::string& name, std::string_view bytes) {
  const auto file = disk.create(name.c_str());
  return file && file->write(bytes) && file->close();
}

class LocalDisk : public testing::Test {
 protected:
  std::string in(const std::string& name) const { return directory_.path() / name; }

  tTemporaryDirectory directory_;
  tDiskManLocal local_;
};

// What all file systems answer alike is held by the fuzz target "disk".

TEST_F(LocalDisk, OpensRegularFilesOnlyAndNeverWaits) {
  ASSERT_EQ(mkfifo(in("pipe").c_str(), 0600), 0);
  ASSERT_EQ(symlink("missing", in("dangling").c_str()), 0);
  ASSERT_EQ(symlink("pipe", in("topipe").c_str()), 0);
  for (const std::string& name : {in("pipe"), in("topipe"), in("dangling"), in(""),
                                  std::string("/dev/null"), std::string()}) {
    EXPECT_EQ(local_.open(name.c_str()), nullptr) << name;
    EXPECT_FALSE(local_.exists(name.c_str())) << name;
  }
  EXPECT_FALSE(local_.remove(in("").c_str()));
  EXPECT_EQ(local_.open(nullptr), nullptr);
  EXPECT_EQ(local_.create(""), nullptr);
  const auto file = local_.create(in("file").c_str());
  EXPECT_TRUE(file->close());
  EXPECT_FALSE(file->write("late"));
}

TEST_F(LocalDisk, TellsWhatIsMissingFromWhatCannotBeRead) {
  EXPECT_TRUE(writeFile(local_, in("file"), "x"));
  ASSERT_EQ(symlink("loop", in("loop").c_str()), 0);
  ASSERT_EQ(mkfifo(in("pipe").c_str(), 0600), 0);
  const std::pair<std::string, int> kCases[] = {
      {"none", 0},     {"file/x", 0},     {"pipe", 0},
      {"loop", ELOOP}, {"loop/x", ELOOP}, {std::string(300, 'x'), ENAMETOOLONG},
  };
  for (const auto& [name, expected] : kCases) {
    int error = -1;
    EXPECT_EQ(local_.open(in(name).c_str(), error), nullptr) << name;
    EXPECT_EQ(error, expected) << name;
    EXPECT_EQ(local_.look(in(name).c_str()) == eStanding::kUnknown, expected != 0) << name;
  }
  const auto file = local_.open("/proc/self/mem");
  if (!file) GTEST_SKIP() << "no such file here";
  tString text;
  EXPECT_FALSE(file->readAll(text));
  EXPECT_EQ(file->error(), EIO);
}

TEST_F(LocalDisk, NeverCreatesANewFileThroughALink) {
  ASSERT_EQ(symlink("target", in("link").c_str()), 0);
  bool exists = false;
  EXPECT_EQ(local_.createNew(in("link").c_str(), exists), nullptr);
  EXPECT_TRUE(exists);
  EXPECT_EQ(local_.createNew(in("no/such/directory").c_str(), exists), nullptr);
  EXPECT_FALSE(exists);
  EXPECT_FALSE(local_.exists(in("target").c_str()));
  EXPECT_TRUE(writeFile(local_, in("target"), "x"));
  EXPECT_EQ(local_.resolve(in("link").c_str()), local_.resolve(in("target").c_str()));
}

/// A file whose size says something else than reading gives, in small reads.
class tLyingFile : public tFile {
 public:
  tLyingFile(std::int64_t stated, std::string bytes, bool broken = false)
      : bytes_(std::move(bytes)), stated_(stated), broken_(broken) {}
  std::int64_t size() override { return stated_; }
  std::int64_t read(void* bytes, std::size_t count) override {
    const std::string part = bytes_.substr(position_, std::min<std::size_t>(count, 1000));
    if (part.empty() && broken_) return -1;
    std::memcpy(bytes, part.data(), part.size());
    position_ += part.size();
    return static_cast<std::int64_t>(part.size());
  }
  bool seek(std::int64_t) override { return false; }
  bool write(std::string_view) override { return false; }
  bool close() override { return true; }

 private:
  std::string bytes_;
  std::size_t position_ = 0;
  std::int64_t stated_;
  bool broken_;
};

TEST(File, ReadsToTheEndWhateverItsSizeSays) {
  const tMaxSizeScope scope(20000);
  struct tCase {
    std::int64_t stated;
    std::size_t bytes;
    bool broken, readable;
  };
  const tCase kCases[] = {
      {0, 0, false, true},
      {10000, 10001, false, true},
      {10000, 19998, false, true},
      {10000, 0, false, true},
      {19999, 19999, false, false},
      {19998, 19999, false, false},
      {std::int64_t{1} << 50, 30000, false, false},
      {std::int64_t{1} << 50, 700, false, true},
      {10000, 5000, true, false},
  };
  for (const tCase& c : kCases) {
    std::string bytes(c.bytes, 'x');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7);
    tLyingFile file(c.stated, bytes, c.broken);
    tString text("ab");
    EXPECT_EQ(file.readAll(text), c.readable) << c.stated << ' ' << c.bytes;
    EXPECT_EQ(text.view(), c.readable ? "ab" + bytes : "ab") << c.stated << ' ' << c.bytes;
  }
}

TEST(OverlayDisk, KeepsSomeNamesInMemoryAndPassesTheOthersOn) {
  tDiskManMemory below;
  tDiskManOverlay disk(below);
  disk.keepInMemory("./k/a");
  below.put("k/a", "hidden");
  EXPECT_FALSE(disk.exists("k/a"));
  EXPECT_TRUE(writeFile(disk, "k/a", "kept") && writeFile(disk, "plain", "passed"));
  EXPECT_FALSE(disk.rename("k/a", "plain") || disk.rename("plain", "k/a"));
  EXPECT_EQ(*below.bytes("plain") + *below.bytes("k/a"), "passedhidden");
  disk.release("k/a");
  EXPECT_EQ(readFile(disk, "k/a"), "hidden");
}

TEST(OverlayDisk, HandsItsBytesOverOnce) {
  tDiskManMemory below;
  tDiskManOverlay disk(below);
  disk.keepInMemory("a");
  bool exists = true;
  const std::string bytes(100000, 'x');
  const auto writer = disk.createNew("a", exists);
  ASSERT_NE(writer, nullptr);
  EXPECT_TRUE(writer->write(bytes));
  tString first, second;
  EXPECT_TRUE(disk.open("a")->readAll(first));
  EXPECT_EQ(first.view(), bytes);
  EXPECT_TRUE(disk.open("a")->readAll(second));
  EXPECT_EQ(second, "");
  EXPECT_TRUE(disk.exists("a"));
  disk.keepInMemory("b");
  EXPECT_TRUE(writeFile(disk, "b", "text"));
  EXPECT_TRUE(disk.open("b")->readAll(first));
  EXPECT_EQ(first.view(), bytes + "text");
  disk.keepText("c", "lasts");
  const auto reader = disk.open("c");
  EXPECT_TRUE(reader->readAll(second) && reader->readAll(second));
  EXPECT_EQ(readFile(disk, "c") + second.c_str(), "lastslasts");
}

}  // namespace
