#include "ssvp40xpf/sssto.h"

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/ssyaccstack.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

using samples::raised;

/// Counts the elements that are alive.
class tCounted : public SSYaccStackElement {
 public:
  tCounted() { ++alive; }
  ~tCounted() override { --alive; }
  static inline int alive = 0;
};

TEST(Lifo, GrowsByItsIncrementAndChecksItsBounds) {
  SSLifo<int> fixed(2, 0);
  EXPECT_TRUE(fixed.push(1) && fixed.push(2));
  EXPECT_EQ(raised([&] { fixed.push(3); }), "8 SSLifo0001e: Stack full");
  EXPECT_EQ(raised([&] { fixed.pop(3); }), "10 SSLifo0004e: Cannot pop empty stack");
  EXPECT_EQ(*fixed.top(), 2);
  EXPECT_EQ(*fixed.fromTop(1), 1);
  EXPECT_EQ(raised([&] { fixed.fromTop(2); }), "11 SSLifo0003e: Invalid index");
  fixed.pop(2);
  EXPECT_EQ(raised([&] { fixed.top(); }), "9 SSLifo0002e: No top, stack empty");

  SSLifo<int> growing(2, 3);
  for (int i = 0; i < 100000; ++i) growing.push(i);
  EXPECT_EQ(*growing.fromTop(99999), 0);
}

TEST(Lifo, KeepsReferencesOfSlotsThatAreTakenOff) {
  {
    SSLifo<SSRef<SSYaccStackElement>> stack(4, 4);
    for (int i = 0; i < 3; ++i) stack.push(SSRef<SSYaccStackElement>(new tCounted));
    stack.pop();
    EXPECT_EQ(tCounted::alive, 2);
    stack.takeOff();
    stack.takeOff();
    EXPECT_EQ(stack.takeOff(), nullptr);
    EXPECT_EQ(tCounted::alive, 2);
    stack.push(SSRef<SSYaccStackElement>(new tCounted));  // overwrites the first slot
    EXPECT_EQ(tCounted::alive, 2);
    stack.clear();
    EXPECT_EQ(tCounted::alive, 0);
  }
  EXPECT_EQ(tCounted::alive, 0);
}

TEST(Lexemes, HoldTextInsideOrInABufferOfTheirOwn) {
  const SSRef<SSLexLexeme> inside(SSLexLexeme::make("a\0b", 3, 5, 1, 2));
  EXPECT_EQ(std::string(inside->text(), 5), std::string("a\0b\0\0", 5));
  EXPECT_FALSE(inside->ownsBuffer());
  EXPECT_EQ(inside->allocatedSize(), 69u);
  EXPECT_FALSE(inside->setLength(4));
  EXPECT_TRUE(inside->setLength(1));
  EXPECT_STREQ(inside->text(), "a");

  const SSRef<SSLexLexeme> own(new SSLexLexeme(6, 9, "%error", 0, 0, 3));
  EXPECT_TRUE(own->ownsBuffer());
  EXPECT_EQ(own->symbol(), 3u);
  own->setBuffer("longer text", 11);
  EXPECT_STREQ(own->text(), "longer text");
  SSRef<SSLexLexeme> second = own;
  EXPECT_EQ(own->refCount(), 2u);
  second.reset();
  EXPECT_EQ(own->refCount(), 1u);

  const SSRef<SSLexLexeme> wide(SSLexLexeme::make(u"\x1234z", 2, 1, 1, 1, false));
  wide->swapUnits();
  EXPECT_EQ(wide->wideText()[0], 0x3412);
  EXPECT_EQ(wide->allocatedSize(), 70u);
}

TEST(Pool, GivesDistinctStorageOfEverySize) {
  for (int round = 0; round < 2; ++round) {
    std::vector<unsigned char*> given;
    for (std::size_t size = 1; size < 600; ++size) {
      given.push_back(static_cast<unsigned char*>(ssPoolAllocate(size)));
      std::memset(given.back(), static_cast<int>(size & 0xFF), size);
    }
    for (std::size_t size = 1; size < 600; ++size) {
      EXPECT_EQ(given[size - 1][0], size & 0xFF);
      EXPECT_EQ(given[size - 1][size - 1], size & 0xFF);
      ssPoolRelease(given[size - 1], size);
    }
  }
}

TEST(Pool, TakesStorageFromAnotherThread) {
  std::vector<SSLexLexeme*> lexemes;
  std::thread([&] {
    for (int i = 0; i < 3000; ++i) lexemes.push_back(SSLexLexeme::make("text", 4, 1, 1, 1));
  }).join();
  for (SSLexLexeme* const lexeme : lexemes) {
    EXPECT_STREQ(lexeme->text(), "text");
    lexeme->refDec();
  }
}

TEST(LexemeCache, GivesLexemesBackInOrder) {
  SSYaccLexemeCache cache;
  EXPECT_FALSE(cache.take());
  unsigned given = 0;
  unsigned taken = 0;
  for (int round = 0; round < 50; ++round) {
    for (int i = 0; i < 3; ++i) {
      cache.put(*SSRef<SSLexLexeme>(SSLexLexeme::make("", 0, given++, 1, 1)));
    }
    for (int i = 0; i < 2; ++i) EXPECT_EQ(cache.take()->token(), taken++);
  }
  EXPECT_EQ(cache.count(), given - taken);
  while (!cache.empty()) EXPECT_EQ(cache.take()->token(), taken++);
  EXPECT_EQ(given, taken);
}

}  // namespace
