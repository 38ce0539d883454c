#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
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

const tString kDirectory("cache");

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

  std::string run(tHeaderCache* cache) {
    KorelPre16 session(disk);
    session.setHeaderCache(cache);
    const tPreprocessed result = runSession(session, options);
    std::string text = result.text + "\n" + result.error + "\n" + result.printed;
    for (tXChgArray* table : {session.defines(), session.commands(), session.translates()}) {
      table->arrange();
      tString listing;
      for (int i = 0; i < table->count(); ++i) table->get(i)->print(&listing);
      text += "\n--\n";
      text += listing.view();
    }
    return text;
  }
  /// The number of times a run takes the saved header; its result must be that of one without.
  int reused() {
    tHeaderCache cache(kDirectory);
    EXPECT_EQ(run(&cache), run(nullptr));
    return cache.reused();
  }
  std::string savedName() { return "cache/" + disk.namesIn("cache").at(0); }
  std::string saved() { return *disk.bytes(savedName()); }

  tLinkedDisk disk;
  std::vector<std::string> options = {"-Iearly;inc", "-Fmain.prw"};
};

// That a saved header gives what the text gives, and a damaged one is not used, is held by the fuzz
// targets "program" and "pch".
TEST(SavedHeader, IsNotUsedWhereTheTextWouldGiveSomethingElse) {
  const struct {
    const char* what;
    std::function<void(tProgram&)> change;
    int reused = 0;
  } kChanges[] = {
      {"nothing", [](tProgram&) {}, 1},
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
         p.options[0] = "-Iother";
         // Its file may have the same name.
         const std::string before = p.saved();
         EXPECT_EQ(p.reused(), 0);
         for (const std::string& name : p.disk.namesIn("cache"))
           p.disk.put("cache/" + name, before);
       }},
      {"the saved file", [](tProgram& p) { p.disk.put(p.savedName(), p.saved() + "x"); }},
      {"nothing of one byte, the last that is read",
       [](tProgram& p) {
         p.disk.put("inc/std.ch", "\n");
         EXPECT_EQ(p.reused(), 0);
       },
       1},
      {"names, but it stands beside those for others",
       [](tProgram& p) {
         p.options.emplace_back("-DOTHER");
         EXPECT_EQ(p.reused(), 0);
         EXPECT_EQ(p.disk.fileCount(), 5u);
         EXPECT_EQ(p.reused(), 1);
         p.options.pop_back();
       },
       1},
  };
  for (const auto& row : kChanges) {
    tProgram program;
    EXPECT_EQ(program.reused(), 0);
    EXPECT_EQ(program.disk.fileCount(), 4u) << "no temporary file stays";
    row.change(program);
    EXPECT_EQ(program.reused(), row.reused) << row.what;
  }
}

TEST(SavedHeader, IsWrittenAgainInPlaceOfADamagedOneOnly) {
  tProgram program;
  program.reused();
  const std::string name = program.savedName();
  const std::string sound = program.saved();
  const auto problemAfter = [&](std::string_view before) {
    program.disk.put(name, before);
    tHeaderCache cache(kDirectory);
    EXPECT_EQ(program.run(&cache), program.run(nullptr));
    return cache.problem();
  };
  EXPECT_EQ(problemAfter(sound.substr(0, 100)), "");
  EXPECT_EQ(program.saved(), sound);
  for (const std::string_view before : {"a file of somebody's\n", ""}) {
    EXPECT_EQ(problemAfter(before), name + ": not a cached header, and left alone");
    EXPECT_EQ(program.saved(), before);
  }
}

TEST(SavedHeader, IsDoneWithoutWhereItCannotBe) {
  const auto problemOf = [](const std::function<void(tProgram&)>& change) {
    tProgram program;
    program.reused();
    const std::string name = program.savedName();
    change(program);
    tHeaderCache cache(kDirectory);
    EXPECT_EQ(program.run(&cache), program.run(nullptr));
    const std::string problem = cache.problem();
    return problem.starts_with(name) ? problem.substr(name.size()) : problem;
  };
  EXPECT_EQ(problemOf([](tProgram& p) {
              p.disk.refuse(p.savedName(), {EACCES, false, 1000});
            }),
            ": Permission denied");
  EXPECT_EQ(problemOf([](tProgram& p) {
              p.disk.refuse(p.savedName(), {EIO, true, 1000});
            }),
            ": Input/output error");
  EXPECT_EQ(problemOf([](tProgram& p) {
              p.disk.limitWrites(p.savedName() + ".krpre", 10);
              p.disk.remove(p.savedName().c_str());
            }),
            ": No space left on device");
  EXPECT_EQ(problemOf([](tProgram& p) { p.disk.put("inc/std.ch", "#include \"./std.ch\"\n"); }),
            "std.ch: reading it depends on more than a cache can check");
}

TEST(SavedHeader, IsNotTrustedAfterAFailure) {
  tProgram program;
  tHeaderCache cache(kDirectory);
  program.run(&cache);
  cache.setTryAgain(true);
  EXPECT_EQ(program.run(&cache), program.run(nullptr));
  EXPECT_EQ(cache.reused(), 0);
  EXPECT_FALSE(cache.bTryAgain());
  EXPECT_EQ(cache.compiled(), 2);

  program.disk.put("inc/std.ch", "#command\n");
  tHeaderCache failing(kDirectory);
  const std::string expected = program.run(nullptr);
  EXPECT_NE(expected.find("C2001"), std::string::npos);
  EXPECT_EQ(program.run(&failing), expected);
  EXPECT_TRUE(failing.bTryAgain());
  EXPECT_EQ(program.run(&failing), expected);
}

TEST(SharedHeader, IsCompiledAgainWhenNamesStandOtherwise) {
  const struct {
    std::vector<std::string> names;
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

// The standard header is one, app.ch with what it includes another.
TEST(IncludedHeader, IsCompiledAgainWhereItGivesSomethingElse) {
  constexpr const char* kApp =
      "#include \"app.ch\"\nx := APP + MOST\nAPP SAY x\n#include \"inner.ch\"\n";
  const struct {
    const char *first, *second;
    int compiled;
  } kCases[] = {
      {kApp, kApp, 2},
      {kApp,
       "#define OTHER\n#command APP <x> => no(<x>)\n#include \"app.ch\"\n"
       "APP SAY x\nAPP 1\n#define MOST 5\nMOST\n",
       2},
      {"\ny\n#include \"app.ch\"\nx\n", "#include \"app.ch\"\n#include \"app.ch\"\nx\n", 2},
      {kApp, "#define APP 5\n#include \"app.ch\"\nx := APP + MOST\n", 2},
      {kApp, "#define MOST 5\n#include \"app.ch\"\nx := APP + MOST\n", 3},
      {kApp, "#include \"limits.ch\"\n#include \"app.ch\"\nx := APP + MOST\n", 4},
  };
  for (const auto& row : kCases) {
    tProgram program;
    program.disk.put("inc/std.ch", "#define STD\n");
    program.disk.put("inc/app.ch",
                     "// the application's\n\n#include \"std.ch\"\n\n#define APP 1\n"
                     "#include \"inner.ch\"\n\n#command APP SAY <x> => asay(<x>)\n");
    program.disk.put("inc/inner.ch", kLimits);
    tHeaderCache cache;
    for (const char* text : {row.first, row.second}) {
      program.disk.put("main.prw", text);
      EXPECT_EQ(program.run(&cache), program.run(nullptr)) << text;
    }
    EXPECT_EQ(cache.compiled(), row.compiled) << row.second;
  }
}

TEST(SharedHeader, IsCompiledOnceForAllThreads) {
  tHeaderCache cache;
  const auto run = [](tHeaderCache* headers) {
    tProgram program;
    program.disk.put("main.prw", "#include \"app.ch\"\nAPP\n7 x\n");
    program.disk.put("inc/std.ch", "#command 7 <x> => seven(<x>)\n");
    program.disk.put("inc/app.ch", repeated("#command APP => app()\n", 300));
    return program.run(headers);
  };
  const std::string expected = run(nullptr);
  std::vector<std::thread> threads;
  std::vector<std::string> results(8);
  for (std::string& result : results) {
    threads.emplace_back([&] {
      for (int i = 0; i < 10 && (i == 0 || result == expected); ++i) result = run(&cache);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& result : results) EXPECT_EQ(result, expected);
  EXPECT_EQ(cache.compiled(), 2);
  EXPECT_EQ(cache.reused(), 158);

  cache.giveUp("a.ch");
  EXPECT_FALSE(tHeaderCache::tTurn(cache, "a.ch").wanted()) << "nobody waits in vain";
}

}  // namespace
