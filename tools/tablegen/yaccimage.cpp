#include "tools/tablegen/yaccimage.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "ssvp40xpf/sstableformat.h"
#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

using namespace sstable;

constexpr std::string_view kEndOfInput = "$end";

/// Walks the report; each function is entered at the start of its element and returns at its end.
class tReportReader {
 public:
  tReportReader(const std::string& text, const std::string& file)
      : xml_(QByteArray::fromStdString(text)) {
    report_.file = file;
  }

  tBisonReport read();

 private:
  [[noreturn]] void fail(const std::string& text) {
    throw tGenError(report_.file, static_cast<long>(xml_.lineNumber()), text);
  }

  bool at(const char* element) const { return xml_.name() == QLatin1String(element); }
  std::string attribute(const char* name);
  std::uint32_t number(const char* name);

  void readGrammar();
  void readProduction();
  void readTerminals();
  void readState();
  void readTransition(tBisonReport::tState& state);
  void readReduction(tBisonReport::tState& state);

  QXmlStreamReader xml_;
  tBisonReport report_;
};

tBisonReport tReportReader::read() {
  if (!xml_.readNextStartElement() || !at("bison-xml-report")) fail("not a bison report");
  while (xml_.readNextStartElement()) {
    if (at("grammar")) {
      readGrammar();
    } else if (at("automaton")) {
      while (xml_.readNextStartElement()) readState();
    } else {
      xml_.skipCurrentElement();
    }
  }
  if (xml_.hasError()) fail(xml_.errorString().toStdString());
  if (report_.productions.empty() || report_.states.empty()) fail("the report has no automaton");
  return std::move(report_);
}

std::string tReportReader::attribute(const char* name) {
  const QXmlStreamAttributes attributes = xml_.attributes();
  if (!attributes.hasAttribute(QLatin1String(name))) {
    fail(std::string("attribute \"") + name + "\" is missing");
  }
  return attributes.value(QLatin1String(name)).toString().toStdString();
}

std::uint32_t tReportReader::number(const char* name) {
  bool good = false;
  const std::uint32_t value = QString::fromStdString(attribute(name)).toUInt(&good);
  if (!good) fail(std::string("attribute \"") + name + "\" is no number");
  return value;
}

void tReportReader::readGrammar() {
  while (xml_.readNextStartElement()) {
    if (at("rules")) {
      while (xml_.readNextStartElement()) readProduction();
    } else if (at("terminals")) {
      readTerminals();
    } else {
      xml_.skipCurrentElement();
    }
  }
}

void tReportReader::readProduction() {
  if (number("number") != report_.productions.size()) fail("productions are out of order");
  tBisonReport::tProduction production;
  while (xml_.readNextStartElement()) {
    if (at("lhs")) {
      production.left = xml_.readElementText().toStdString();
    } else if (at("rhs")) {
      while (xml_.readNextStartElement()) {
        if (at("symbol")) {
          production.right.push_back(xml_.readElementText().toStdString());
        } else {
          xml_.skipCurrentElement();  // marks an empty right side
        }
      }
    } else {
      xml_.skipCurrentElement();
    }
  }
  report_.productions.push_back(std::move(production));
}

void tReportReader::readTerminals() {
  while (xml_.readNextStartElement()) {
    const std::string name = attribute("name");
    report_.terminals[name] = name == kEndOfInput ? kTokenEof : number("token-number");
    xml_.skipCurrentElement();
  }
}

void tReportReader::readState() {
  if (number("number") != report_.states.size()) fail("states are out of order");
  tBisonReport::tState state;
  state.line = static_cast<long>(xml_.lineNumber());
  // Transitions and reductions are nested a few elements deep in the state; ignore the nesting.
  for (int depth = 1; depth > 0 && !xml_.atEnd();) {
    const QXmlStreamReader::TokenType token = xml_.readNext();
    if (token == QXmlStreamReader::EndElement) --depth;
    if (token != QXmlStreamReader::StartElement) continue;
    ++depth;
    if (at("transition")) readTransition(state);
    if (at("reduction")) readReduction(state);
  }
  report_.states.push_back(std::move(state));
}

void tReportReader::readTransition(tBisonReport::tState& state) {
  auto& list = attribute("type") == "shift" ? state.shifts : state.gotos;
  list.push_back({attribute("symbol"), number("state")});
}

void tReportReader::readReduction(tBisonReport::tState& state) {
  state.reductions.push_back(
      {attribute("symbol"), attribute("rule"), attribute("enabled") == "true"});
}

/// One state's row.
class tRow {
 public:
  tRow(const tBisonReport& report, const tBisonReport::tState& state,
       const std::map<std::string, std::uint32_t>& nonterminals);

  void append(tImage& image) const;

 private:
  using tPair = std::pair<std::uint32_t, std::uint32_t>;  // symbol, word

  static void appendPairs(tImage& image, const std::vector<tPair>& pairs);
  std::uint32_t reduction(const tBisonReport::tReduction& reduction) const;

  const tBisonReport& report_;
  const tBisonReport::tState& state_;
  std::vector<tPair> actions_;
  std::vector<tPair> gotos_;
};

tRow::tRow(const tBisonReport& report, const tBisonReport::tState& state,
           const std::map<std::string, std::uint32_t>& nonterminals)
    : report_(report), state_(state) {
  for (const auto& shift : state.shifts) {
    const std::uint32_t token = report.terminals.at(shift.symbol);
    actions_.emplace_back(token, token == kTokenEof ? kActionAccept : kActionShift | shift.state);
  }
  for (const auto& candidate : state.reductions) {
    // After the end of input; accepted one state earlier.
    if (!candidate.enabled || candidate.production == "accept") continue;
    const std::uint32_t word = reduction(candidate);
    actions_.emplace_back(report.terminals.at(candidate.symbol), word);
  }
  for (const auto& move : state.gotos) {
    gotos_.emplace_back(nonterminals.at(move.symbol), move.state);
  }
  std::sort(actions_.begin(), actions_.end());
  std::sort(gotos_.begin(), gotos_.end());
}

std::uint32_t tRow::reduction(const tBisonReport::tReduction& reduction) const {
  if (report_.terminals.find(reduction.symbol) == report_.terminals.end()) {
    throw tGenError(report_.file, state_.line,
                    "a reduction on " + reduction.symbol +
                        "; the grammar needs %define lr.default-reduction accepting");
  }
  return kActionReduce | static_cast<std::uint32_t>(std::stoul(reduction.production));
}

void tRow::append(tImage& image) const {
  image.push_back(0);  // no flags
  image.push_back(static_cast<std::uint32_t>(gotos_.size()));
  image.push_back(static_cast<std::uint32_t>(actions_.size()));
  appendPairs(image, actions_);
  appendPairs(image, gotos_);
}

void tRow::appendPairs(tImage& image, const std::vector<tPair>& pairs) {
  for (const auto& [symbol, word] : pairs) image.insert(image.end(), {word, symbol});
}

}  // namespace

tBisonReport readBisonReport(const std::string& text, const std::string& file) {
  return tReportReader(text, file).read();
}

std::vector<tShiftConflict> shiftConflicts(const tBisonReport& report) {
  std::vector<tShiftConflict> conflicts;
  for (std::size_t number = 0; number < report.states.size(); ++number) {
    const tBisonReport::tState& state = report.states[number];
    std::set<std::string> shifts;
    for (const auto& shift : state.shifts) shifts.insert(shift.symbol);
    std::map<std::string, std::string> reducers;  // token -> production
    for (const auto& reduction : state.reductions) {
      const auto [other, isFirst] = reducers.emplace(reduction.symbol, reduction.production);
      if (isFirst && shifts.count(reduction.symbol) > 0) {
        conflicts.push_back({reduction.symbol, reduction.production});
      }
      if (isFirst || other->second == reduction.production) continue;
      throw tGenError(report.file, state.line,
                      "reduce/reduce conflict in state " + std::to_string(number) + " on " +
                          reduction.symbol + " between productions " + other->second + " and " +
                          reduction.production);
    }
  }
  return conflicts;
}

std::map<std::string, std::uint32_t> numberNonterminals(const tBisonReport& report) {
  std::map<std::string, std::uint32_t> numbers;
  const auto meet = [&](const std::string& symbol) {
    if (report.terminals.count(symbol) > 0) return;
    numbers.emplace(symbol, kFirstNonterminal + static_cast<std::uint32_t>(numbers.size()));
  };
  for (std::size_t number = 1; number < report.productions.size(); ++number) {
    meet(report.productions[number].left);
    for (const std::string& symbol : report.productions[number].right) meet(symbol);
  }
  return numbers;
}

tImage buildYaccImage(const tBisonReport& report) {
  const std::map<std::string, std::uint32_t> nonterminals = numberNonterminals(report);
  const std::size_t states = report.states.size();
  if (report.productions.size() > 0xFFFF) {
    throw tGenError(report.file, 0, "more productions than the image can count");
  }

  tImage image(kYaccRowIndex + states, 0);
  const auto here = [&image] { return static_cast<std::uint32_t>(image.size() * kWordSize); };
  image[kYaccHeaderMagic] = kYaccMagic;
  image[kYaccCounts] = static_cast<std::uint32_t>(report.productions.size());
  image[kYaccStateCount] = static_cast<std::uint32_t>(states);
  image[kYaccFirstRow] = here();
  for (std::size_t state = 0; state < states; ++state) {
    image[kYaccRowIndex + state] = here();
    tRow(report, report.states[state], nonterminals).append(image);
  }
  image[kYaccProductions] = here();
  for (std::size_t number = 0; number < report.productions.size(); ++number) {
    const tBisonReport::tProduction& production = report.productions[number];
    image.push_back(static_cast<std::uint32_t>(production.right.size()));
    image.push_back(number == 0 ? 0 : nonterminals.at(production.left));
  }
  return image;
}

}  // namespace tablegen
