#include "cli/ruleuse.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

bool isWord(char c) {
  return c == '_' || std::isalnum(static_cast<unsigned char>(c)) != 0;
}

// The pattern of a directive: what stands between its word and the arrow.
std::string patternOf(const std::string& directive) {
  const std::size_t begin = directive.find(' ');
  const std::size_t arrow = directive.find("=>");
  if (begin == std::string::npos || arrow == std::string::npos || begin > arrow) return {};
  return directive.substr(begin, arrow - begin);
}

std::string wordAt(const std::string& text, std::size_t at) {
  std::size_t behind = at;
  while (behind < text.size() && isWord(text[behind])) ++behind;
  return text.substr(at, behind - at);
}

std::string markerName(const std::string& marker) {
  return wordAt(marker, std::min(marker.find_first_not_of("<(*!\"#"), marker.size()));
}

// The words that a marker is restricted to, as far as they are words.
void addChoices(const std::string& marker, std::vector<tPartUse>& parts) {
  const std::size_t colon = marker.find(':');
  std::size_t at = colon;
  while (at < marker.size()) {
    at = marker.find_first_not_of(": ,\t", at);
    if (at == std::string::npos) break;
    const std::string word = wordAt(marker, at);
    at += std::max<std::size_t>(word.size(), 1);
    if (!word.empty())
      parts.push_back({.text = word, .markers = {markerName(marker)}, .word = word});
  }
}

// Whether a word of a statement, or of what a marker took, stands for `word` of a pattern.
bool means(const std::string& written, const std::string& word, bool abbreviates) {
  constexpr std::size_t kShortest = 4;
  const bool fits = written.size() == word.size() ||
                    (abbreviates && written.size() >= kShortest && written.size() < word.size());
  return fits && strncasecmp(written.c_str(), word.c_str(), written.size()) == 0;
}

bool holds(const std::string& statement, const std::string& word, bool abbreviates) {
  for (std::size_t i = 0; i < statement.size(); ++i) {
    const std::string written = wordAt(statement, i);
    if (written.empty()) continue;
    if (means(written, word, abbreviates)) return true;
    i += written.size() - 1;
  }
  return false;
}

void count(const krpre_step& step, bool abbreviates, tPartUse& part) {
  bool met = false;
  bool taken = part.markers.empty() && holds(step.statement, part.word, abbreviates);
  for (int i = 0; i < step.captureCount; ++i) {
    const krpre_capture& capture = step.captures[i];
    if (capture.count == 0 || part.markers.count(capture.marker) == 0) continue;
    met = true;
    const auto isMeant = [&](const char* text) { return means(text, part.word, abbreviates); };
    taken = taken || part.isGroup() ||
            std::any_of(capture.texts, capture.texts + capture.count, isMeant);
  }
  if (met) ++part.met;
  if (taken) ++part.taken;
}

}  // namespace

bool tUsedRule::isFlag() const {
  if (rule.kind != KRPRE_DEFINE) return false;
  const std::size_t name = rule.directive.find(rule.key);
  return name == std::string::npos || name + rule.key.size() == rule.directive.size();
}

std::vector<tPartUse> partsOf(const std::string& directive) {
  const std::string pattern = patternOf(directive);
  std::vector<tPartUse> parts;
  std::vector<std::pair<std::size_t, std::size_t>>
      open;  // of groups: their places, where they begin
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '\\') {
      ++i;
    } else if (pattern[i] == '[') {
      open.emplace_back(parts.size(), i);
      parts.emplace_back();
    } else if (pattern[i] == ']' && !open.empty()) {
      const auto [group, begin] = open.back();
      open.pop_back();
      parts[group].text = pattern.substr(begin, i + 1 - begin);
    } else if (pattern[i] == '<') {
      const std::string marker = pattern.substr(i, pattern.find('>', i) - i);
      for (const auto& [group, begin] : open) parts[group].markers.insert(markerName(marker));
      addChoices(marker, parts);
      i += marker.size();
    } else if (const std::string word = wordAt(pattern, i); !word.empty()) {
      for (const auto& [group, begin] : open) {
        if (parts[group].word.empty()) parts[group].word = word;
      }
      i += word.size() - 1;
    }
  }
  std::erase_if(parts,
                [](const tPartUse& part) { return part.markers.empty() && part.word.empty(); });
  return parts;
}

bool tRuleUse::add(const tCommandLine& line, const std::string& source,
                   const std::string& shippedHeaders, std::string& messages) {
  if (!added_.insert(source).second) return true;
  tLibraryCall call(line, source, shippedHeaders);
  krpre_host host{};
  host.size = sizeof host;
  host.context = this;
  host.flags = KRPRE_NO_OUTPUT;
  std::string told;
  messages_ = &told;
  host.message = [](void* me, const char* text, std::size_t length) {
    auto& use = *static_cast<tRuleUse*>(me);
    use.guard_.run([&] { use.messages_->append(text, length); });
  };
  host.rule = [](void* me, const krpre_rule* rule) {
    auto& use = *static_cast<tRuleUse*>(me);
    use.guard_.run([&] { use.ruleOf(*rule); });
  };
  host.step = [](void* me, const krpre_step* step) {
    auto& use = *static_cast<tRuleUse*>(me);
    use.guard_.run([&] { use.meet(*step); });
  };
  call.prepare(host);
  const int result = krpre_run(call.count(), call.vector(), &host);
  guard_.check();
  if (result != KRPRE_OK) messages += told;
  return result == KRPRE_OK;
}

// Null for a rule that is not counted.
tUsedRule* tRuleUse::ruleOf(const krpre_rule& rule) {
  const bool shipped = std::strncmp(rule.file, shipped_.c_str(), shipped_.size()) == 0;
  if (*rule.file == '\0' || shipped) return nullptr;
  const auto [found, first] = rules_.try_emplace({rule.file, rule.line, rule.key});
  if (first) {
    found->second.rule = infoOf(rule);
    found->second.parts = partsOf(found->second.rule.directive);
  }
  return &found->second;
}

void tRuleUse::meet(const krpre_step& step) {
  if (step.kind != KRPRE_STEP_MATCHED && step.kind != KRPRE_STEP_APPLIED) return;
  tUsedRule* const used = ruleOf(*step.rule);
  if (used == nullptr) return;
  if (step.kind == KRPRE_STEP_APPLIED) {
    ++used->applied;
    return;
  }
  for (tPartUse& part : used->parts) count(step, used->rule.abbreviates, part);
}
