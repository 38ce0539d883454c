#include "cli/ruleuse.h"

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

// The name in the marker that begins at `at`; `at` moves to its last byte.
std::string markerAt(const std::string& pattern, std::size_t& at) {
  const std::size_t end = std::min(pattern.find('>', at), pattern.size() - 1);
  std::size_t name = at;
  while (name < end && !isWord(pattern[name])) ++name;
  std::size_t behind = name;
  while (behind < end && isWord(pattern[behind])) ++behind;
  at = end;
  return pattern.substr(name, behind - name);
}

}  // namespace

bool tUsedRule::isFlag() const {
  if (rule.kind != KRPRE_DEFINE) return false;
  const std::size_t name = rule.directive.find(rule.key);
  return name == std::string::npos || name + rule.key.size() == rule.directive.size();
}

std::vector<tGroupUse> groupsOf(const std::string& directive) {
  const std::string pattern = patternOf(directive);
  std::vector<tGroupUse> groups;
  std::vector<std::pair<std::size_t, std::size_t>>
      open;  // of groups: their places, where they begin
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '\\') {
      ++i;
    } else if (pattern[i] == '[') {
      open.emplace_back(groups.size(), i);
      groups.emplace_back();
    } else if (pattern[i] == ']' && !open.empty()) {
      const auto [group, begin] = open.back();
      open.pop_back();
      groups[group].text = pattern.substr(begin, i + 1 - begin);
    } else if (pattern[i] == '<') {
      const std::string name = markerAt(pattern, i);
      for (const auto& [group, begin] : open) groups[group].markers.insert(name);
    }
  }
  std::erase_if(groups, [](const tGroupUse& group) { return group.markers.empty(); });
  return groups;
}

bool tRuleUse::add(const tCommandLine& line, const std::string& source,
                   const std::string& shippedHeaders, std::string& messages) {
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
    found->second.groups = groupsOf(found->second.rule.directive);
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
  for (tGroupUse& group : used->groups) {
    const bool taken = std::any_of(
        step.captures, step.captures + step.captureCount, [&](const krpre_capture& capture) {
          return capture.count > 0 && group.markers.count(capture.marker) > 0;
        });
    if (taken) ++group.taken;
  }
}
