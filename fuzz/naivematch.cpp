#include "fuzz/naivematch.h"

#include <cctype>
#include <sstream>

namespace {

using tTokens = std::vector<std::string>;

const std::string& tokenAt(const tTokens& tokens, int index) {
  return tokens[static_cast<std::size_t>(index)];
}

char folded(char c) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

bool sameWord(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (folded(a[i]) != folded(b[i])) return false;
  }
  return true;
}

bool isName(const std::string& token) {
  return std::isalpha(static_cast<unsigned char>(token[0])) != 0;
}

// The index of the first token that cannot continue a list of expressions, or `last` + 1. The only
// operator is "+", before an operand or between two. When the end comes too early, that is told by
// the parenthesis that is put there; it is found next to the last token, if that is one character
// long, and counts as that token.
int firstWrongToken(const tTokens& tokens, int first, int last) {
  int depth = 0;
  for (int i = first; i <= last; ++i) {
    if (tokenAt(tokens, i) == "(") ++depth;
    if (tokenAt(tokens, i) == ")" && --depth < 0) return i;
  }
  std::vector<bool> gaps = {true};  // of the open parentheses, where elements may be omitted
  bool operand = false;             // the last token ends an operand
  for (int i = first; i <= last + 1; ++i) {
    const std::string token = i <= last ? tokenAt(tokens, i) : ")";
    const std::string before = i > first ? tokenAt(tokens, i - 1) : "(";
    bool wrong = false;
    if (isName(token)) {
      wrong = operand;
      operand = true;
    } else if (token == "(") {
      wrong = operand && !isName(before);
      gaps.push_back(operand);
      operand = false;
    } else if (token == ")") {
      wrong = !operand && !(gaps.back() && (before == "," || before == "("));
      gaps.pop_back();
      operand = true;
    } else if (token == ",") {
      wrong = !operand && !(gaps.back() && (before == "," || before == "("));
      operand = false;
    } else if (token == "+") {
      operand = false;
    } else {
      wrong = true;
    }
    if (wrong) return i > last && tokenAt(tokens, last).size() == 1 ? last : i;
  }
  return last + 1;
}

class tMatch {
 public:
  tMatch(tNaivePattern& pattern, const tTokens& tokens)
      : pattern_(pattern), tokens_(tokens), count_(static_cast<int>(tokens.size())) {}

  int run(int& at) {
    at_ = at;
    int score = walk(pattern_.chain, nullptr, nullptr);
    if (score > 0 && pattern_.command && at_ < count_ && tokenAt(tokens_, at_) != ";") score = 0;
    at = at_;
    return score;
  }

 private:
  bool sameKeyword(const std::string& keyword, const std::string& word) const {
    if (sameWord(keyword, word)) return true;
    return pattern_.abbreviate && word.size() >= 4 && word.size() < keyword.size() &&
           sameWord(keyword.substr(0, word.size()), word);
  }

  // The alternative that stands at at_; `end` is the index of its last word.
  int alternativeHere(const tNaiveMarker& marker, int& end) const {
    for (std::size_t a = 0; a < marker.alternatives.size(); ++a) {
      const auto& words = marker.alternatives[a];
      std::size_t i = 0;
      while (i < words.size() && at_ + static_cast<int>(i) < count_ &&
             sameKeyword(words[i], tokenAt(tokens_, at_ + static_cast<int>(i)))) {
        ++i;
      }
      if (i < words.size()) continue;
      end = at_ + static_cast<int>(words.size()) - 1;
      return static_cast<int>(a);
    }
    return -1;
  }

  bool couldStart(const tNaiveMarker* marker) {
    if (marker == nullptr) return false;
    int end = 0;
    switch (marker->type) {
      case 'w':
        return sameKeyword(marker->word, tokenAt(tokens_, at_));
      case 's':
        return alternativeHere(*marker, end) >= 0;
      case '*':
        at_ = count_ - 1;  // asking takes the rest
        return true;
      case 'o':
        return true;
      default:
        return false;
    }
  }

  bool anyGroupCouldStart(const tNaiveMarker& marker) {
    for (const tNaiveChain& group : marker.groups) {
      if (couldStart(&group[0])) return true;
    }
    return false;
  }

  // `after` is what follows `marker` in its chain.
  bool stopsAt(const tNaiveMarker* marker, const tNaiveMarker* after) {
    return marker != nullptr && (anyGroupCouldStart(*marker) || couldStart(after));
  }

  // On success at_ is the last token taken.
  bool take(tNaiveMarker& marker, const tNaiveMarker* after, const tNaiveMarker* parent,
            const tNaiveMarker* afterParent, bool mayBeEmpty) {
    int end = 0;
    switch (marker.type) {
      case 'o':
        return true;
      case 'w':
        return sameKeyword(marker.word, tokenAt(tokens_, at_));
      case 's':
        marker.last = alternativeHere(marker, end);
        if (marker.last >= 0) at_ = end;
        return marker.last >= 0;
      case '*':
        marker.first = at_;
        marker.last = at_ = count_ - 1;
        return true;
      case 'e':
        if (at_ + 2 < count_ && isName(tokenAt(tokens_, at_)) && tokenAt(tokens_, at_ + 1) == "." &&
            isName(tokenAt(tokens_, at_ + 2))) {
          marker.first = at_;
          marker.last = at_ = at_ + 2;
          return true;
        }
        break;
      default:
        break;
    }
    return takeExpression(marker, after, parent, afterParent, mayBeEmpty);
  }

  bool takeExpression(tNaiveMarker& marker, const tNaiveMarker* after, const tNaiveMarker* parent,
                      const tNaiveMarker* afterParent, bool mayBeEmpty) {
    const bool list = marker.type == 'l';
    const int first = at_;
    marker.first = first;
    if (first == count_ - 1) {
      marker.last = first;
      if (!stopsAt(parent, afterParent) && !stopsAt(&marker, after)) return true;
      marker.first = -1;
      ++at_;
      return false;
    }
    int depth = 0;
    for (; at_ < count_; ++at_) {
      const std::string& token = tokenAt(tokens_, at_);
      if (token == ";") return check(marker, at_ - 1);
      const bool opensNext = at_ + 1 < count_ && tokenAt(tokens_, at_ + 1) == "(";
      if (sameWord(token, "LEFT") && opensNext) continue;
      if (list && token == ",") continue;
      bool outside = depth == 0;
      if (token == "(") {
        outside = stopsAt(parent, afterParent) || stopsAt(&marker, after);
        if (!outside) ++depth;
      }
      if (!outside) {
        if (token == ")") --depth;
        continue;
      }
      bool ends = token == "," && !list;
      if (!ends) ends = stopsAt(parent, afterParent);
      if (!ends && !(parent == nullptr && at_ == first)) ends = stopsAt(&marker, after);
      if (!ends) continue;
      if (at_ <= first) {
        if (!mayBeEmpty) {
          marker.first = -1;
          return false;
        }
        marker.last = first - 1;
        --at_;
        return true;
      }
      if (at_ - 1 > first) return check(marker, at_ - 1);
      marker.last = at_ = first;
      return true;
    }
    const bool endsPattern = parent == nullptr && after == nullptr && marker.groups.empty();
    if (!endsPattern) return check(marker, count_ - 1);
    marker.last = at_ = count_ - 1;
    return true;
  }

  bool check(tNaiveMarker& marker, int last) {
    last = firstWrongToken(tokens_, marker.first, last) - 1;
    at_ = last;
    marker.last = last;
    if (last >= marker.first) return true;
    marker.first = -1;
    return false;
  }

  int walk(tNaiveChain& chain, const tNaiveMarker* parent, const tNaiveMarker* afterParent) {
    int score = 0;
    for (std::size_t i = 0; i < chain.size(); ++i) {
      tNaiveMarker& marker = chain[i];
      const tNaiveMarker* after = i + 1 < chain.size() ? &chain[i + 1] : nullptr;
      if (at_ >= count_) return 0;
      if (i > 0 && !marker.groups.empty()) parent = afterParent = nullptr;
      const bool mayBeEmpty = &chain != &pattern_.chain && i == 1;
      if (!take(marker, after, parent, afterParent, mayBeEmpty)) return 0;
      marker.matched = true;
      ++score;
      if (marker.type != 'o') ++at_;
      score += walkGroups(marker, after);
    }
    return score;
  }

  int walkGroups(tNaiveMarker& marker, const tNaiveMarker* after) {
    int total = 0;
    for (bool again = true; again;) {
      again = false;
      for (tNaiveChain& group : marker.groups) {
        if (at_ >= count_) break;
        const int begin = at_;
        const tNaiveChain before = group;
        const int score = walk(group, &marker, after);
        if (score > 0 && at_ != begin) {
          for (tNaiveMarker& member : group) {
            member.records.emplace_back(member.first, member.last);
            member.matched = false;
            member.first = -1;
          }
          total += score;
          again = true;
          break;
        }
        group = before;
        at_ = begin;
        if (score > 0) return total;
      }
    }
    return total;
  }

  tNaivePattern& pattern_;
  const tTokens& tokens_;
  int count_;
  int at_ = 0;
};

tNaiveChain readChain(std::istringstream& text) {
  tNaiveChain chain;
  for (std::string piece; text >> piece;) {
    if (piece == "]") return chain;
    tNaiveMarker marker;
    if (piece == "[") {
      if (chain.empty()) {
        marker.type = 'o';
        chain.push_back(marker);
      }
      chain.back().groups.push_back(readChain(text));
      continue;
    }
    if (piece[0] == '<') {
      marker.type = piece[1];
      if (marker.type == 's') marker.alternatives = {{"A"}, {"B", "C"}};
    } else {
      marker.word = piece;
    }
    chain.push_back(marker);
  }
  return chain;
}

void forgetMatch(tNaiveChain& chain) {
  for (tNaiveMarker& marker : chain) {
    marker.matched = false;
    marker.first = marker.last = -1;
    marker.records.clear();
    for (tNaiveChain& group : marker.groups) forgetMatch(group);
  }
}

}  // namespace

tNaivePattern naivePattern(const std::string& text, bool command, bool abbreviate) {
  std::istringstream stream(text);
  return {readChain(stream), command, abbreviate};
}

int naiveMatch(tNaivePattern& pattern, const std::vector<std::string>& tokens, int& at) {
  forgetMatch(pattern.chain);
  return tMatch(pattern, tokens).run(at);
}

std::string naiveCaptures(const tNaiveChain& chain) {
  std::ostringstream text;
  for (const tNaiveMarker& marker : chain) {
    if (marker.type != 'w' && marker.type != 'o') {
      text << marker.type;
      if (marker.matched) text << '(' << marker.first << ',' << marker.last << ')';
      for (const auto& [first, last] : marker.records) text << '{' << first << ',' << last << '}';
      text << ' ';
    }
    for (const tNaiveChain& group : marker.groups) text << naiveCaptures(group);
  }
  return text.str();
}
