// Damaged character maps: read within their bounds, and by the rules.
#include "sgml_model.hpp"

#include "support/allocation.hpp"
#include "support/random.hpp"

namespace {

constexpr std::size_t kMapsOfAPart = 625;

std::string goodMap(std::mt19937 & random) {
  bool const whole = random() % 3 == 0;
  std::string map = whole ? "MAP256\r\nWhole\r\n" : random() % 2 == 0 ? "MAP128\nUpper\n" : "// no kind\nUpper\n";
  for (int i = whole ? 0 : 128; i < 256; ++i)
    map += random() % 4 == 0 ? "0 // itself\n" : "&#" + std::to_string(i) + ";\n";
  return map;
}

void damage(std::string & map, std::mt19937 & random) {
  static char const * const kPieces[] = {"\n", "\r\n", "//", "/ /", "0\n", " ", "\t", "MAP128\n", "MAP256\n", "&auml;"};
  std::size_t const at = map.empty() ? 0 : random() % map.size();
  switch (random() % 7) {
  case 0: map.insert(at, 1, static_cast<char>(random())); break;
  case 1: map.erase(at, random() % 30); break;
  case 2: map.insert(at, kPieces[random() % std::size(kPieces)]); break;
  case 3: map.insert(random() % 40 % (map.size() + 1), kPieces[random() % std::size(kPieces)]); break;
  case 4: map.insert(at, 990 + random() % 20, 'x'); break;
  case 5: map.insert(at, map.substr(at, random() % 400)); break;
  default: map.resize(at);
  }
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
    for (unsigned count = random() % 4; count-- > 0;)
      damage(map, random);
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
