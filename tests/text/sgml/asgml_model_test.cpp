// Damaged character maps: read within their bounds, and by the rules.
#include "sgml_model.hpp"

#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

namespace {

constexpr std::size_t kMapsOfAPart = 625;

support::WeakPlaces const kMarks = {
    .pieces = {"\n", "\r\n", "//", "/ /", "0\n", " ", "\t", "MAP128\n", "MAP256\n", "&auml;", std::string(999, 'x')}};

std::string goodMap(std::mt19937 & random) {
  bool const whole = random() % 3 == 0;
  std::string map = whole ? "MAP256\r\nWhole\r\n" : random() % 2 == 0 ? "MAP128\nUpper\n" : "// no kind\nUpper\n";
  for (int i = whole ? 0 : 128; i < 256; ++i)
    map += random() % 4 == 0 ? "0 // itself\n" : "&#" + std::to_string(i) + ";\n";
  return map;
}

std::string randomText(std::mt19937 & random) {
  std::string text(random() % 40, '\0');
  for (char & c : text)
    c = random() % 2 == 0 ? static_cast<char>(random()) : "<&\r\n\xE4 ab"[random() % 8];
  return text;
}

} // namespace

class DamagedMaps : public SgmlTest, public testing::WithParamInterface<unsigned> {};

TEST_P(DamagedMaps, AreReadWithinTheirBoundsAndByTheRules) {
  support::GuardPages const guard;
  support::Random random(GetParam());
  for (std::size_t number = 0; number < support::times(kMapsOfAPart); ++number) {
    std::string map = goodMap(random);
    if (random() % 4 != 0)
      map = support::damaged(map, random, kMarks);
    bool const strict = random() % 2 == 0;
    KivSGMLString::EnableWarning(strict);
    MapModel const model(map, strict);
    ASSERT_EQ(setMap(map), model.isGood) << "map " << number << ":\n" << map;
    ASSERT_EQ(SgmlInternals::startOffset(), model.start) << number;
    ASSERT_EQ(KivSGMLString::GetLanguage(), model.language) << number;
    auto const entities = model.isGood ? model.entities : builtInEntities(model.start);
    ASSERT_EQ(table(), entities) << number;
    std::string const text = randomText(random);
    ASSERT_EQ(textOf(KivSGMLString::GetSGMLString(stringOf(text))), convertedByModel(text, entities)) << number;
  }
}

INSTANTIATE_TEST_SUITE_P(Part, DamagedMaps, testing::Range(0u, 4u));
