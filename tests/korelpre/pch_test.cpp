#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "korelpre/headers/headercache.h"
#include "tests/support/preprocess.h"

using namespace precomp;

namespace {

constexpr const char* kHeader =
    "#include \"limits.ch\"\n"
    "#ifdef DEBUG\n#define LEVEL 2\n#else\n#define LEVEL 1\n#endif\n"
    "#define AREA(a, b) ((a) * (b))\n"
    "#command SAY <x> [AT <r>] => put(<x> [, <r>])\n"
    "#command SAY TWICE <x> => twice(<x>)\n"
    "#xcommand LIST <l,...> [<on: ON, OFF NOW>] => l({<l>}, <.on.>)\n"
    "#command SAYING <*rest*> => told(#<rest>)\n"
    "#translate pick(<x>) => pock(<\"x\">, <{x}>)\n"
    "this is no directive\n";
constexpr const char* kLimits = "#ifndef MOST\n#define MOST 99\n#endif\n";
constexpr const char* kMain =
    "#include \"std.ch\"\n#include \"limits.ch\"\n"
    "#command SAY LOUD <x> => loud(<x>)\n"
    "SAY 1 + MOST\nsay twice pick(a)\nLIST a, b OFF NOW\nSAYI hello there\nSAY LOUD LEVEL\n"
    "x := AREA(MOST, LEVEL)\n"
    "#define LEVEL 7\n"
    "y := LEVEL + AREA(1, 2)\n";

class tFileNames : public tFileObserver {
 public:
  void fileRead(const tString& name) override { text.append(name.view()) += '\n'; }
  std::string text;
};

/// A disk on which "./" changes a name but not the file, as links do.
class tLinkedDisk : public tDiskManMemory {
 public:
  tString resolve(const char* name) override {
    const bool spelled = std::string_view(name).starts_with("./");
    return tDiskManMemory::resolve(spelled ? name + 2 : name);
  }
};

/// A disk with a program on it, and the options to preprocess it with.
struct tProgram {
  tProgram() {
    disk.put("inc/std.ch", kHeader);
    disk.put("inc/limits.ch", kLimits);
    disk.put("main.prw", kMain);
  }

  std::string run(tHeaderCache* cache) { return run(cache, disk); }
  std::string run(tHeaderCache* cache, tDiskMan& files) const {
    tAutoArray<tString> list;
    for (const char* option : options) list.add(new tString(option));
    list.add(new tString("-Fmain.prw"));
    tStringSink sink;
    const tOutputScope scope(sink);
    KorelPre16 session(files);
    session.Init(list, 1);
    session.setHeaderCache(cache);
    tFileNames names;
    session.setFileObserver(&names);
    tString output;
    tString error;
    session.doIt(output, error);
    std::string text(output.view());
    for (tXChgArray* table : {session.defines(), session.commands(), session.translates()}) {
      table->arrange();
      tString listing;
      for (int i = 0; i < table->count(); ++i) table->get(i)->print(&listing);
      text += "\n--\n";
      text += listing.view();
    }
    return text + "\n" + names.text + sink.text;
  }

  /// Runs once to save the header and then, after `change`, once more. The number of times the
  /// second run took the saved header; its result must be that of a run without one.
  int reusedAfter(const std::function<void(tProgram&)>& change) {
    tHeaderCache first(true);
    const std::string before = run(&first);
    EXPECT_EQ(before, run(nullptr));
    change(*this);
    tHeaderCache second(true);
    EXPECT_EQ(run(&second), run(nullptr));
    return second.reused();
  }

  tLinkedDisk disk;
  std::vector<const char*> options = {"-Iearly;inc"};
};

TEST(SavedHeader, GivesWhatTheTextGives) {
  tProgram program;
  EXPECT_EQ(program.reusedAfter([](tProgram&) {}), 1);
  EXPECT_NE(program.run(nullptr).find("loud(1)"), std::string::npos);
  ASSERT_NE(program.disk.bytes("inc/std.pch"), nullptr);
  EXPECT_EQ(program.disk.fileCount(), 4u) << "no temporary file stays";
}

TEST(SavedHeader, IsSavedOnlyWhenAsked) {
  tProgram program;
  tHeaderCache inMemory;
  program.run(&inMemory);
  EXPECT_EQ(program.run(&inMemory), program.run(nullptr));
  EXPECT_EQ(inMemory.compiled(), 1);
  EXPECT_EQ(inMemory.reused(), 1);
  EXPECT_EQ(program.disk.fileCount(), 3u);
}

TEST(SavedHeader, IsNotUsedWhereTheTextWouldGiveSomethingElse) {
  const struct {
    const char* what;
    std::function<void(tProgram&)> change;
  } kChanges[] = {
      {"contents",
       [](tProgram& p) { p.disk.put("inc/limits.ch", "#define MOST 98\n#ifdef A\n#endif\n"); }},
      {"contents of one size",
       [](tProgram& p) { p.disk.put("inc/limits.ch", "#ifndef MOST\n#define MOST 98\n#endif\n"); }},
      {"a file is gone", [](tProgram& p) { p.disk.remove("inc/limits.ch"); }},
      {"another header earlier",
       [](tProgram& p) { p.disk.put("early/std.ch", "#define LEVEL 5\n"); }},
      {"another file earlier",
       [](tProgram& p) { p.disk.put("early/limits.ch", "#define MOST 5\n"); }},
      {"one in the working directory",
       [](tProgram& p) { p.disk.put("limits.ch", "#define MOST 5\n"); }},
      {"the spelling of its path", [](tProgram& p) { p.options[0] = "/Iearly;./inc"; }},
      {"the place of the header",
       [](tProgram& p) {
         p.disk.put("other/std.ch", kHeader);
         p.disk.put("other/limits.ch", kLimits);
         p.disk.put("other/std.pch", *p.disk.bytes("inc/std.pch"));
         p.options[0] = "-Iother";
       }},
  };
  for (const auto& row : kChanges) EXPECT_EQ(tProgram().reusedAfter(row.change), 0) << row.what;
}

TEST(SharedHeader, IsCompiledAgainWhenNamesStandOtherwise) {
  const struct {
    std::vector<const char*> names;
    int compiled;
  } kCases[] = {
      {{"-DOTHER"}, 1},
      {{"-DLEVEL=3"}, 1},  // the header defines it again
      {{"-DLEVEL=3", "-DSAY", "-DAREA"}, 1},
      {{"-DLEVEL=3", "-DLEVEL=4"}, 2},  // it cannot replace two
      {{"-DDEBUG"}, 2},
      {{"-DMOST=3"}, 2},
  };
  for (const auto& row : kCases) {
    for (const bool namesFirst : {false, true}) {
      tProgram plain;
      tProgram named;
      named.options.insert(named.options.end(), row.names.begin(), row.names.end());
      tHeaderCache cache;
      for (tProgram* program : {namesFirst ? &named : &plain, namesFirst ? &plain : &named}) {
        EXPECT_EQ(program->run(&cache), program->run(nullptr)) << row.names[0];
      }
      EXPECT_EQ(cache.compiled(), row.compiled) << row.names[0] << namesFirst;
    }
  }
}

TEST(SavedHeader, StandsBesideThoseForOtherNames) {
  tProgram program;
  tHeaderCache plain(true);
  program.run(&plain);
  program.options.push_back("-DOTHER");
  tHeaderCache other(true);
  program.run(&other);
  EXPECT_EQ(program.disk.fileCount(), 5u);
  for (int i = 0; i < 2; ++i) {
    tHeaderCache again(true);
    EXPECT_EQ(program.run(&again), program.run(nullptr));
    EXPECT_EQ(again.reused(), 1);
    program.options.pop_back();
  }
}

TEST(SavedHeader, IsIgnoredWhenDamaged) {
  tProgram program;
  tHeaderCache first(true);
  const std::string expected = program.run(&first);
  const std::string whole = *program.disk.bytes("inc/std.pch");
  const auto check = [&](const std::string& damaged) {
    program.disk.put("inc/std.pch", damaged);
    tHeaderCache cache(true);
    ASSERT_EQ(program.run(&cache), expected);
    ASSERT_EQ(cache.reused(), 0);
  };
  for (std::size_t i = 0; i < whole.size(); i += i < 512 ? 1 : 37) {
    std::string damaged = whole;
    damaged[i] = static_cast<char>(damaged[i] ^ (1 << (i % 8)));
    check(damaged);
    if (i % 16 == 0) check(whole.substr(0, i));
  }
  check(whole + "x");
}

TEST(SavedHeader, IsWrittenAgainInPlaceOfADamagedOneOnly) {
  tProgram program;
  const auto run = [&](const char* before) {
    program.disk.put("inc/std.pch", before);
    tHeaderCache cache(true);
    program.run(&cache);
    return *program.disk.bytes("inc/std.pch") != before;
  };
  EXPECT_FALSE(run("a header of somebody's\n"));
  EXPECT_FALSE(run(""));
  program.disk.remove("inc/std.pch");
  tHeaderCache cache(true);
  program.run(&cache);
  std::string cut = program.disk.bytes("inc/std.pch")->substr(0, 100);
  program.disk.put("inc/std.pch", cut);
  tHeaderCache again(true);
  program.run(&again);
  EXPECT_GT(program.disk.bytes("inc/std.pch")->size(), 100u);
}

TEST(SavedHeader, IsDoneWithoutWhereItCannotBeWritten) {
  for (int kind = 0; kind < 3; ++kind) {
    tProgram program;
    const std::string expected = program.run(nullptr);
    if (kind == 0) program.disk.refuseCreate("inc/std.pch.krpre");
    if (kind == 1) program.disk.limitWrites("inc/std.pch.krpre", 1000);
    if (kind == 2) program.disk.refuseRename("inc/std.pch.krpre");
    tHeaderCache cache(true);
    EXPECT_EQ(program.run(&cache), expected);
    EXPECT_EQ(program.disk.fileCount(), 3u);
  }
}

TEST(SavedHeader, IsNotTrustedAfterAFailure) {
  tProgram program;
  tHeaderCache cache(true);
  program.run(&cache);
  cache.setTryAgain(true);
  EXPECT_EQ(program.run(&cache), program.run(nullptr));
  EXPECT_EQ(cache.reused(), 0);
  EXPECT_FALSE(cache.bTryAgain());
  EXPECT_EQ(cache.compiled(), 2);

  program.disk.put("inc/std.ch", "#command\n");
  tHeaderCache failing(true);
  const std::string expected = program.run(nullptr);
  EXPECT_NE(expected.find("C2001"), std::string::npos);
  EXPECT_EQ(program.run(&failing), expected);
  EXPECT_TRUE(failing.bTryAgain());
  EXPECT_EQ(program.run(&failing), expected);
}

TEST(SavedHeader, IsMadeAheadByPrepch) {
  tProgram program;
  for (const bool saves : {false, true}) {
    tHeaderCache cache(saves);
    tAutoArray<tString> options;
    options.add(new tString("-Iinc"));
    KorelPre16 session(program.disk);
    session.Init(options, 1);
    EXPECT_FALSE(session.prepch("std.ch")) << "without a cache";
    session.setHeaderCache(&cache);
    EXPECT_EQ(session.prepch("std.ch"), saves);
  }
  tHeaderCache cache(true);
  EXPECT_EQ(program.run(&cache), program.run(nullptr));
  EXPECT_EQ(cache.compiled(), 0);
}

/// A program with headers that the main source includes.
struct tIncludingProgram : tProgram {
  tIncludingProgram() {
    disk.put("inc/std.ch", "#define STD\n");
    disk.put("inc/app.ch", std::string("// the application's\n\n#include \"std.ch\"\n\n") +
                               "#define APP 1\n" +
                               "#include \"inner.ch\"\n\n#command APP SAY <x> => asay(<x>)\n");
    disk.put("inc/inner.ch", kLimits);
    main("#include \"app.ch\"\nx := APP + MOST\n#include \"inner.ch\"\nAPP SAY x\n");
  }
  void main(std::string_view text) { disk.put("main.prw", text); }
};

// A run over two sources, each with its own text of the program; how often headers were compiled.
int compiledFor(std::string_view first, std::string_view second) {
  tHeaderCache cache;
  tIncludingProgram program;
  for (const std::string_view text : {first, second}) {
    program.main(text);
    EXPECT_EQ(program.run(&cache), program.run(nullptr)) << text;
  }
  return cache.compiled();
}

TEST(IncludedHeader, IsCompiledOnceWhereItGivesTheSame) {
  // The standard header is one, app.ch with what it includes another.
  constexpr const char* kApp =
      "#include \"app.ch\"\nx := APP + MOST\nAPP SAY x\n#include \"inner.ch\"\n";
  EXPECT_EQ(compiledFor(kApp, kApp), 2);
  EXPECT_EQ(compiledFor(kApp,
                        "#define OTHER\n#command APP <x> => no(<x>)\n#include \"app.ch\"\n"
                        "APP SAY x\nAPP 1\n#define MOST 5\nMOST\n"),
            2);
  EXPECT_EQ(
      compiledFor("\ny\n#include \"app.ch\"\nx\n", "#include \"app.ch\"\n#include \"app.ch\"\nx\n"),
      2);
  EXPECT_EQ(compiledFor(kApp, "#define APP 5\n#include \"app.ch\"\nx := APP + MOST\n"), 2);
}

TEST(IncludedHeader, IsCompiledAgainWhereItGivesSomethingElse) {
  constexpr const char* kApp = "#include \"app.ch\"\nx := APP + MOST\n";
  constexpr const char* kOthers[] = {
      "#define MOST 5\n#include \"app.ch\"\nx := APP + MOST\n",
      "#include \"limits.ch\"\n#include \"app.ch\"\nx := APP + MOST\n",
  };
  for (const char* other : kOthers) EXPECT_GE(compiledFor(kApp, other), 3) << other;
}

TEST(IncludedHeader, WithStatementsOrItselfIsReadEachTime) {
  for (const char* inner :
       {"#define MOST 1\nx := MOST\n", "#include \"./app.ch\"\n#define MOST 1\n"}) {
    tIncludingProgram program;
    program.disk.put("inc/inner.ch", inner);
    tHeaderCache cache;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(program.run(&cache), program.run(nullptr)) << inner;
  }
}

TEST(IncludedHeader, IsReadWhereItIsNoCycle) {
  tIncludingProgram program;
  program.disk.put("inc/outer.ch", "#include \"inner.ch\"\ny := INNER\n");
  program.disk.put("inc/inner.ch", "#include \"./outer.ch\"\n#define INNER 1\n");
  tHeaderCache cache;
  for (const char* text : {"#include \"outer.ch\"\n", "#include \"outer.ch\"\n",
                           "#include \"inner.ch\"\n", "#include \"inner.ch\"\n"}) {
    program.main(text);
    EXPECT_EQ(program.run(&cache), program.run(nullptr)) << text;
  }
}

TEST(SharedHeader, IsWaitedForWhileSomebodyReadsIt) {
  tHeaderCache cache;
  std::optional<tHeaderCache::tTurn> reading(std::in_place, cache, "a.ch");
  EXPECT_TRUE(tHeaderCache::tTurn(cache, "b.ch").wanted()) << "another header";
  std::atomic<bool> turned = false;
  std::thread other([&] {
    EXPECT_TRUE(tHeaderCache::tTurn(cache, "a.ch").wanted());
    turned = true;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(turned);
  reading.reset();
  other.join();

  reading.emplace(cache, "a.ch");
  cache.giveUp("a.ch");
  EXPECT_FALSE(tHeaderCache::tTurn(cache, "a.ch").wanted()) << "nobody waits in vain";
}

TEST(SharedHeader, IsCompiledOnceForAllThreads) {
  const tProgram program;
  tHeaderCache cache;
  const std::string expected = tProgram().run(nullptr);
  std::vector<std::thread> threads;
  std::vector<std::string> results(8);
  for (std::string& result : results) {
    threads.emplace_back([&] {
      for (int i = 0; i < 10; ++i) {
        tProgram own;
        result = own.run(&cache, own.disk);
        if (result != expected) return;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& result : results) EXPECT_EQ(result, expected);
  EXPECT_EQ(cache.compiled(), 1);
  EXPECT_EQ(cache.reused(), 79);
}

}  // namespace
