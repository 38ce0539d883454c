#include "lib_base/stringz.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <utility>

#include "lib_base/misc.h"
#include "tests/lib_base/fatalof.h"
#include "tests/support/maxsizescope.h"

namespace {

constexpr char kConstantText[] = "Cannot update a constant string";
constexpr char kIndexText[] = "string index out of bounds";
constexpr char kLongText[] = "string too long";

std::string replacedAll(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t at = 0; !what.empty() && (at = text.find(what, at)) != std::string::npos;) {
    text.replace(at, what.size(), with);
    at += with.size();
  }
  return text;
}

struct tArguments {
  std::size_t position, count;
  std::string text;          // a few letters
  std::string part;          // what the string has at `position`
  std::string_view ownPart;  // the same, in the string's own storage
};

using tOperation = void (*)(tString& s, std::string& t, const tArguments& a);

/// Each does the same to a string and to the plain string beside it.
const tOperation kOperations[] = {
    [](auto& s, auto& t, auto& a) { s.append(a.text), t += a.text; },
    [](auto& s, auto& t, auto& a) { s.append(a.ownPart), t += a.part; },
    [](auto& s, auto& t, auto&) { s += 'x', t += 'x'; },
    [](auto& s, auto& t, auto& a) { s.insert(a.position, a.text), t.insert(a.position, a.text); },
    [](auto& s, auto& t, auto& a) {
      s.insert(a.position / 2, a.ownPart), t.insert(a.position / 2, a.part);
    },
    [](auto& s, auto& t, auto& a) { s.erase(a.position, a.count), t.erase(a.position, a.count); },
    [](auto& s, auto& t, auto& a) {
      s.replace(a.position, a.count, a.text), t.replace(a.position, a.count, a.text);
    },
    [](auto& s, auto& t, auto& a) { s.replaceAll(a.text, "b"), t = replacedAll(t, a.text, "b"); },
    [](auto& s, auto& t, auto& a) { s.replaceAll("a", a.text), t = replacedAll(t, "a", a.text); },
    [](auto& s, auto& t, auto& a) { s = s.substr(a.position, a.count), t = a.part; },
    [](auto& s, auto& t, auto& a) { s = s.substr(0, a.position), t.resize(a.position); },
    [](auto& s, auto& t, auto& a) {
      s.resize(a.position * 3 / 2, 'f'), t.resize(a.position * 3 / 2, 'f');
    },
    [](auto& s, auto&, auto& a) { s.reserve(a.position * 2); },
    [](auto& s, auto& t, auto&) {
      if (!t.empty()) s.setAt(t.size() / 2, 'q'), t[t.size() / 2] = 'q';
    },
    [](auto& s, auto& t, auto&) {
      s.toUpper(), std::transform(t.begin(), t.end(), t.begin(), upperAscii);
    },
    [](auto& s, auto& t, auto&) {
      s.trim(), t.erase(t.find_last_not_of(" \n") + 1), t.erase(0, t.find_first_not_of(" \n"));
    },
    [](auto& s, auto& t, auto&) { EXPECT_EQ(std::memcmp(s.c_str(), t.c_str(), t.size() + 1), 0); },
    [](auto& s, auto& t, auto&) { s = tString::borrow("  borrowed a "), t = "  borrowed a "; },
    [](auto& s, auto& t, auto&) {
      if (t.size() > 200) s.clear(), t.clear();
    },
};

/// A few strings that share storage with each other, each beside a plain string of equal content.
class tTwins {
 public:
  explicit tTwins(unsigned seed) : random_(seed) {}

  void step() {
    const std::size_t i = below(kCount), other = below(kCount);
    tArguments a{};
    a.position = below(plain_[i].size() + 1);
    a.count = below(4) == 0 ? plain_[i].size() : below(9);
    a.text.resize(below(6));
    for (char& c : a.text) c = "ab \n\0z"[below(6)];
    a.part = plain_[i].substr(a.position, a.count);
    a.ownPart = strings_[i].view().substr(a.position, a.count);
    switch (below(10)) {
      case 0:
        strings_[i] = strings_[other], plain_[i] = plain_[other];
        break;
      case 1:
        strings_[i] = std::move(strings_[other]), plain_[i] = plain_[other];
        if (i != other) plain_[other].clear();
        break;
      default:
        kOperations[below(std::size(kOperations))](strings_[i], plain_[i], a);
    }
  }

  void compare() const {
    for (std::size_t i = 0; i < kCount; ++i) ASSERT_EQ(strings_[i].view(), plain_[i]);
  }

 private:
  static constexpr std::size_t kCount = 6;

  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::mt19937 random_;
  tString strings_[kCount];
  std::string plain_[kCount];
};

TEST(String, BehavesAsAPlainStringUnderRandomSharing) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    tTwins twins(seed);
    for (int i = 0; i < 2000; ++i) {
      twins.step();
      ASSERT_NO_FATAL_FAILURE(twins.compare()) << "seed " << seed << " step " << i;
    }
  }
}

TEST(String, ConstantRefusesEveryWriteAndStaysConstant) {
  const std::function<void(tString&)> writes[] = {
      [](tString& s) { s.append("x"); },        [](tString& s) { s.insert(0, "x"); },
      [](tString& s) { s.replace(0, 1, "y"); }, [](tString& s) { s.replaceAll("a", "b"); },
      [](tString& s) { s.setAt(0, 'x'); },      [](tString& s) { s.reserve(1); },
      [](tString& s) { s.writable(); },         [](tString& s) { s.trim(); },
      [](tString& s) { s.toUpper(); },
  };
  const tString original = tString::constant("a b");
  for (const auto& write : writes) {
    tString copy = original;
    EXPECT_EQ(fatalOf([&] { write(copy); }), kConstantText);
    EXPECT_STREQ(copy.c_str(), "a b");  // copied for its zero, and still constant
    EXPECT_EQ(fatalOf([&] { write(copy); }), kConstantText);
    tString part = copy.substr(0, 3);
    EXPECT_EQ(part.append("c"), "a bc");
    EXPECT_EQ(copy, "a b");
  }
  tString part = original.substr(0, 1);
  EXPECT_EQ(fatalOf([&] { part.append("c"); }), "");
  EXPECT_EQ(part, "ac");
  tString ordinary = original;
  ordinary = tString("x");
  EXPECT_EQ(fatalOf([&] { ordinary.append("y"); }), "");
}

TEST(String, IndexesOutsideAreFatal) {
  tString text("abc");
  EXPECT_EQ(fatalOf([&] { static_cast<void>(text[3]); }), kIndexText);
  EXPECT_EQ(fatalOf([&] { text.setAt(3, 'x'); }), kIndexText);
  EXPECT_EQ(fatalOf([&] { text.insert(4, "x"); }), kIndexText);
  EXPECT_EQ(fatalOf([&] { text.erase(4); }), kIndexText);
  EXPECT_EQ(fatalOf([&] { static_cast<void>(tString()[0]); }), kIndexText);
  EXPECT_EQ(text.substr(4), "");
  EXPECT_EQ(text, "abc");
}

TEST(String, RefusesToGrowPastTheLargestSize) {
  const tMaxSizeScope scope(64);
  tString text(64, 'x');
  volatile std::size_t more = std::size_t{1} << 40;  // the compiler need not know what is not there
  const std::string_view huge("", more);
  const std::string_view tooMuch(text.data(), 1);
  const std::function<void()> growths[] = {
      [&] { text.append("y"); },
      [&] { text.insert(3, tooMuch); },
      [&] { text.resize(65); },
      [&] { text.extend(tString::npos); },
      [&] { text.reserve(65); },
      [&] { tString(text).replaceAll("x", "xx"); },
      [] { tString(65, 'x'); },
      [&] { tString::borrow(huge); },
      [&] { static_cast<void>(tString(huge)); },
      [&] { tString("x").append(huge); },
      [] { tString::format("%65d", 1); },
  };
  for (const auto& grow : growths) EXPECT_EQ(fatalOf(grow), kLongText);
  EXPECT_EQ(text.view(), std::string(64, 'x'));
  EXPECT_EQ(tString::format("%64d", 1).size(), 64u);
  tString::setMaxSize(tString::npos);
  EXPECT_EQ(tString::format("%512d", 1), std::string(511, ' ') + "1");
  EXPECT_LT(tString::maxSize(), std::size_t{1} << 32);
}

}  // namespace
