#include "ssvp40xpf/sslexconsumer.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "ssvp40xpf/sslexfileconsumer.h"
#include "tests/ssvp40xpf/scanning.h"

namespace {

using samples::raised;
using samples::tFile;
using scanning::scanAll;

// That text in memory, in pieces and in 16-bit units gives the same is held by the fuzz target
// "scanner".
TEST(Consumers, ReadFilesInTheUnitsThatTheirMarkTells) {
  const char* const expected = "1 a 1:1@0\n20 b\nc 1:3@2\n1 d 2:3@6\n";
  const std::string text = "a\"b\nc\"d";
  std::string units[2] = {"\xFF\xFE", "\xFE\xFF"};
  for (const char c : text) {
    units[0] += {c, '\0'};
    units[1] += {'\0', c};
  }
  for (const std::string& content : {text, units[0], units[1]}) {
    const tFile file(content);
    SSLexAutoFileConsumer detected(file.path(), SSLexConsumer::textType);
    EXPECT_EQ(scanAll(detected), expected);
    EXPECT_LE(detected.bufferSize(), units[0].size());
  }
  const std::string copy = text;
  SSLexStringConsumer borrowed(copy.data(), copy.size(), SSLexConsumer::textType,
                               SSLexStringConsumer::kBorrowed);
  EXPECT_EQ(borrowed.buffer(), reinterpret_cast<const unsigned char*>(copy.data()));
  SSLexStringConsumer wide(L"a\"b\nc\"d");
  EXPECT_EQ(scanAll(wide), expected);
}

TEST(Consumers, ShiftAndGrowForLongLexemes) {
  const std::string name(5000, 'n');
  const tFile file("a " + name + " b");
  SSLexFileConsumer growing(file.path(), SSLexConsumer::charType, 10, 512);
  EXPECT_EQ(scanAll(growing), "1 a 1:1@0\n1 " + name + " 1:3@2\n1 b 1:5004@5003\n");
  EXPECT_EQ((growing.bufferSize() - 10) % 512, 0u);

  const tFile exact("abcdefghij");  // fills the buffer with nothing behind it
  SSLexFileConsumer filled(exact.path(), SSLexConsumer::charType, 10, 0);
  EXPECT_EQ(scanAll(filled), "1 abcdefghij 1:1@0\n");
}

TEST(Consumers, TakeDataInPieces) {
  SSLexDataConsumer data(4);
  SSLex lex(data, scanning::lexTable());
  EXPECT_EQ(scanAll(lex), "");
  EXPECT_TRUE(data.addBuffer("ab ", 3));
  EXPECT_EQ(scanAll(lex), "1 ab 1:1@0\n");
  EXPECT_TRUE(data.addBuffer("cd\n", 3));  // what was scanned makes room
  EXPECT_EQ(scanAll(lex), "1 cd 1:4@3\n");
  SSLexDataConsumer growing(4, 600);
  EXPECT_TRUE(growing.addBuffer(std::string(2000, 'x').c_str(), 2000));
  EXPECT_EQ(growing.bufferSize(), 4u + 4 * 600);
}

TEST(Consumers, ReportWhatCannotBeReadOrHeld) {
  const tFile file("a " + std::string(50, 'n')), odd("\xFF\xFE"
                                                     "a");
  const char* const directory = "/proc/self";
  SSLexFileConsumer fixed(file.path(), SSLexConsumer::charType, 10, 0), unreadable(directory);
  SSLexAutoFileConsumer half(odd.path());
  SSLexDataConsumer data(4);
  const std::pair<std::function<void()>, std::string> kCases[] = {
      {[&] { scanAll(fixed); }, "3 SSLex0103e: Lexeme too long, 10"},
      {[&] { SSLexFileConsumer(file.path(), SSLexConsumer::charType, 10, 511); },
       "49 SSLex0113e: Increment too small, must be at least 512"},
      {[&] { data.addBuffer("fghij", 5); }, "48 SSLex0112e: Array too short for this add"},
      {[] { SSLexFileConsumer("/no/file"); }, "1 SSLex0101e: Error opening file, /no/file, 2"},
      {[] { SSLexAutoFileConsumer("/no/file"); }, "1 SSLex0101e: Error opening file, /no/file, 2"},
      {[&] { SSLexAutoFileConsumer consumer(directory); },
       "2 SSLex0102e: Invalid file length or read error, /proc/self"},
      {[&] { scanAll(unreadable); }, "2 SSLex0102e: Invalid file length or read error, /proc/self"},
      {[&] { scanAll(half); }, "2 SSLex0102e: Invalid file length or read error,"},
  };
  for (const auto& [action, error] : kCases) {
    EXPECT_EQ(raised(action).substr(0, error.size()), error);
  }
}

}  // namespace
