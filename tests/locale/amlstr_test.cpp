#include "amlstr.hpp"

#include <gtest/gtest.h>

#include <map>
#include <type_traits>
#include <utility>
#include <vector>

using SV::String;

namespace {

TEST(StringContainer, IsAPlainClass) {
  EXPECT_FALSE(std::is_polymorphic_v<KivStringContainer>);
  EXPECT_TRUE((std::is_same_v<KivStringContainer::Map, std::map<unsigned short, String>>));
}

TEST(StringContainer, KeepsTheFirstTextOfAnIdentifierInTheOrderOfTheIdentifiers) {
  KivStringContainer texts;
  for (auto const & [resId, text] : {std::pair{7, "seven"}, {65535, "last"}, {0, "null"}, {7, "dropped"}})
    texts.Add(static_cast<unsigned short>(resId), text);
  std::vector<int> ids;
  for (auto const & [resId, text] : texts.GetTexts())
    ids.push_back(resId);
  EXPECT_EQ(ids, (std::vector<int>{0, 7, 65535}));
  EXPECT_STREQ(texts.Find(7)->c_str(), "seven");
  EXPECT_EQ(texts.Find(8), nullptr);
  texts.Clear();
  EXPECT_EQ(texts.Find(7), nullptr);
}

TEST(StringContainer, SharesItsTextsWithTheirOwners) {
  KivStringContainer texts;
  String const text("shared");
  texts.Add(1, text);
  EXPECT_EQ(texts.Find(1)->block(), text.block());
}

TEST(LanguageContainer, IsAMapWithAVirtualDestructor) {
  EXPECT_TRUE((std::is_base_of_v<std::map<unsigned short, KivStringContainer *>, KivLanguageContainer>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivLanguageContainer>);
  EXPECT_FALSE(std::is_copy_constructible_v<KivLanguageContainer>); // two owners of one table
}

TEST(LanguageContainer, MakesEachTableOnceAndIsOrderedByLanguage) {
  KivLanguageContainer languages;
  KivStringContainer & english = languages.Get(2057);
  KivStringContainer & german = languages.Get(1031);
  EXPECT_EQ(&languages.Get(2057), &english);
  EXPECT_EQ(languages.size(), 2u);
  EXPECT_EQ(languages.begin()->second, &german);
}

TEST(LanguageContainer, DeletesItsTablesWithTheirTexts) {
  String const text("owned by the table, too");
  {
    KivLanguageContainer languages;
    languages.Get(2057).Add(1, text);
    EXPECT_EQ(text.block()->nRefCount, 1);
    languages.DeleteAll();
    EXPECT_TRUE(languages.empty());
    EXPECT_EQ(text.block()->nRefCount, 0);
    languages.Get(1031).Add(1, text);
  }
  EXPECT_EQ(text.block()->nRefCount, 0);
}

TEST(MLResFileReader, IsOfTheRootClassAndHasAVirtualDestructor) {
  EXPECT_TRUE((std::is_base_of_v<KivObject, KivMLResFileReader>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivMLResFileReader>);
}

TEST(MLResFileReader, OfAFileThatIsMissingOrAFolderIsFalseAndAddsNothing) {
  KivStringContainer texts;
  for (char const * name : {"no such file.dll", "", "..", "|"})
    EXPECT_FALSE(KivMLResFileReader(2057, &texts, name).Read()) << name;
  EXPECT_TRUE(texts.GetTexts().empty());
}

} // namespace
