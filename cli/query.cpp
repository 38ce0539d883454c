#include "cli/query.h"

#include <strings.h>

#include <cstdio>

#include "cli/exitstatus.h"
#include "cli/explain.h"
#include "cli/librarycall.h"
#include "cli/queryline.h"
#include "cli/shippedheaders.h"
#include "include/krpre.h"

namespace {

const char kExplain[] = "krpre explain";
const char kRules[] = "krpre rules";

const char kExplainHelp[] =
    "Usage: krpre explain [OPTION]... FILE:LINE\n"
    "Show how the statement on a line of a source becomes what the compiler reads:\n"
    "one rewrite after the other, with the rule that made it, the place where that\n"
    "rule is defined and what each of its markers took, and the rules that were\n"
    "tried at the same place and why they were not taken. No file is written.\n";

const char kRulesHelp[] =
    "Usage: krpre rules [OPTION]... FILE\n"
    "List the rules that are in force at the end of a source: defines, translations\n"
    "and commands, with the place where each is defined. No file is written.\n";

const char kCommonHelp[] =
    "\n"
    "  -I DIR           search DIR for include files; may be repeated\n"
    "  -D NAME[=VALUE]  define NAME before the first line; may be repeated\n"
    "      --json       print JSON\n"
    "      --color=WHEN colour the text: always, never or auto (the default)\n";

const char kKeyHelp[] = "      --key WORD   only the rules that a statement finds by WORD\n";

// What a run tells. The messages are those of the classic run; they matter when it fails.
struct tAnswer {
  tRuleStory* story = nullptr;
  std::vector<tRuleInfo>* rules = nullptr;
  std::string messages;
};

tAnswer& answer(void* context) {
  return *static_cast<tAnswer*>(context);
}

void takeMessage(void* context, const char* text, std::size_t length) {
  answer(context).messages.append(text, length);
}

void takeStep(void* context, const krpre_step* step) {
  answer(context).story->meet(*step);
}

void takeRule(void* context, const krpre_rule* rule) {
  answer(context).rules->push_back(infoOf(*rule));
}

// Runs the library over the query's file. Returns the result of the run.
int ask(const tQueryLine& query, tAnswer& answers) {
  const std::string headers = shippedHeaders();
  tLibraryCall call(query.source, query.source.files[0], headers);
  krpre_host host{};
  host.size = sizeof host;
  host.context = &answers;
  host.flags = KRPRE_NO_OUTPUT;
  host.message = takeMessage;
  if (answers.story != nullptr) host.step = takeStep;
  if (answers.rules != nullptr) host.rule = takeRule;
  call.prepare(host);
  return krpre_run(call.count(), call.vector(), &host);
}

int show(const std::string& text) {
  const bool done = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
  return done ? kAllDone : kSomeFailed;
}

int showHelp(const char* text, const char* more) {
  return show(std::string(text) + kCommonHelp + more);
}

// A word finds a rule as a word of a statement does, without regard to case.
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

int explainCommand(int count, char** arguments) {
  tQueryLine query = readQueryLine(count, arguments, true);
  if (query.source.request == tCommandLine::kShowHelp) return showHelp(kExplainHelp, "");
  if (!query.source.complaint.empty()) return refuseUsage(query.source.complaint, kExplain);
  const std::string& file = query.source.files[0];
  tRuleStory story(nameInRun(file), query.line);
  tAnswer answers;
  answers.story = &story;
  const int result = ask(query, answers);
  if (story.found()) {
    const int shown = show(query.json ? explainedJson(story, file)
                                      : explainedText(story, file, tPaint(query.colour)));
    return result == 0 ? shown : reportFailure(answers);
  }
  if (result != 0) return reportFailure(answers);
  std::fprintf(stderr,
               "krpre: %s:%d: no statement stands here: the line is empty, a comment or a\n"
               "directive, or it is skipped by a conditional\n",
               file.c_str(), query.line);
  return kSomeFailed;
}

int rulesCommand(int count, char** arguments) {
  tQueryLine query = readQueryLine(count, arguments, false);
  if (query.source.request == tCommandLine::kShowHelp) return showHelp(kRulesHelp, kKeyHelp);
  if (!query.source.complaint.empty()) return refuseUsage(query.source.complaint, kRules);
  std::vector<tRuleInfo> rules;
  tAnswer answers;
  answers.rules = &rules;
  if (ask(query, answers) != 0) return reportFailure(answers);
  if (!query.key.empty()) {
    std::erase_if(rules, [&](const tRuleInfo& rule) { return !isFoundBy(rule, query.key); });
  }
  return show(query.json ? listedJson(rules) : listedText(rules, tPaint(query.colour)));
}
