// What the directives do. The productions and their labels stand in tools/grammars/korelpre.y; for
// what the symbols stand for see values.cpp.

#include <algorithm>

#include "korelpre/headers/headerrecorder.h"
#include "korelpre/korelprecls.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"
#include "ssvp40xpf/korelpreproductions.h"

namespace precomp {

using namespace korelpre;

namespace {

// The markers of ten thousand rules take 25 MiB. What comes when these are taken is read again by
// the rules that are used.
constexpr std::size_t kMostMarkers = std::size_t{64} << 20;

tWordRule wordRuleOf(const tRuleReader& reader) {
  return {.abbreviate = reader.abbreviates(), .caseSensitive = false};
}

// The rule that the reader has read, at `place` in the arena.
tBaseXChg* makeRule(tRuleReader& reader, KorelPreYaccClass* processor, tMarkerArena& arena,
                    void* place) {
  const tString key = reader.pattern().head()->token();
  tMatchMarker* const pattern = reader.pattern().release();
  tMatchMarker* const result = reader.result().release();
  tBaseXChg* rule = nullptr;
  if (reader.isCommand()) {
    rule = new (place) tCommand(processor, wordRuleOf(reader), pattern, result, key);
  } else {
    rule = new (place) tTranslate(processor, wordRuleOf(reader), pattern, result, key);
  }
  rule->setArena(&arena);
  return rule;
}

// A rule that will read its directive again.
std::unique_ptr<tBaseXChg> makeUnread(tRuleReader& reader, KorelPreYaccClass* processor) {
  const tString key = reader.pattern().head()->token();
  std::unique_ptr<tBaseXChg> rule;
  if (reader.isCommand()) {
    rule = std::make_unique<tCommand>(processor, wordRuleOf(reader), nullptr, nullptr, key);
  } else {
    rule = std::make_unique<tTranslate>(processor, wordRuleOf(reader), nullptr, nullptr, key);
  }
  rule->readLater();
  return rule;
}

std::unique_ptr<tTranslate> makeDefine(const tDefineReader& reader, KorelPreYaccClass* processor,
                                       tMarkerArena& arena) {
  void* const place = arena.allocate(sizeof(tTranslate));
  tTranslate* const rule =
      reader.hasParameters()
          ? new (place)
                tTranslate(processor, reader.name(), reader.parameters(), reader.value(), &arena)
          : new (place) tTranslate(processor, reader.name(), reader.value(), &arena);
  return std::unique_ptr<tTranslate>(rule);
}

std::unique_ptr<tTranslate> makeUnread(const tDefineReader& reader, KorelPreYaccClass* processor) {
  const tString& name = reader.name();
  const tWordRule wordRule{.abbreviate = false, .caseSensitive = true};
  auto rule =
      std::make_unique<tTranslate>(processor, wordRule, nullptr, nullptr,
                                   name.substr(0, name.size() - (reader.hasParameters() ? 1 : 0)));
  rule->readLater();
  return rule;
}

}  // namespace

SSYaccStackElement* KorelPreYaccClass::reduce(unsigned production, unsigned size) {
  const int line = size > 0 ? lineOf(0) : 0;
  tKorelPreStackElement* result = nullptr;
  if (leftSideOf(production) != kSymDirective) {
    result = skipping() ? new tKorelPreStackElement : reduceValue(production, size);
  } else {
    // See conditional.cpp: in a skipped region only the four conditionals act, without a name.
    if (skipping()) {
      reduceSkipped(production);
    } else {
      reduceDirective(production);
    }
    result = new tKorelPreStackElement;
    currentLine_ = std::max(line, 1);
  }
  if (result->line() == 0) result->setLine(static_cast<std::uint32_t>(line));
  return ifValid(result);
}

tKorelPreStackElement& KorelPreYaccClass::part(unsigned index) {
  return static_cast<tKorelPreStackElement&>(*elementFromProduction(static_cast<long>(index)));
}

int KorelPreYaccClass::lineOf(unsigned index) {
  const tKorelPreStackElement& element = part(index);
  if (element.lexeme() != nullptr) return static_cast<int>(element.lexeme()->line());
  return static_cast<int>(element.line());
}

tKorelPreStackElement* KorelPreYaccClass::takeOver(unsigned index) {
  tKorelPreStackElement& element = part(index);
  element.refInc();
  return &element;
}

void KorelPreYaccClass::reduceSkipped(unsigned production) {
  switch (production) {
    case kIfdef:
      doIfDef(nullptr, 0);
      break;
    case kIfndef:
      doIfNDef(nullptr, 0);
      break;
    case kElse:
      doElseIF(0);
      break;
    case kEndif:
      doEndIF(0);
      break;
    default:
      break;
  }
}

void KorelPreYaccClass::reduceDirective(unsigned production) {
  const int line = lineOf(0);
  switch (production) {
    case kInclude:
      doInclude(line, part(1).token());
      break;
    case kDefineValue:
      doDefine(line, part(1).token(), part(2).list());
      break;
    case kDefine:
      doDefine(line, part(1).token(), part(1).list());
      break;
    case kDefineParamsValue:
      doDefineWithParameters(line, part(2).list(), part(4).list());
      break;
    case kDefineParams:
      doDefineWithParameters(line, part(2).list(), part(3).list());
      break;
    case kCommand:
    case kXCommand:
    case kTranslate:
    case kXTranslate:
      doRule(production, line);
      break;
    case kIfdef:
    case kIfndef:
      source_.reset(line);
      source_.addDirective(line);
      if (production == kIfdef) {
        doIfDef(&part(1).token(), line);
      } else {
        doIfNDef(&part(1).token(), line);
      }
      break;
    case kElse:
      doElseIF(line);
      source_.addDirective(line);
      break;
    case kEndif:
      doEndIF(line);
      source_.addDirective(line);
      break;
    default:
      // #undef, #error and #stdout have no effect. Kept on purpose: #undef removes no rule.
      break;
  }
}

void KorelPreYaccClass::attachStatement(tKorelPreStackElement& list) {
  if (list.list().empty()) return;
  const auto line = static_cast<int>(list.list()[0].line());
  if (isSqlLine(line)) {
    sql_.addLine(list.list());
    return;
  }
  source_.entry(line).tokens().swap(list.list());
}

void KorelPreYaccClass::doInclude(int line, const tString& name) {
  const tString file(name.view());
  if (searchInclude(file)) return;
  currentLine_ = std::max(line, 1);
  auto* record = new tInclude(line, file, *this);
  includes_.add(record);
  if (includeHeader(*record)) {
    source_.entry(line).include = record;
    noteIncluded(file);
  } else {
    includes_.removeAt(includes_.indexOf(record));
  }
}

// A file is included once into the subtree of one processor, and never into itself.
// Kept on purpose: case matters for the file's own name only.
bool KorelPreYaccClass::searchInclude(const tString& name) const {
  tString folded(name);
  folded.toUpper();
  return name == requestedName_ || includedNames_.count(std::string(folded.view())) > 0;
}

void KorelPreYaccClass::noteIncluded(const tString& name) {
  tString folded(name);
  folded.toUpper();
  for (KorelPreYaccClass* above = this; above != nullptr; above = above->includer_) {
    above->includedNames_.emplace(folded.view());
  }
}

void KorelPreYaccClass::doDefine(int line, const tSpcString& name, tAutoArray<tSpcString>& value) {
  for (int i = 0; i < value.count(); ++i) unescape(value[i]);
  enterDefineDirective(line, std::make_unique<tTranslate>(&root(), name, value), directiveText());
}

void KorelPreYaccClass::doDefineWithParameters(int line, const tAutoArray<tSpcString>& parameters,
                                               tAutoArray<tSpcString>& value) {
  for (int i = 0; i < value.count(); ++i) unescape(value[i]);
  const SSLexLexeme& lexeme = *part(1).lexeme();
  tSpcString name;
  name.setText(tString::borrow({text_.data() + lexeme.absoluteOffset(), lexeme.length()}));
  name.setKind(kKindIdentifier);
  name.setAux(lexeme.token());
  enterDefineDirective(line, std::make_unique<tTranslate>(&root(), name, parameters, value),
                       directiveText());
}

bool KorelPreYaccClass::readDefine(const char* start, const char* end, int line) {
  tMarkerArena* const arena = shared_.markers.size() <= kMostMarkers ? &shared_.markers : nullptr;
  if (!defineReader_.read(start, end, line, arena)) return false;
  std::unique_ptr<tTranslate> rule = arena != nullptr ? makeDefine(defineReader_, &root(), *arena)
                                                      : makeUnread(defineReader_, &root());
  enterDefineDirective(line, std::move(rule), defineReader_.text());
  currentLine_ = line;
  return true;
}

void KorelPreYaccClass::enterDefineDirective(int line, std::unique_ptr<tTranslate> rule,
                                             std::string_view directive) {
  rule->setOrigin(openedName_, line);
  rule->keepText(text_, directive);
  if (includeMode_ != 0) {
    if (shared_.recorder != nullptr) {
      shared_.recorder->defining(rule->key(), defines()->index().countOf(rule->key()));
      shared_.recorder->ruleEntered(rule.get());
    }
    removeDynamicDefines(rule->key());
    enterDefine(std::move(rule));
    return;
  }
  tSourceLine& entry = source_.entry(line);
  rule->setLineEntry(&entry);
  dynDefines()->Add(rule.get());
  entry.pendingDefine = std::move(rule);
}

// The text of the directive being reduced. One that stands at the end of its result has been
// reduced before and is no part of it.
std::string_view KorelPreYaccClass::directiveText() {
  const std::size_t begin = part(0).lexeme()->absoluteOffset();
  const std::size_t end = begin < innerDirective_ ? innerDirective_ : consumer_->start();
  innerDirective_ = begin;
  return text_.view().substr(begin, end - begin);
}

// A pattern has to begin with a word, by which the rule is found.
void KorelPreYaccClass::doRule(unsigned production, int line) {
  tChainBuilder& pattern = *part(1).chain();
  tChainBuilder none(tChainBuilder::kResult);
  tChainBuilder& result = part(3).chain() != nullptr ? *part(3).chain() : none;
  const bool sound = pattern.isBalanced() && result.isBalanced() && pattern.head() != nullptr &&
                     pattern.head()->isIdentifier();
  if (!sound) exceptionAt(2001, line, nullptr);
  const bool command = production == kCommand || production == kXCommand;
  const bool abbreviate = production == kCommand || production == kTranslate;
  const tWordRule wordRule{.abbreviate = abbreviate, .caseSensitive = false};
  const tString key = pattern.head()->token();
  std::unique_ptr<tBaseXChg> rule;
  if (command) {
    rule = std::make_unique<tCommand>(&root(), wordRule, pattern.release(), result.release(), key);
  } else {
    rule =
        std::make_unique<tTranslate>(&root(), wordRule, pattern.release(), result.release(), key);
  }
  rule->keepText(text_, directiveText());
  addRule(std::move(rule), line);
}

// A rule lies in front of its markers.
bool KorelPreYaccClass::readRule(const char* start, const char* end, int line) {
  tMarkerArena& arena = shared_.markers;
  const tMarkerArena::tMark mark = arena.mark();
  void* const place = arena.allocate(std::max(sizeof(tCommand), sizeof(tTranslate)));
  if (!reader_.read(start, end, &arena)) {
    arena.rewind(mark);
    return false;
  }
  includeStandardHeader();
  std::unique_ptr<tBaseXChg> rule;
  if (arena.size() <= kMostMarkers) {
    rule.reset(makeRule(reader_, &root(), arena, place));
  } else {
    rule = makeUnread(reader_, &root());
    reader_.drop();
    arena.rewind(mark);
  }
  rule->keepText(text_, reader_.text());
  addRule(std::move(rule), line);
  currentLine_ = line;
  return true;
}

void KorelPreYaccClass::addRule(std::unique_ptr<tBaseXChg> rule, int line) {
  rule->setOrigin(openedName_, line);
  if (includeMode_ != 0) {
    if (shared_.recorder != nullptr) shared_.recorder->ruleEntered(rule.get());
    enterRule(std::move(rule));
    source_.addDirective(line);
  } else {
    tSourceLine& entry = source_.entry(line);
    entry.pendingRules.push_back(std::move(rule));
    entry.directive = true;
  }
}

void KorelPreYaccClass::enterRule(std::unique_ptr<tBaseXChg> rule) {
  tXChgArray& table = rule->isCmd() ? *commands() : *translates();
  table.Add(rule.release());
}

// A #define takes the place of the only one of its name.
void KorelPreYaccClass::enterDefine(std::unique_ptr<tBaseXChg> rule) {
  if (defines()->define(std::move(rule))) noteReplaced();
}

void KorelPreYaccClass::removeSingleDefine(const tString& name) {
  int first = 0;
  int last = 0;
  if (defines()->Find(name, first, last, 0) == 0 || first != last) return;
  defines()->removeRule(first);
  noteReplaced();
}

void KorelPreYaccClass::noteReplaced() {
  shared_.rewriting.file = nullptr;  // its list of rules may have the one that is gone
  shared_.rewriting.replacedAt = root().currentLine_;
}

void KorelPreYaccClass::removeDynamicDefines(const tString& name) {
  int first = 0;
  int last = 0;
  while (dynDefines()->index().countOf(name) > 0) {
    dynDefines()->Find(name, first, last, 1);
    tSourceLine* entry = dynDefines()->takeRule(last)->lineEntry();
    if (entry != nullptr) entry->pendingDefine.reset();
  }
}

}  // namespace precomp
