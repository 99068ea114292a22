// Long random sequences of operations on String, compared with std::string.

#include "text_operations.hpp"

#include "support/memory/allocation.hpp"
#include "tools/string.hpp"

#include <algorithm>
#include <utility>

using SV::String;
using Walk = model::Walk<String, char>;

namespace {

/// The piece with this index; empty where there is none.
std::string_view pieceOf(std::string_view text, int index, char separator) {
  for (; index > 0; --index) {
    std::size_t const stop = text.find(separator);
    if (stop == text.npos)
      return {};
    text.remove_prefix(stop + 1);
  }
  return text.substr(0, text.find(separator));
}

/// Text \p i becomes a part of text \p j on the model's side: shared when it is all of it.
void becomePart(Walk & w, int i, int j, std::string_view part) {
  if (part.size() == w.model.text(j).size())
    w.model.share(i, j);
  else
    w.model.renew(i, w.model.scratch(w.model.text(j), static_cast<std::size_t>(part.data() - w.model.text(j).data()),
                                     part.size()));
}

void takeToken(Walk & w, int i, int j) {
  int const index = w.below(5);
  char const separator = w.character();
  w.real[i] = w.real[j].token(index, separator);
  auto const piece = pieceOf(w.model.text(j), index, separator);
  if (piece.data() == nullptr)
    w.model.renew(i, w.model.scratch(""));
  else
    becomePart(w, i, j, piece);
}

void replaceAll(Walk & w, int i, int) {
  char const from = w.character();
  char const to = w.character();
  w.real[i].replaceAll(from, to);
  w.model.makeUnique(i);
  if (w.model.block(i) != model::kNone)
    std::replace(w.model.writable(i).begin(), w.model.writable(i).end(), from, to);
}

void eraseAll(Walk & w, int i, int) {
  char const c = w.character();
  w.real[i].EraseAllChars(c);
  auto & kept = w.model.scratch(w.model.text(i));
  if (std::erase(kept, c) > 0)
    w.model.renew(i, kept);
}

void changeCase(Walk & w, int i, int) {
  bool const up = w.below(2) == 0;
  up ? w.real[i].toUpper() : w.real[i].toLower();
  w.model.makeUnique(i);
  if (w.model.block(i) == model::kNone)
    return;
  for (char & c : w.model.writable(i)) {
    if (up && c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
    else if (!up && c >= 'A' && c <= 'Z')
      c = static_cast<char>(c - 'A' + 'a');
  }
}

void join(Walk & w, int i, int j) {
  int const k = w.below(model::kTexts);
  w.real[i] = w.real[j] + w.real[k];
  if (w.model.text(k).empty())
    w.model.share(i, j);
  else if (w.model.text(j).empty())
    w.model.share(i, k);
  else
    w.model.renew(i, w.model.scratch(w.model.text(j)).append(w.model.text(k)));
}

void joinWithText(Walk & w, int i, int j) {
  bool const isBehind = w.below(2) == 0;
  char const * const text = w.material().c_str();
  w.real[i] = isBehind ? w.real[j] + text : text + w.real[j];
  auto & joined = w.model.scratch(isBehind ? w.model.text(j) : std::string());
  joined.append(text);
  if (!isBehind)
    joined.append(w.model.text(j));
  if (*text == '\0')
    w.model.share(i, j);
  else
    w.model.renew(i, joined);
}

void order(Walk & w, int i, int j) {
  ASSERT_EQ(w.real[i] < w.real[j], std::strcmp(w.model.text(i).c_str(), w.model.text(j).c_str()) < 0);
  ASSERT_EQ(w.real[i] == w.model.text(j).c_str(), w.model.text(i) == std::string_view(w.model.text(j).c_str()));
}

void buildFromNumber(Walk & w, int i, int) {
  long const number = w.number(i);
  w.real[i] = String(number);
  char digits[16];
  std::snprintf(digits, sizeof digits, "%ld", number);
  w.model.renew(i, w.model.scratch(digits));
}

void buildFromCharacter(Walk & w, int i, int) {
  char const c = w.character();
  w.real[i] = String(c);
  w.model.renew(i, w.model.scratch(std::string(c != '\0' ? 1 : 0, c)));
}

void walk() {
  Walk walk(1);
  auto operations = model::commonOperations<String, char>();
  for (Walk::Operation const & each : std::initializer_list<Walk::Operation>{{"token", takeToken},
                                                                             {"replaceAll", replaceAll},
                                                                             {"EraseAllChars", eraseAll},
                                                                             {"change case", changeCase},
                                                                             {"operator+", join},
                                                                             {"operator+ with a text", joinWithText},
                                                                             {"order", order},
                                                                             {"from a number", buildFromNumber},
                                                                             {"from a character", buildFromCharacter}})
    operations.push_back(each);
  walk.run(operations, SV::GetEmptyStrData());
}

} // namespace

TEST(StringModel, AMillionOperationsAgreeWithTheModel) { walk(); }

TEST(StringModel, AMillionOperationsAgreeWithTheModelUnderGuardPages) {
  support::GuardPages const guard;
  walk();
}
