// Every operation on files, every allocation and every step of a virtual machine fails, at every
// entry of the library and every command of the program.

#include <gtest/gtest.h>
#include <jni.h>

#include <climits>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "include/krpre.h"
#include "tests/faults/faultlayer.h"
#include "tests/faults/sweep.h"
#include "tests/support/childprocess.h"
#include "tests/support/javamachine.h"

int krpreMain(int count, char** arguments);

namespace {

using tFiles = std::map<std::string, std::string>;

const std::string kRules = R"(#define VERSION "1.0"
#define TWICE(x) ((x) + (x))
#xcommand PUT <x> [TO <y>] => SetValue(<x>[, <y>])
#command STORE <v> TO <a> [, <m>] => <a> := [<m> :=] <v>
#translate LISTING <l,...> => { <(l)> }
#xtranslate SHOW <s: ON, OFF> [<w: WIDE>] => Shown(<"s">, <.w.>)
#command EACH <x,...> => AEval({<{x}>})
#command REST <*r*> => Remaining(#<r>, <"r">)
#ifndef DONE
#define DONE .T.
#endif
)";

const std::string kSource = R"(#include "more.ch"
#include "none.ch"
#ifdef MORE
Function Main(a) // a comment
  Local x := TWICE(a), cQuery
  PUT VERSION TO x ; PUT DONE
  STORE 1 TO x, y
  l := LISTING a, (b), 'c'
  If SHOW ON WIDE
    EACH a, b(1,2)
    REST a + b
  EndIf
  BeginSql Alias SALES
    COLUMN DAY AS DATE
    SELECT S.DAY FROM %Table:SAL% S WHERE S.BRANCH = %xFilial:SAL% AND S.DAY >= %Exp:a%
  EndSql
Return MORE
#endif
)";

const std::string kBlock = kSource + "BeginContent var c\n a line\nEndContent\n";
const std::string kPage = "<% Local i %>\n<ul>\n<% For i := 1 To 3 %>\n<%= i %>\n<% Next %>\n";

const tFiles& inputs() {
  static const tFiles kInputs = {
      {"std.ch", kRules},
      {"more.ch", "#define MORE x\n#xcommand NEVER => Nothing()\n"},
      {"none.ch", ""},
      {"a.prw", kSource},
      {"b.prw", readBytes(KRPRE_SOURCES "/tests/corpus/packed/source.prw")},
      {"c.krh", kPage},
      {"d.prw", kBlock},
      {"list", "b.prw\n"},
      {"bad.prw", "#include \"bad.ch\"\n"},
      {"bad.ch", "PUT 1\nElse\n"},
  };
  return kInputs;
}

void expectSound(const tEntry& entry) {
  static const tFiles kOlder = {
      {"a.ppo", "older"}, {"b.ppo", "older"}, {"c.ppo", "older"}, {"bad.ppo", "older"}};
  EXPECT_EQ(sweep(entry, inputs(), kOlder), "");
}

/// An argument vector that calls of the library may be given.
class tVector {
 public:
  tVector(std::initializer_list<const char*> arguments)
      : texts_(arguments.begin(), arguments.end()) {
    for (std::string& text : texts_) slots_.push_back(text.data());
  }
  int count() const { return static_cast<int>(slots_.size()); }
  char** slots() { return slots_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> slots_;
};

TEST(Faults, OfDoPreProcAreTold) {
  static struct {
    tVector vector;
    int status;
  } runs[] = {{{"", "@Fa.prw", "@Fb.prw", "-I.", "-T"}, 0},
              {{"", "@Fc.krh", "@Fd.prw", "-Isub"}, 0},
              {{"", "@Fa.prw", "/DDEBUG=1", "/DMORE"}, 0},
              {{"", "@Fbad.prw", "@Fb.prw"}, 1},
              {{"", "-v"}, 0}};
  for (auto& [vector, status] : runs) {
    expectSound({"doPreProc",
                 [&vector = vector](tCame& answer) {
                   answer.status = doPreProc(vector.count(), vector.slots());
                 },
                 status});
  }
}

TEST(Faults, OfExecuteKrpreDllAreTold) {
  expectSound({"executeKrpreDll",
               [](tCame& came) { came.status = executeKrpreDll(3, "@Fa.prw \"@Fb.prw\" /DX=1"); }});
}

TEST(Faults, OfTheSilencerLeaveOutputAndDescriptors) {
  expectSound({"redirectOutPut", [](tCame& came) {
                 int silencer = 0;
                 const int saved = redirectOutPut(&silencer);
                 restoreOutPut(saved, silencer);
                 if (saved >= 0) close(saved);
                 came.status = saved < 0 ? 1 : 0;
                 came.told = saved < 0 ? "-1" : "";
               }});
}

tCame& came(void* context) {
  return *static_cast<tCame*>(context);
}

/// A host that listens to everything.
krpre_host listener(tCame& listens) {
  krpre_host host{};
  host.size = sizeof host;
  host.context = &listens;
  host.message = [](void* context, const char* text, std::size_t length) {
    const tFaultPause pause;
    if (text[length] != '\0') came(context).broken = "a message without a zero behind it";
    came(context).told.append(text, length);
  };
  host.diagnostic = [](void* context, const krpre_diagnostic* diagnostic) {
    const tFaultPause pause;
    (came(context).told += diagnostic->slug) += diagnostic->message;
    for (int i = 0; i < diagnostic->ruleCount; ++i) came(context).told += diagnostic->rules[i].key;
  };
  return host;
}

TEST(Faults, OfKrpreRunAreTold) {
  static tVector vector = {"", "@Fa.prw", "@Fbad.prw", "@Fb.prw"};
  expectSound({"krpre_run, all callbacks", [](tCame& listens) {
                 static const char* const kDirectories[] = {"", "sub"};
                 static const krpre_define kDefines[] = {{"ONE", "1"}, {"MORE", nullptr}};
                 krpre_host host = listener(listens);
                 host.rule = [](void* context, const krpre_rule* rule) {
                   const tFaultPause pause;
                   came(context).told += rule->listing;
                 };
                 host.step = [](void* context, const krpre_step* step) {
                   const tFaultPause pause;
                   came(context).told += step->statement;
                   for (int i = 0; i < step->captureCount; ++i) {
                     came(context).told += step->captures[i].marker;
                   }
                 };
                 host.file = [](void* context, int event, const char*, const char* name) {
                   const tFaultPause pause;
                   (came(context).told += std::to_string(event)) += name;
                 };
                 host.includeDirectories = kDirectories;
                 host.includeDirectoryCount = std::size(kDirectories);
                 host.defines = kDefines;
                 host.defineCount = std::size(kDefines);
                 listens.status = krpre_run(vector.count() - 2, vector.slots(), &host);
               }});
  expectSound({"krpre_run, an error",
               [](tCame& listens) {
                 krpre_host host = listener(listens);
                 host.language = "de_DE.ISO-8859-1";
                 listens.status = krpre_run(vector.count(), vector.slots(), &host);
               },
               1});
  expectSound({"krpre_run, shared headers", [](tCame& listens) {
                 krpre_host host = listener(listens);
                 host.flags = KRPRE_KEEP_UNCHANGED | KRPRE_TAKE_TURNS;
                 host.outputName = "a.ppo";
                 host.dependencyName = "a.d";
                 host.headers = krpre_headers_new_in(".");
                 for (int i = 0; i < 2 && listens.status == 0; ++i) {
                   listens.status = krpre_run(2, vector.slots(), &host);
                 }
                 krpre_headers_free(host.headers);
               }});
}

TEST(Faults, OfKrpreTextAreTold) {
  for (const auto& [name, text] : {std::pair("sub/none.prw", &kBlock), {"page.krh", &kPage}}) {
    expectSound({"krpre_text", [name = name, text = text](tCame& listens) {
                   krpre_host host = listener(listens);
                   host.output = [](void* context, const char*, const char* bytes,
                                    std::size_t length) {
                     const tFaultPause pause;
                     came(context).text.assign(bytes, length);
                   };
                   listens.status = krpre_text(0, nullptr, &host, name, text->data(), text->size());
                 }});
  }
}

TEST(Null, IsAnsweredWhereItIsNotAllowed) {
  char name[4] = "?";
  EXPECT_EQ(krpre_output_name(nullptr, nullptr, name, sizeof name), 0U);
  EXPECT_STREQ(name, "");
  EXPECT_EQ(krpre_output_name("a.prw", nullptr, nullptr, 4), 5U);
  EXPECT_EQ(krpre_translate("de", nullptr, name, sizeof name), 0U);
  EXPECT_EQ(krpre_translate(nullptr, "Error", nullptr, 4), 5U);
  EXPECT_GT(krpre_headers_directory(nullptr, 4), 4U);
  EXPECT_EQ(krpre_is_source(nullptr), 0);
  EXPECT_EQ(krpre_headers_read(nullptr) + krpre_headers_reused(nullptr), 0);
  EXPECT_EQ(krpre_text(0, nullptr, nullptr, "a.prw", nullptr, 1), KRPRE_BAD_SOURCE);
  EXPECT_EQ(krpre_pack(nullptr, nullptr), KRPRE_UNREADABLE);
  EXPECT_EQ(krpre_unpack(nullptr, "a"), KRPRE_UNREADABLE);
}

TEST(Faults, OfQuestionsAreTheirAnswers) {
  expectSound({"krpre_output_name", [](tCame& answer) {
                 char name[64];
                 answer.status = krpre_output_name("sub/a.prw", "out", name, sizeof name) == 0;
                 const tFaultPause pause;
                 answer.told = answer.status == 0 ? "" : "0";
                 answer.text = name;
               }});
  expectSound({"krpre_headers_directory", [](tCame& answer) {
                 static char name[PATH_MAX];
                 answer.status = krpre_headers_directory(name, sizeof name) == 0;
                 const tFaultPause pause;
                 answer.told = answer.status == 0 ? "" : "0";
                 answer.text = name;
               }});
  expectSound({"krpre_is_source", [](tCame& answer) {
                 answer.status = krpre_is_source("some/rather/long/directory/a.PRW") == 0;
               }});
  expectSound({"krpre_translate", [](tCame& answer) {
                 char words[64];
                 answer.status = krpre_translate("de_DE.ISO-8859-1", "Precompilation of file",
                                                 words, sizeof words) == 0;
                 const tFaultPause pause;
                 answer.told = answer.status == 0 ? "" : "0";
                 answer.text = words;
               }});
}

TEST(Faults, OfPackingAreTheirCodes) {
  using tChange = int (*)(const char*, const char*);
  for (const tChange change : {krpre_pack, krpre_unpack}) {
    for (const char* name : {"a.prw", "b.prw"}) {
      expectSound({"krpre_pack, krpre_unpack", [=](tCame& answer) {
                     const int code = change(name, "a.ppo");
                     answer.status = code == KRPRE_UNCHANGED ? 0 : code;
                     answer.told = answer.status == 0 ? "" : std::to_string(code);
                   }});
    }
  }
}

/// Runs `action` on a machine whose steps may fail, and judges what it has seen.
template <class tAction>
void withMachine(tCame& answer, const tAction& action) {
  std::unique_ptr<tMachine> machine;
  {
    const tFaultPause pause;
    machine = std::make_unique<tMachine>();
    machine->elements = {u"", u"-I\u00e1", nullptr, u"@Fa.prw"};
    machine->stepFails = [] { return failsNow(eFaulty::kMachine, "machine"); };
  }
  action(*machine);
  const tFaultPause pause;
  answer.text = machine->made;
  if (machine->callsWhilePending != 0) answer.broken = "called while an exception is pending";
  if (machine->references != 0 || machine->pinned != 0) answer.broken = "a reference is lost";
  if (!machine->pending) return;
  answer.status = 1;
  answer.told = "an exception";
}

TEST(Faults, OfTheMachineAndBehindItAreExceptions) {
  expectSound({"Krpre.prebuild", [](tCame& answer) {
                 withMachine(answer, [&](tMachine& machine) {
                   answer.status =
                       Java_Krpre_prebuild(machine.environment(), nullptr, tMachine::kArray);
                 });
               }});
  // The text of two headers, and where those that come with the library are.
  for (const char16_t* name : {u"std.ch", u"b.prw", u""}) {
    expectSound({*name != u'\0' ? "Krpre.getCH" : "Krpre.headers", [=](tCame& answer) {
                   withMachine(answer, [&](tMachine& machine) {
                     JNIEnv* const environment = machine.environment();
                     if (*name == u'\0') {
                       Java_Krpre_headers(environment, nullptr);
                     } else {
                       Java_Krpre_getCH(environment, nullptr, tMachine::text(name));
                     }
                   });
                   // What cannot be read or found is an empty text.
                   if (answer.text.empty() && answer.status == 0) answer.told = "empty";
                   if (answer.text.empty()) answer.status = 1;
                 }});
  }
}

TEST(Faults, OfTheProgramAreTold) {
  static struct {
    tVector vector;
    int status = 0;
  } commands[] = {
      {{"krpre", "-j2", "-MD", "a.prw", "b.prw"}},
      {{"krpre", "--precompiled=.", "--diagnostics=json", "a.prw", "bad.prw"}, 1},
      {{"krpre", "-q", "--diagnostics=long", "bad.prw", "b.prw"}, 1},
      {{"krpre", "-D", "MORE", "-", "--stdin-name", "a.prw"}},
      {{"krpre", "--classic", "@Fa.prw"}},
      {{"krpre", "check", "-j2", "--diagnostics=long", "a.prw", "--files-from=list"}},
      {{"krpre", "coverage", "a.prw"}},
      {{"krpre", "rules", "--json", "a.prw"}},
      {{"krpre", "rules", "--key", "PUT", "a.prw"}},
      {{"krpre", "explain", "--json", "a.prw:6"}},
      {{"krpre", "explain", "a.prw:7"}},
      {{"krpre", "pack", "-o", "b.ppo", "a.prw"}},
      {{"krpre", "unpack", "-o", "a.ppo", "b.prw"}},
      {{"krpre", "--diagnostics=sarif", "bad.prw", "none.prw"}, 1},
      {{"krpre", "--explain", "C2027"}},
      {{"krpre", "--help"}},
      {{"krpre", "--version"}},
      {{"krpre", "--completions=bash"}},
      {{"krpre", "--nonsense"}, 2},
  };
  for (auto& [vector, status] : commands) {
    expectSound({vector.slots()[1],
                 [&vector = vector](tCame& answer) {
                   answer.status = krpreMain(vector.count(), vector.slots());
                 },
                 status, true});
  }
}

}  // namespace
