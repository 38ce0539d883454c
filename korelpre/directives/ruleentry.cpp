#include "korelpre/directives/ruleentry.h"

#include "korelpre/directives/programfile.h"
#include "korelpre/directives/syntaxnotes.h"
#include "korelpre/headers/headerrecorder.h"

namespace precomp {

namespace {

void noteReplaced(tProgramFile& file) {
  tRewriting& rewriting = file.shared().rewriting;
  rewriting.file = nullptr;  // its list of rules may have the one that is gone
  rewriting.replacedAt = file.mainFile().currentLine;
}

// A #define takes the place of the only one of its name.
void enterDefine(tProgramFile& file, std::unique_ptr<tBaseXChg> rule) {
  if (file.shared().rules.defines.define(std::move(rule))) noteReplaced(file);
}

void removeWaiting(tProgramFile& file, const tString& name) {
  tXChgArray& waiting = file.shared().rules.dynDefines;
  int first = 0;
  int last = 0;
  while (waiting.index().countOf(name) > 0) {
    waiting.Find(name, first, last, 1);
    tSourceLine* entry = waiting.takeRule(last)->lineEntry();
    if (entry != nullptr) entry->pendingDefine.reset();
  }
  tSourceCode& lines = file.mainFile().lines;
  file.shared().rules.waitingNames.remove(name, [&](int line) { lines.entry(line); });
}

// Rules of the main file are carried out twice: when they are read, and when their line is reached.
bool entersAtOnce(const tProgramFile& file) {
  return file.isIncluded || file.shared().walking;
}

// Nothing is made of a rule until its line is read again.
void leaveUnread(tProgramFile& file, const tRuleDirective& directive) {
  const auto offset = static_cast<std::size_t>(directive.text.data() - file.text.data());
  file.lines.addStatement(tSourceCode::kScanned, directive.line, offset);
  if (directive.directive != eDirective::kDefine) return;
  file.shared().rules.waitingNames.add(keyOf(directive), directive.line);
}

void takeDefine(tProgramFile& file, std::unique_ptr<tBaseXChg> rule, int line) {
  tSharedState& shared = file.shared();
  if (entersAtOnce(file)) {
    if (shared.recorder != nullptr) {
      shared.recorder->defining(rule->key(), shared.rules.defines.index().countOf(rule->key()));
      shared.recorder->ruleEntered(rule.get());
    }
    removeWaiting(file, rule->key());
    enterDefine(file, std::move(rule));
    return;
  }
  tSourceLine& entry = file.lines.entry(line);
  rule->setLineEntry(&entry);
  shared.rules.dynDefines.Add(rule.get());
  entry.pendingDefine = std::move(rule);
}

void takePatternRule(tProgramFile& file, std::unique_ptr<tBaseXChg> rule, int line) {
  tSharedState& shared = file.shared();
  if (entersAtOnce(file)) {
    if (shared.recorder != nullptr) shared.recorder->ruleEntered(rule.get());
    shared.rules.enter(std::move(rule));
    file.lines.addDirective(line);
    return;
  }
  tSourceLine& entry = file.lines.entry(line);
  entry.pendingRules.push_back(std::move(rule));
  entry.directive = true;
}

}  // namespace

void carryOutRule(tProgramFile& file, const tRuleDirective& directive,
                  const tRuleStorage& storage) {
  if (!directive.isSound()) raiseUnsound(file, directive);
  if (storage.unread && !entersAtOnce(file)) return leaveUnread(file, directive);
  std::unique_ptr<tBaseXChg> rule = makeRule(directive, &file.shared().rules, storage);
  rule->setOrigin(file.names.opened, directive.line);
  rule->keepText(file.text, directive.text);
  if (directive.directive == eDirective::kDefine) {
    takeDefine(file, std::move(rule), directive.line);
  } else {
    takePatternRule(file, std::move(rule), directive.line);
  }
}

bool enterPending(tProgramFile& file, tSourceLine& entry) {
  if (entry.pendingDefine == nullptr && entry.pendingRules.empty()) return false;
  if (entry.pendingDefine != nullptr) {
    entry.pendingDefine->setLineEntry(nullptr);
    enterDefine(file, std::move(entry.pendingDefine));
  }
  for (auto& rule : entry.pendingRules) file.shared().rules.enter(std::move(rule));
  entry.pendingRules.clear();
  return true;
}

void removeDefinitions(tProgramFile& file, const tString& name) {
  tXChgArray& defines = file.shared().rules.defines;
  int first = 0;
  int last = 0;
  if (defines.Find(name, first, last, 0) != 0 && first == last) {
    defines.removeRule(first);
    noteReplaced(file);
  }
  removeWaiting(file, name);
}

}  // namespace precomp
