#include "system/processes/redirection.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <ostream>

using kivara::Redirection;
using kivara::Redirections;
using SV::String;

namespace {

struct Row {
  char const * line;
  char const * output; ///< the name with "+" before it where it is appended to; null for none
  char const * error;
  char const * rest;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '[' << row.line << ']'; }

std::string described(Redirection const & redirection) {
  if (!redirection.isThere())
    return "(none)";
  return (redirection.appends ? "+" : "") + std::string(redirection.name.c_str());
}

class RedirectionsOf : public testing::TestWithParam<Row> {};

TEST_P(RedirectionsOf, ALineAreFoundAndTakenOut) {
  auto const [line, output, error, rest] = GetParam();
  Redirections const found = kivara::findRedirections(line);
  EXPECT_EQ(described(found.output), output != nullptr ? output : "(none)");
  EXPECT_EQ(described(found.error), error != nullptr ? error : "(none)");
  EXPECT_STREQ(kivara::withoutRedirections(line, found).c_str(), rest);
}

constexpr Row kLines[] = {
    {"", nullptr, nullptr, ""},
    {"prog", nullptr, nullptr, "prog"},
    {"prog 1 2 > 3", nullptr, nullptr, "prog 1 2 > 3"},
    {"prog >out", nullptr, nullptr, "prog >out"},
    {"prog 3>out", nullptr, nullptr, "prog 3>out"},
    // one of them
    {"prog 1>out", "out", nullptr, "prog "},
    {"prog 2>err", nullptr, "err", "prog "},
    {"prog 1>>out", "+out", nullptr, "prog "},
    {"prog 2>>err", nullptr, "+err", "prog "},
    {"prog 1>out x", "out", nullptr, "prog  x"},
    {"1>out prog", "out", nullptr, " prog"},
    {"prog 11>out", "out", nullptr, "prog 1"},
    {"prog1>out", "out", nullptr, "prog"},
    // both
    {"prog 1>out 2>err", "out", "err", "prog  "},
    {"prog 2>err 1>out", "out", "err", "prog  "},
    {"prog 1>>out x 2>>err y", "+out", "+err", "prog  x  y"},
    {"prog 2>>\"e r\" x 1>\"o t\" y", "\"o t\"", "+\"e r\"", "prog  x  y"},
    {"prog 1>\"o t\"2>\"e r\"x", "\"o t\"", "\"e r\"", "prog x"},
    // names
    {"prog 1>\"a b\" x", "\"a b\"", nullptr, "prog  x"},
    {"prog 1>>\"a b\" x", "+\"a b\"", nullptr, "prog  x"},
    {"prog 1>\"a b", "\"a b", nullptr, "prog "},
    {"prog 1>\"", "\"", nullptr, "prog "},
    {"prog 1>\"\" x", "\"\"", nullptr, "prog  x"},
    {"prog 1>a\"b c\" x", "a\"b", nullptr, "prog  c\" x"},
    {"prog 1>a\tb x", "a\tb", nullptr, "prog  x"},
    {"prog 1>>>out", "+>out", nullptr, "prog "},
    {"prog 1> out", "", nullptr, "prog  out"},
    {"prog 1>> out", "+", nullptr, "prog  out"},
    {"prog 1>", "", nullptr, "prog "},
    {"prog 1>>", "+", nullptr, "prog "},
    // the first of several
    {"prog 1>a 1>b", "a", nullptr, "prog  1>b"},
    {"prog 2>a 2>>b", nullptr, "a", "prog  2>>b"},
    {"prog \"x 1>y\" 1>b", "y\"", nullptr, "prog \"x  1>b"},
    // inside of the name of the other one
    {"prog 1>log2>x", "log2>x", nullptr, "prog "},
    {"prog 1>log2>x 2>err", "log2>x", "err", "prog  "},
    {"prog 1>\"a 2>b\" 2>err", "\"a 2>b\"", "err", "prog  "},
    {"prog 2>log1>x", nullptr, "log1>x", "prog "},
    {"prog 2>log1>x 1>out", "out", "log1>x", "prog  "},
    {"prog 1>2>x", "2>x", nullptr, "prog "},
    {"prog 2>&1", nullptr, "&1", "prog "},
    {"prog 1>out 2>&1", "out", "&1", "prog  "},
    // right after the name of the other one
    {"prog 1>\"a\"2>b", "\"a\"", "b", "prog "},
};
INSTANTIATE_TEST_SUITE_P(Table, RedirectionsOf, testing::ValuesIn(kLines));

/// Whether it lies in the line, with the operator at its beginning and the name at its end.
bool isIn(std::string const & line, Redirection const & redirection, char stream) {
  if (!redirection.isThere())
    return true;
  auto const place = static_cast<std::size_t>(redirection.place);
  auto const length = static_cast<std::size_t>(redirection.length);
  std::string const name(redirection.name.c_str(), static_cast<std::size_t>(redirection.name.Len()));
  return place + length <= line.size() && line[place] == stream && line[place + 1] == '>' &&
         line.substr(place, length).ends_with(name);
}

TEST(RedirectionDamage, IsFoundWithinTheLineAndTakenOut) {
  support::WeakPlaces const marks = {.pieces = {"1>", "2>", "1>>", "2>>\"", "\"", " ", "1>2>x"}};
  support::Random random(41);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    std::string const line = support::damagedText("prog x 1>>\"a b.txt\" y 2>err.txt \"1>no\" z", random, marks);
    String const text(line.c_str());
    Redirections const found = kivara::findRedirections(text);
    ASSERT_TRUE(isIn(line, found.output, '1') && isIn(line, found.error, '2')) << line;
    String const rest = kivara::withoutRedirections(text, found);
    int const taken =
        (found.output.isThere() ? found.output.length : 0) + (found.error.isThere() ? found.error.length : 0);
    ASSERT_EQ(rest.Len() + taken, text.Len()) << line;
  }
}

} // namespace
