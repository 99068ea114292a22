#include "processmodel.hpp"

#include "linecheck.hpp"
#include "modeltime.hpp"
#include "words.hpp"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <optional>

using SV::String;

namespace modeler {
namespace {

struct KindWord {
  Word word;
  NodeKind kind;
};
constexpr KindWord kKinds[] = {{WORD_START, NodeKind::Start},
                               {WORD_ACTIVITY, NodeKind::Activity},
                               {WORD_DECISION, NodeKind::Decision},
                               {WORD_END, NodeKind::End}};

bool is(String const & token, Word word) { return Kiv_MultiLangEquals(token, word, nullptr); }

std::optional<NodeKind> kindOf(String const & token) {
  for (KindWord const & row : kKinds)
    if (is(token, row.word))
      return row.kind;
  return std::nullopt;
}

/// Without the backslashes before quotation marks.
String unquoted(String const & text) { return Kiv_Unmask(text.c_str(), '\\'); }

/// Whether it consists of digits; a plus sign may precede them.
bool isCount(String const & token) {
  char const * const digits = token.c_str() + (token.c_str()[0] == '+' ? 1 : 0);
  return digits[0] != '\0' && digits[std::strspn(digits, "0123456789")] == '\0';
}

/// While it lives, letters are those of the code page: the parser asks the runtime what belongs to a word.
class LettersOfCodePage {
public:
  LettersOfCodePage() : former_(std::setlocale(LC_CTYPE, nullptr)) { std::setlocale(LC_CTYPE, ".ACP"); }
  LettersOfCodePage(LettersOfCodePage const &) = delete;
  LettersOfCodePage & operator=(LettersOfCodePage const &) = delete;
  ~LettersOfCodePage() { std::setlocale(LC_CTYPE, former_.c_str()); }

private:
  String former_;
};

class Reader {
public:
  Reader(String const & fileName, ProcessModel & model)
      : parser_(new KivTextFileReader(fileName.c_str()), 1), model_(model) {}

  /// \param lineCount  of the file, counted by other means
  ModelReport read(std::int64_t lineCount) {
    if (!parser_.IsOkay() && parser_.GetLookAheadLineNumber() == 0)
      fail(ModelFault::NotReadable);
    while (report_.fault == ModelFault::None && readStatement()) {
    }
    if (report_.fault == ModelFault::None && parser_.GetLookAheadLineNumber() <= lineCount)
      report_ = {ModelFault::LineLost, lineCount, String()};
    return report_;
  }

private:
  /// False at the end of the file.
  bool readStatement() {
    if (parser_.IsNext('#')) {
      parser_.SkipLine();
      return true;
    }
    String word;
    line_ = parser_.GetLookAheadLineNumber();
    if (!parser_.GetNextToken(word))
      return false;
    if (is(word, WORD_PROCESS))
      readText(model_.name);
    else if (is(word, WORD_CALENDAR))
      readCalendarStatement();
    else if (is(word, WORD_DATE))
      readDateStatement();
    else if (is(word, WORD_FLOW))
      readFlow();
    else if (std::optional<NodeKind> const kind = kindOf(word))
      readNode(*kind);
    else
      fail(ModelFault::NoStatement, word);
    return true;
  }

  void readCalendarStatement() {
    String days;
    String hours;
    if (!model_.nodes.empty())
      fail(ModelFault::LateCalendar);
    else if (!parser_.GetNextToken(days) || !parser_.GetNextToken(hours))
      fail(ModelFault::NoCalendar);
    else
      check(readCalendar(days, hours, model_.calendar));
  }

  void readDateStatement() {
    String date;
    if (readText(date))
      check(readDate(date, model_.date), date);
  }

  void readNode(NodeKind kind) {
    Node node{kind, {}, {}, 0};
    if (!readIdentifier(node.id) || !readText(node.text))
      return;
    if (find(node.id) != model_.nodes.size()) {
      fail(ModelFault::Twice, node.id);
      return;
    }
    String word;
    parser_.GetLookAheadToken(word);
    if (parser_.IsOkay() && is(word, WORD_DURATION)) {
      parser_.SkipToken();
      if (parser_.IsNext('"') ? !readExactDuration(node.seconds) : !readDuration(node.duration))
        return;
    }
    model_.nodes.push_back(node);
  }

  void readFlow() {
    Flow flow{};
    if (!readNodeName(flow.from) || !readNodeName(flow.to))
      return;
    if (parser_.IsNext('"') && !readText(flow.text))
      return;
    model_.flows.push_back(flow);
  }

  bool readIdentifier(String & id) {
    return parser_.GetNextToken(id) && id.c_str()[0] != '"' ? true : fail(ModelFault::NoIdentifier);
  }

  bool readNodeName(std::size_t & place) {
    String id;
    if (!readIdentifier(id))
      return false;
    place = find(id);
    return place != model_.nodes.size() ? true : fail(ModelFault::Unknown, id);
  }

  bool readText(String & text) {
    std::int64_t const line = parser_.GetLookAheadLineNumber();
    if (!parser_.ExpectToken('"'))
      return fail(ModelFault::NoText);
    String quoted;
    parser_.GetUntil('"', quoted, true, '\\');
    if (std::strchr(quoted.c_str(), '\n') != nullptr) {
      line_ = line;
      return fail(ModelFault::TextOpen);
    }
    text = unquoted(quoted);
    return true;
  }

  bool readExactDuration(double & seconds) {
    String time;
    return readText(time) && check(readTime(time, model_.calendar, seconds), time);
  }

  bool readDuration(long & minutes) {
    String token;
    if (!parser_.GetNextToken(token) || !isCount(token))
      return fail(ModelFault::NoDuration);
    errno = 0;
    long const value = std::strtol(token.c_str(), nullptr, 10);
    if (errno == ERANGE || value > kLongestDuration)
      return fail(ModelFault::TooLong, token);
    minutes = value;
    return true;
  }

  std::size_t find(String const & id) const {
    auto const place =
        std::find_if(model_.nodes.begin(), model_.nodes.end(), [&id](Node const & node) { return node.id == id; });
    return static_cast<std::size_t>(place - model_.nodes.begin());
  }

  bool check(ModelFault fault, String const & word = String()) {
    return fault == ModelFault::None || fail(fault, word);
  }

  bool fail(ModelFault fault, String const & word = String()) {
    report_ = {fault, line_, word};
    return false;
  }

  LettersOfCodePage letters_;
  KivTextParser parser_;
  ProcessModel & model_;
  std::int64_t line_ = 0;
  ModelReport report_;
};

} // namespace

bool readProcessModel(String const & fileName, ProcessModel & model, ModelReport & report) {
  model = {};
  std::int64_t lineCount = 0;
  report = checkLines(fileName, lineCount); // first of all: the reader would end the process at a line that is too long
  if (report.fault == ModelFault::None)
    report = Reader(fileName, model).read(lineCount);
  return report.fault == ModelFault::None;
}

} // namespace modeler
