#include "ssvp40xpf/sslexconsumer.h"

#include <string>

#include <gtest/gtest.h>

#include "ssvp40xpf/sslexfileconsumer.h"
#include "tests/ssvp40xpf/samples.h"
#include "tests/ssvp40xpf/scanning.h"

namespace {

using samples::raised;
using samples::tFile;
using scanning::scanAll;

const SSLexTable& table() {
  static const tableimage::tImage image = samples::lexImage();
  static const SSLexTable loaded(image.data(), tableimage::bytes(image), "sample");
  return loaded;
}

const char kText[] = "one (two)\n{ a\n b }three\n 4.5 \"say\nit\" 6.x";
const char kLexemes[] =
    "1 one 1:1@0\n6 ( 1:5@4\n1 two 1:6@5\n7 ) 1:9@8\n1 three 3:5@18\n3 4.5 4:2@25\n"
    "20 say\nit 4:7@30\n2 6 5:5@38\n";

/// The text as 16-bit units, after a byte-order mark when `mark` is not 0.
std::u16string units(const std::string& text, char16_t mark, bool swapped) {
  std::u16string out;
  if (mark != 0) out += mark;
  for (const char c : text) {
    const auto unit = static_cast<char16_t>(static_cast<unsigned char>(c));
    out += swapped ? static_cast<char16_t>(unit << 8) : unit;
  }
  return out;
}

std::string asBytes(const std::u16string& text) {
  return std::string(reinterpret_cast<const char*>(text.data()), 2 * text.size());
}

/// Scans to the error at the end of kText and gives the lexemes and the error.
std::string outcome(SSLexConsumer& consumer) {
  SSLex lex(consumer, table());
  std::string out;
  const std::string error = raised([&] {
    while (const SSRef<SSLexLexeme> lexeme{++lex}) out += scanning::describe(*lexeme) + "\n";
  });
  return out + error;
}

TEST(Consumers, AgreeOnTheSameText) {
  const std::string expected =
      std::string(kLexemes) + "5 SSLex0105e: Invalid token, Line 5, Offset 6, .";
  const std::string text = kText;
  const std::u16string marked = units(text, 0xFEFF, false);
  const std::u16string swapped = units(text, 0xFFFE, true);
  const std::wstring wide(text.begin(), text.end());
  const tFile file(text);
  const tFile markedFile(asBytes(marked));
  const tFile swappedFile(asBytes(swapped));

  SSLexStringConsumer copied(kText);
  EXPECT_EQ(outcome(copied), expected);
  SSLexStringConsumer borrowed(text.data(), text.size(), SSLexConsumer::textType,
                               SSLexStringConsumer::kBorrowed);
  EXPECT_EQ(borrowed.buffer(), reinterpret_cast<const unsigned char*>(text.data()));
  EXPECT_EQ(outcome(borrowed), expected);
  SSLexStringConsumer wideText(wide.c_str());
  EXPECT_EQ(outcome(wideText), expected);
  for (const std::size_t size : {2u, 3u, 16u, 4096u}) {
    SSLexFileConsumer pieces(file.path(), SSLexConsumer::charType, size, 512);
    EXPECT_EQ(outcome(pieces), expected) << size;
    SSLexFileConsumer widePieces(swappedFile.path(), SSLexConsumer::wideType, size, 512);
    EXPECT_EQ(outcome(widePieces), expected) << size;
  }
  for (const tFile* const f : {&file, &markedFile, &swappedFile}) {
    SSLexAutoFileConsumer detected(f->path(), SSLexConsumer::textType);
    EXPECT_EQ(outcome(detected), expected);
    EXPECT_LE(detected.bufferSize(), asBytes(marked).size());
  }
}

TEST(Consumers, ShiftAndGrowForLongLexemes) {
  const std::string name(5000, 'n');
  const tFile file("a " + name + " b");
  SSLexFileConsumer growing(file.path(), SSLexConsumer::charType, 10, 512);
  EXPECT_EQ(scanAll(growing, table()), "1 a 1:1@0\n1 " + name + " 1:3@2\n1 b 1:5004@5003\n");
  EXPECT_EQ((growing.bufferSize() - 10) % 512, 0u);

  SSLexFileConsumer fixed(file.path(), SSLexConsumer::charType, 10, 0);
  EXPECT_EQ(raised([&] { scanAll(fixed, table()); }), "3 SSLex0103e: Lexeme too long, 10");
  EXPECT_EQ(raised([&] { SSLexFileConsumer(file.path(), SSLexConsumer::charType, 10, 511); }),
            "49 SSLex0113e: Increment too small, must be at least 512");

  const tFile exact("abcdefghij");  // fills the buffer with nothing behind it
  SSLexFileConsumer filled(exact.path(), SSLexConsumer::charType, 10, 0);
  EXPECT_EQ(scanAll(filled, table()), "1 abcdefghij 1:1@0\n");
}

TEST(Consumers, TakeDataInPieces) {
  SSLexDataConsumer data(4);
  SSLex lex(data, table());
  EXPECT_EQ(scanAll(lex), "");
  EXPECT_TRUE(data.addBuffer("ab ", 3));
  EXPECT_EQ(scanAll(lex), "1 ab 1:1@0\n");
  EXPECT_TRUE(data.addBuffer("cd\n", 3));  // what was scanned makes room
  EXPECT_EQ(scanAll(lex), "1 cd 1:4@3\n");
  EXPECT_EQ(raised([&] { data.addBuffer("fghij", 5); }),
            "48 SSLex0112e: Array too short for this add");
  SSLexDataConsumer growing(4, 600);
  EXPECT_TRUE(growing.addBuffer(std::string(2000, 'x').c_str(), 2000));
  EXPECT_EQ(growing.bufferSize(), 4u + 4 * 600);
}

TEST(Consumers, ReportFilesThatCannotBeRead) {
  EXPECT_EQ(raised([] { SSLexFileConsumer("/no/such/file"); }),
            "1 SSLex0101e: Error opening file, /no/such/file, 2");
  EXPECT_EQ(raised([] { SSLexAutoFileConsumer("/no/such/file"); }),
            "1 SSLex0101e: Error opening file, /no/such/file, 2");
  const std::string directory = std::filesystem::temp_directory_path().string();
  EXPECT_EQ(raised([&] { SSLexAutoFileConsumer consumer(directory.c_str()); }).substr(0, 50),
            "2 SSLex0102e: Invalid file length or read error, /");
  SSLexFileConsumer unreadable(directory.c_str());
  EXPECT_EQ(raised([&] { scanAll(unreadable, table()); }).substr(0, 50),
            "2 SSLex0102e: Invalid file length or read error, /");
  const tFile odd(asBytes(units("ab", 0xFEFF, false)) + "x");
  SSLexAutoFileConsumer half(odd.path());
  EXPECT_EQ(raised([&] { scanAll(half, table()); }).substr(0, 48),
            "2 SSLex0102e: Invalid file length or read error,");
}

}  // namespace
