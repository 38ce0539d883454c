#include "cli/query.h"

#include <strings.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

#include "cli/diagnostics.h"
#include "cli/exitstatus.h"
#include "cli/explain.h"
#include "cli/librarycall.h"
#include "cli/printer.h"
#include "cli/sourcequote.h"
#include "include/krpre.h"

namespace {

// What a run reports. The messages matter only if it fails.
struct tAnswer {
  tRuleStory* story = nullptr;
  std::vector<tRuleInfo>* rules = nullptr;
  std::string messages;
  std::size_t told = 0;  // the messages up to the last diagnostic
  int errors = 0;
  tCallbackGuard guard;
};

tAnswer& answer(void* context) {
  return *static_cast<tAnswer*>(context);
}

void takeMessage(void* context, const char* text, std::size_t length) {
  answer(context).guard.run([&] { answer(context).messages.append(text, length); });
}

void takeDiagnostic(void* context, const krpre_diagnostic* diagnostic) {
  tAnswer& answers = answer(context);
  answers.guard.run([&] {
    const tPaint plain(false);
    const auto words = [](const char* text) { return std::string(text); };
    const std::string head = longHead(*diagnostic, plain, words);
    const bool error = diagnostic->severity == KRPRE_SEVERITY_ERROR;
    if (error && ++answers.errors > 1) {
      // As for a plain run, the first is told only.
      answers.messages.resize(answers.told);
    } else if (!head.empty()) {
      answers.messages.resize(answers.told);
      answers.messages += head + longDetails(*diagnostic, plain, words);
    }
    answers.told = answers.messages.size();
  });
}

void takeStep(void* context, const krpre_step* step) {
  answer(context).guard.run([&] { answer(context).story->meet(*step); });
}

void takeRule(void* context, const krpre_rule* rule) {
  answer(context).guard.run([&] { answer(context).rules->push_back(infoOf(*rule)); });
}

// Runs the library over the one file of `line`. Returns the result of the run.
int ask(const tCommandLine& line, tAnswer& answers) {
  const std::string headers = shippedHeaders();
  tLibraryCall call(line, line.files[0], headers);
  krpre_host host{};
  host.size = sizeof host;
  host.context = &answers;
  host.flags = KRPRE_NO_OUTPUT;
  host.message = takeMessage;
  host.diagnostic = takeDiagnostic;
  if (answers.story != nullptr) {
    constexpr int kMostErrors = 20;
    host.step = takeStep;
    host.mostErrors = kMostErrors;  // the statement may stand behind one
  }
  if (answers.rules != nullptr) host.rule = takeRule;
  call.prepare(host);
  const int result = krpre_run(call.count(), call.vector(), &host);
  answers.guard.check();
  return result;
}

tPaint paintFor(const tCommandLine& line) {
  return tPaint(line.colour.value_or(mayColour(STDOUT_FILENO)));
}

// A word finds a rule as a word of a statement would: regardless of case, abbreviated if allowed.
bool isFoundBy(const tRuleInfo& rule, const std::string& word) {
  constexpr std::size_t kShortest = 4;
  if (rule.kind == KRPRE_DEFINE) return rule.key == word;
  const bool same = strcasecmp(rule.key.c_str(), word.c_str()) == 0;
  return same || (rule.abbreviates && word.size() >= kShortest &&
                  strncasecmp(rule.key.c_str(), word.c_str(), word.size()) == 0);
}

int reportFailure(const tAnswer& answers) {
  std::fputs(answers.messages.c_str(), stderr);
  return kSomeFailed;
}

}  // namespace

int explain(const tCommandLine& line) {
  const std::string& file = line.files[0];
  tRuleStory story(nameInRun(file), line.lineNumber);
  tAnswer answers;
  answers.story = &story;
  const int result = ask(line, answers);
  if (story.found()) {
    const int shown = printText(line.json ? explainedJson(story, file)
                                          : explainedText(story, file, paintFor(line)));
    return result == 0 ? shown : reportFailure(answers);
  }
  if (result != 0) return reportFailure(answers);
  std::fprintf(stderr,
               "krpre: %s:%d: no statement on this line: it is empty, a comment or a directive,\n"
               "or a conditional skips it\n",
               printable(file).c_str(), line.lineNumber);
  return kSomeFailed;
}

int listRules(const tCommandLine& line) {
  std::vector<tRuleInfo> rules;
  tAnswer answers;
  answers.rules = &rules;
  if (ask(line, answers) != 0) return reportFailure(answers);
  if (!line.key.empty()) {
    std::erase_if(rules, [&](const tRuleInfo& rule) { return !isFoundBy(rule, line.key); });
  }
  return printText(line.json ? listedJson(rules) : listedText(rules, line.listing, paintFor(line)));
}
