#include <nlohmann/json.hpp>

#include "cli/explain.h"

namespace {

using tJson = nlohmann::ordered_json;

tJson jsonOf(const tRuleInfo& rule) {
  tJson json = {{"kind", kindName(rule)}, {"key", rule.key}, {"listing", rule.listing}};
  json["directive"] = rule.directive.empty() ? tJson() : tJson(rule.directive);
  json["file"] = rule.file.empty() ? tJson() : tJson(rule.file);
  json["line"] = rule.file.empty() ? tJson() : tJson(rule.line);
  json["abbreviates"] = rule.abbreviates;
  return json;
}

tJson jsonOf(const tTrialInfo& trial) {
  tJson json = {{"rule", jsonOf(*trial.rule)}, {"token", trial.token}, {"score", trial.score}};
  if (trial.score == 0) {
    json["failedMarker"] = trial.failedMarker;
    json["failedToken"] = trial.failedToken;
  }
  return json;
}

tJson jsonOf(const std::vector<tTrialInfo>& trials) {
  tJson json = tJson::array();
  for (const tTrialInfo& trial : trials) json.push_back(jsonOf(trial));
  return json;
}

tJson jsonOf(const tRewriteInfo& rewrite) {
  tJson markers = tJson::array();
  for (const tMarkerInfo& marker : rewrite.markers) {
    markers.push_back({{"name", marker.name}, {"texts", marker.texts}});
  }
  return {{"rule", jsonOf(rewrite.rule)}, {"token", rewrite.token},       {"score", rewrite.score},
          {"markers", markers},           {"lost", jsonOf(rewrite.lost)}, {"after", rewrite.after}};
}

std::string printed(const tJson& json) {
  constexpr int kIndent = 2;
  return json.dump(kIndent, ' ', false, tJson::error_handler_t::replace) + "\n";
}

}  // namespace

std::string explainedJson(const tRuleStory& story, const std::string& file) {
  tJson rewrites = tJson::array();
  for (const tRewriteInfo& rewrite : story.rewrites()) rewrites.push_back(jsonOf(rewrite));
  return printed({{"file", file},
                  {"line", story.firstLine()},
                  {"lastLine", story.lastLine()},
                  {"before", story.before()},
                  {"rewrites", rewrites},
                  {"inVain", jsonOf(story.inVain())},
                  {"final", story.final()},
                  {"finished", story.finished()}});
}

std::string listedJson(const std::vector<tRuleInfo>& rules) {
  tJson list = tJson::array();
  for (const tRuleInfo& rule : rules) list.push_back(jsonOf(rule));
  return printed(list);
}
