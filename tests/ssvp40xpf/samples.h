#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include "ssvp40xpf/ssexcept.h"
#include "tests/support/tableimage.h"

/// The scanner and parser images that the tests of this folder share.
namespace samples {

enum eToken : unsigned {
  kName = 1,
  kNumber,
  kFraction,
  kPlus,
  kTimes,
  kOpen,
  kClose,
  kWide,
  kTyped,
  kEquals,
  kKeyword,
  kSemicolon,
  kJoined,
  kText = 20,
};

constexpr unsigned kStoredType = 77;
constexpr std::uint32_t kAccept = sstable::kLexAccept;
constexpr std::uint32_t kDropped = sstable::kLexAccept | sstable::kLexDrop;

/// List 0: names, numbers, fractions, operators, dropped blanks, "=" before a letter (which is
/// given back), "#", line feed and "x" as one lexeme, `"` pushing list 1, "{" replacing by list 2,
/// "^" popping. List 1: text up to a quote, which pops. List 2: everything dropped up to "}", which
/// replaces by list 0.
inline tableimage::tImage lexImage() {
  using tableimage::tAutomaton;
  tAutomaton main;
  const unsigned blank = main.state(sstable::kNone, kDropped);
  const unsigned name = main.state(kName, kAccept);
  const unsigned number = main.state(kNumber, kAccept);
  const unsigned point = main.state(0, 0);
  const unsigned fraction = main.state(kFraction, kAccept);
  const unsigned plus = main.state(kPlus, kAccept);
  const unsigned times = main.state(kTimes, kAccept);
  const unsigned open = main.state(kOpen, kAccept);
  const unsigned close = main.state(kClose, kAccept);
  const unsigned wide = main.state(kWide, kAccept);
  const unsigned typed = main.state(kTyped, kAccept | sstable::kLexType, 0, kStoredType);
  const unsigned equals = main.state(0, 0);
  const unsigned assign = main.state(kEquals, kAccept | sstable::kLexGiveBack);
  const unsigned keyword = main.state(kKeyword, kAccept | sstable::kLexKeyword);
  const unsigned semicolon = main.state(kSemicolon, kAccept);
  const unsigned hash = main.state(0, 0);
  const unsigned joining = main.state(0, 0);
  const unsigned joined = main.state(kJoined, kAccept);
  const unsigned quote = main.state(sstable::kNone, kDropped | sstable::kLexPush, 1);
  const unsigned brace =
      main.state(sstable::kNone, kDropped | sstable::kLexPush | sstable::kLexPop, 2);
  const unsigned pop = main.state(sstable::kNone, kDropped | sstable::kLexPop);
  main.on(0, '\t', blank).on(0, '\n', blank).on(0, ' ', blank).on(0, '"', quote);
  main.on(0, '#', hash).on(hash, '\n', joining).on(joining, 'x', joined);
  main.on(0, '$', keyword).on(0, '(', open).on(0, ')', close).on(0, '*', times);
  main.on(0, '+', plus).on(0, '0', '9', number).on(0, ';', semicolon).on(0, '=', equals);
  main.on(0, '@', typed).on(0, 'A', 'Z', name).on(0, '^', pop).on(0, 'a', 'z', name);
  main.on(0, '{', brace).on(0, 0x100, 0x17F, wide);
  main.on(blank, '\t', blank).on(blank, '\n', blank).on(blank, ' ', blank);
  main.on(name, '0', '9', name).on(name, 'A', 'Z', name).on(name, 'a', 'z', name);
  main.on(number, '.', point).on(number, '0', '9', number);
  main.on(point, '0', '9', fraction).on(fraction, '0', '9', fraction);
  main.on(equals, 'a', 'z', assign);
  tAutomaton text;
  const unsigned inside = text.state(kText, kAccept);
  const unsigned ended = text.state(sstable::kNone, kDropped | sstable::kLexPop);
  text.on(0, 0, '!', inside).on(0, '"', ended).on(0, '#', 0xFFFF, inside);
  text.on(inside, 0, '!', inside).on(inside, '#', 0xFFFF, inside);
  tAutomaton comment;
  const unsigned dropped = comment.state(sstable::kNone, kDropped);
  const unsigned back =
      comment.state(sstable::kNone, kDropped | sstable::kLexPush | sstable::kLexPop, 0);
  comment.on(0, 0, '|', dropped).on(0, '}', back);
  comment.on(dropped, 0, '|', dropped);
  return tableimage::lexImage({main, text, comment});
}

constexpr tableimage::tSymbol kSum = sstable::kFirstNonterminal;
constexpr tableimage::tSymbol kProduct = kSum + 1;
constexpr tableimage::tSymbol kFactor = kSum + 2;

/// 1: sum = sum + product, 2: sum = product, 3: product = product * factor, 4: product = factor,
/// 5: factor = ( sum ), 6: factor = name.
inline tableimage::tImage expressionImage() {
  using namespace tableimage;
  static constexpr tSymbol kEnd = sstable::kTokenEof;
  const std::vector<tSymbol> behindFactor = {kPlus, kTimes, kClose, kEnd};
  const auto operand = [](const tPairs& gotos) {
    return tRow{{{kName, shift(1)}, {kOpen, shift(2)}}, gotos};
  };
  const auto behindProduct = [](std::uint32_t production) {
    const std::uint32_t word = reduce(production);
    return tRow{{{kPlus, word}, {kTimes, shift(8)}, {kClose, word}, {kEnd, word}}};
  };
  return parserImage(
      {operand({{kSum, 3}, {kProduct, 4}, {kFactor, 5}}), reducing(6, behindFactor),
       operand({{kSum, 6}, {kProduct, 4}, {kFactor, 5}}),
       tRow{{{kPlus, shift(7)}, {kEnd, sstable::kActionAccept}}}, behindProduct(2),
       reducing(4, behindFactor), tRow{{{kPlus, shift(7)}, {kClose, shift(9)}}},
       operand({{kProduct, 10}, {kFactor, 5}}), operand({{kFactor, 11}}), reducing(5, behindFactor),
       behindProduct(1), reducing(3, behindFactor)},
      {{0, 1}, {kSum, 3}, {kSum, 1}, {kProduct, 3}, {kProduct, 1}, {kFactor, 3}, {kFactor, 1}});
}

constexpr tableimage::tSymbol kLines = sstable::kFirstNonterminal;
constexpr tableimage::tSymbol kLine = kLines + 1;

/// 1: lines = lines line, 2: lines = (empty), 3: line = name ;  4: line = (error token) ;
inline tableimage::tImage linesImage(std::uint32_t rowFlags = 0) {
  using namespace tableimage;
  const std::vector<tSymbol> behindLine = {kName, sstable::kTokenError, sstable::kTokenEof};
  const tRow start = {
      {{kName, shift(2)}, {sstable::kTokenEof, sstable::kActionAccept}}, {{kLine, 3}}, 4};
  tRow first = reducing(2, behindLine);
  first.gotos = {{kLines, 1}};
  return parserImage(
      {first, start, tRow{{{kSemicolon, shift(5)}}}, reducing(1, behindLine),
       tRow{{{kSemicolon, shift(6)}}}, reducing(3, behindLine), reducing(4, behindLine)},
      {{0, 1}, {kLines, 2}, {kLines, 0}, {kLine, 2}, {kLine, 2}}, rowFlags);
}

/// A file that goes away with the object.
class tFile {
 public:
  explicit tFile(const std::string& content) {
    static int count = 0;
    path_ = (std::filesystem::temp_directory_path() /
             ("runtime" + std::to_string(getpid()) + "_" + std::to_string(++count)))
                .string();
    std::ofstream(path_, std::ios::binary) << content;
  }
  explicit tFile(const tableimage::tImage& image)
      : tFile(std::string(reinterpret_cast<const char*>(image.data()), tableimage::bytes(image))) {}
  ~tFile() { std::filesystem::remove(path_); }
  tFile(const tFile&) = delete;
  tFile& operator=(const tFile&) = delete;

  const char* path() const { return path_.c_str(); }

 private:
  std::string path_;
};

/// Runs `action` and gives the number and text of the exception it raises, by value or by pointer;
/// "none" when there is none.
template <class Action>
std::string raised(Action action) {
  try {
    action();
  } catch (const SSException& exception) {
    return std::to_string(exception.errorId()) + " " + exception.message();
  } catch (SSException* exception) {
    const std::unique_ptr<SSException> caught(exception);
    return "pointer " + std::to_string(caught->errorId()) + " " + caught->message();
  }
  return "none";
}

}  // namespace samples
