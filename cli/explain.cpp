#include "cli/explain.h"

#include <algorithm>
#include <string_view>

#include "cli/sourcequote.h"

namespace {

constexpr std::size_t kLongestText = 2000;  // bytes of a statement or of what a marker took
constexpr std::size_t kFirstShown = 20;     // of many rewrites
constexpr std::size_t kLastShown = 3;
constexpr std::size_t kTrialsShown = 8;  // rules that did not apply

std::string clipped(std::string_view text) {
  if (text.size() <= kLongestText) return std::string(text);
  return std::string(text.substr(0, kLongestText)) + "... (" + std::to_string(text.size()) +
         " bytes)";
}

std::string placeOf(const tRuleInfo& rule) {
  return rule.file.empty() ? "command line"
                           : printable(rule.file) + ":" + std::to_string(rule.line);
}

std::string quoted(const std::string& text) {
  return "'" + clipped(text) + "'";
}

// `after`, with what differs from `before` highlighted.
std::string changed(const std::string& before, const std::string& after, const tPaint& paint) {
  if (!paint.isOn() || after.size() > kLongestText) return clipped(after);
  const std::size_t shorter = std::min(before.size(), after.size());
  std::size_t front = 0;
  while (front < shorter && before[front] == after[front]) ++front;
  std::size_t back = 0;
  while (back < shorter - front &&
         before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
    ++back;
  }
  return after.substr(0, front) +
         paint(tPaint::kGreen, after.substr(front, after.size() - front - back)) +
         after.substr(after.size() - back);
}

// The rule as its header writes it, or could.
std::string shown(const tRuleInfo& rule) {
  constexpr std::string_view kArrow = "  => ";
  if (!rule.directive.empty()) return rule.directive;
  std::string listing = rule.listing;
  const std::size_t arrow = listing.find(kArrow);
  if (arrow != std::string::npos) listing.replace(arrow, kArrow.size(), " ");
  return "#define " + listing;
}

std::string ruleLine(const tRuleInfo& rule, const tPaint& paint) {
  return paint(tPaint::kYellow, clipped(shown(rule)));
}

std::string whyLost(const tTrialInfo& trial, int winner) {
  if (trial.score > 0 && trial.score == winner) {
    return "matches equally well; the later rule wins";
  }
  if (trial.score > 0) {
    return "matches with a score of " + std::to_string(trial.score) + " against " +
           std::to_string(winner);
  }
  if (trial.failedMarker.empty() && trial.failedToken.empty()) return "does not match";
  if (trial.failedMarker.empty()) {
    return "ends before " + quoted(trial.failedToken);
  }
  const std::string met =
      trial.failedToken.empty() ? "the end of the statement" : quoted(trial.failedToken);
  return "fails at " + trial.failedMarker + ": found " + met;
}

std::string countOf(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void appendTrials(std::string& text, const std::vector<tTrialInfo>& trials, int winner,
                  const tPaint& paint) {
  // The rule that came closest in full, of the others where they failed, of very many the number.
  std::size_t shownTrials = 0;
  for (const tTrialInfo& trial : trials) {
    if (shownTrials++ == 0) {
      text += "      " + clipped(shown(*trial.rule)) + "\n";
    } else if (shownTrials > kTrialsShown) {
      text += "        " +
              paint(tPaint::kDim, "... " + countOf(trials.size() - kTrialsShown, "other rule")) +
              "\n";
      return;
    }
    text += "        " + paint(tPaint::kDim, placeOf(*trial.rule)) + "  " +
            paint(trial.score > 0 ? tPaint::kGreen : tPaint::kRed, whyLost(trial, winner)) + "\n";
  }
}

void appendMarkers(std::string& text, const std::vector<tMarkerInfo>& markers,
                   const tPaint& paint) {
  std::size_t width = 0;
  for (const tMarkerInfo& marker : markers) width = std::max(width, marker.name.size());
  for (const tMarkerInfo& marker : markers) {
    std::string taken;
    for (const std::string& one : marker.texts) {
      taken += (taken.empty() ? "" : paint(tPaint::kDim, " | ")) + clipped(one);
    }
    if (marker.texts.empty()) taken = paint(tPaint::kDim, "(nothing)");
    text += "      " + paint(tPaint::kCyan, marker.name) +
            std::string(width - marker.name.size() + 2, ' ') + taken + "\n";
  }
}

void appendRewrite(std::string& text, const tRewriteInfo& rewrite, std::size_t number,
                   const std::string& before, const tPaint& paint) {
  const std::string label = std::to_string(number) + ".";
  text += "\n" + paint(tPaint::kBold, label) +
          std::string(label.size() < 3 ? 4 - label.size() : 1, ' ') +
          ruleLine(rewrite.rule, paint) + "\n";
  text += "      " + paint(tPaint::kDim, placeOf(rewrite.rule)) + "\n";
  appendMarkers(text, rewrite.markers, paint);
  text += "    " + changed(before, rewrite.after, paint) + "\n";
  if (rewrite.lost.empty()) return;
  text += "    " + paint(tPaint::kDim, "not taken:") + "\n";
  appendTrials(text, rewrite.lost, rewrite.score, paint);
}

void appendOutcome(std::string& text, const tRuleStory& story, const tPaint& paint) {
  const std::size_t count = story.rewrites().size();
  const std::string after = count == 0 ? "" : " after " + countOf(count, "rewrite");
  if (!story.finished()) {
    text += "\n" + paint(tPaint::kRed, "An error ended the rewriting" + after + ".") + "\n";
    return;
  }
  text += "\n" +
          paint(tPaint::kBold, count == 0 ? "No rule applies." : "Final form" + after + ".") + "\n";
  if (story.inVain().empty()) return;
  text += paint(tPaint::kDim, "  tried:") + "\n";
  appendTrials(text, story.inVain(), 0, paint);
}

}  // namespace

std::string explainedText(const tRuleStory& story, const std::string& file, const tPaint& paint) {
  std::string text =
      paint(tPaint::kBold, printable(file) + ":" + std::to_string(story.firstLine()));
  if (story.lastLine() > story.firstLine()) {
    text += paint(tPaint::kDim, " to line " + std::to_string(story.lastLine()));
  }
  text += "\n    " + clipped(story.before()) + "\n";

  const std::vector<tRewriteInfo>& rewrites = story.rewrites();
  const bool many = rewrites.size() > kFirstShown + kLastShown;
  for (std::size_t i = 0; i < rewrites.size(); ++i) {
    if (many && i == kFirstShown) {
      i = rewrites.size() - kLastShown;
      text += "\n    " +
              paint(tPaint::kDim, "... " + countOf(i - kFirstShown, "rewrite") + " ...") + "\n";
    }
    appendRewrite(text, rewrites[i], i + 1, i == 0 ? story.before() : rewrites[i - 1].after, paint);
  }
  appendOutcome(text, story, paint);
  return text;
}

std::string listedText(const std::vector<tRuleInfo>& rules, bool asListed, const tPaint& paint) {
  std::string text;
  for (const tRuleInfo& rule : rules) {
    text += paint(tPaint::kDim, placeOf(rule) + ":") + " ";
    text += asListed ? paint(tPaint::kYellow, kindName(rule)) + ": " + rule.listing
                     : paint(tPaint::kYellow, printable(shown(rule)));
    text += '\n';
  }
  return text;
}
