#include "aextman.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <type_traits>

using SV::String;

namespace {

/// Knows "xml", the default, and "kmx".
KivExtensionManager models() {
  KivExtensionManager manager("xml");
  manager.addExtension("kmx");
  return manager;
}

struct Row {
  char const * path;
  char const * withExtension;
  char const * without;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '"' << row.path << '"'; }

class Extensions : public testing::TestWithParam<Row> {};

TEST_P(Extensions, AreAddedUnlessAKnownOneIsThere) {
  String path(GetParam().path);
  models().setExtension(path);
  EXPECT_STREQ(path.c_str(), GetParam().withExtension);
}

TEST_P(Extensions, AreTakenOffIfTheyAreKnown) {
  EXPECT_STREQ(models().getPath(GetParam().path).c_str(), GetParam().without);
}

TEST_P(Extensions, AreLeftAloneWhereNoneIsKnown) {
  KivExtensionManager const none;
  String path(GetParam().path);
  none.setExtension(path);
  EXPECT_STREQ(path.c_str(), GetParam().path);
  EXPECT_STREQ(none.getPath(path).c_str(), GetParam().path);
}

constexpr Row kPaths[] = {
    {"model", "model.xml", "model"},
    {"model.xml", "model.xml", "model"},
    {"model.XML", "model.XML", "model"},
    {"model.kmx", "model.kmx", "model"},
    {"model.txt", "model.txt.xml", "model.txt"},
    {"model.xm", "model.xm.xml", "model.xm"},
    {"model.xmll", "model.xmll.xml", "model.xmll"},
    {"a.xml.xml", "a.xml.xml", "a.xml"},
    {"a.xml.txt", "a.xml.txt.xml", "a.xml.txt"},
    {"xml", "xml.xml", "xml"},
    {".xml", ".xml", ""},
    {"model.", "model..xml", "model."},
    {"", ".xml", ""},
    {"dir\\", "dir\\", "dir\\"},
    {"\\", "\\", "\\"},
    {"dir.xml\\", "dir.xml\\", "dir.xml\\"},
    {"dir/", "dir/.xml", "dir/"},
    {"c:\\dir.d\\name", "c:\\dir.d\\name.xml", "c:\\dir.d\\name"},
    {"c:\\dir.xml\\name", "c:\\dir.xml\\name.xml", "c:\\dir.xml\\name"},
    {"c:\\dir.d\\n.kmx", "c:\\dir.d\\n.kmx", "c:\\dir.d\\n"},
};
INSTANTIATE_TEST_SUITE_P(Table, Extensions, testing::ValuesIn(kPaths));

TEST(ExtensionManager, TheFirstExtensionIsTheDefault) {
  EXPECT_STREQ(models().getExtension().c_str(), "xml");
  EXPECT_EQ(KivExtensionManager().getExtension().Len(), 0);
  KivExtensionManager later;
  later.addExtension("kmx");
  later.addExtension("xml");
  EXPECT_STREQ(later.getExtension().c_str(), "kmx");
}

TEST(ExtensionManager, AnExtensionThatIsAddedTwiceIsTakenOffOnce) {
  KivExtensionManager manager("xml");
  manager.addExtension("xml");
  EXPECT_STREQ(manager.getPath("a.xml.xml").c_str(), "a.xml");
}

// The lengths are compared first, and then the texts up to their NULs.
TEST(ExtensionManager, ANulInAPathCountsForTheLengthAndEndsTheComparison) {
  KivExtensionManager manager("xml");
  manager.addExtension(String("k\0a", 3));
  String longer("model.xml\0z", 11);
  EXPECT_EQ(manager.getPath(longer), longer) << "the last piece has five characters";
  manager.setExtension(longer);
  EXPECT_EQ(longer, String("model.xml\0z.xml", 15));
  String same("model.K\0b", 9);
  EXPECT_EQ(manager.getPath(same), "model");
  manager.setExtension(same);
  EXPECT_EQ(same, String("model.K\0b", 9));
}

TEST(ExtensionManager, ADotAfterANulIsTheLastOne) {
  KivExtensionManager const manager("xml");
  EXPECT_EQ(manager.getPath(String("a\0b.xml", 7)), String("a\0b", 3));
}

TEST(ExtensionManager, TheEmptyExtensionIsADotAtTheEnd) {
  KivExtensionManager const manager{String()};
  String path("model");
  manager.setExtension(path);
  EXPECT_STREQ(path.c_str(), "model.");
  EXPECT_STREQ(manager.getPath(path).c_str(), "model");
}

TEST(ExtensionManager, CopiesHaveExtensionsOfTheirOwn) {
  KivExtensionManager const source("xml");
  KivExtensionManager copy(source);
  KivExtensionManager assigned("txt");
  assigned = source;
  copy.addExtension("a");
  assigned.addExtension("b");
  EXPECT_STREQ(copy.getPath("n.a").c_str(), "n");
  EXPECT_STREQ(source.getPath("n.a").c_str(), "n.a");
  EXPECT_STREQ(assigned.getPath("n.b").c_str(), "n");
  EXPECT_STREQ(assigned.getPath("n.txt").c_str(), "n.txt");
  EXPECT_STREQ(assigned.getExtension().c_str(), "xml");
}

TEST(ExtensionManager, ThePathThatIsAskedForStaysAsItIs) {
  String const path("model.xml");
  EXPECT_STREQ(models().getPath(path).c_str(), "model");
  EXPECT_STREQ(path.c_str(), "model.xml");
}

static_assert(!std::is_polymorphic_v<KivExtensionManager> && sizeof(KivExtensionManager) == sizeof(ISequence<String>));

struct Split {
  char const * path;
  char const * base;
  char const * extension;
};
std::ostream & operator<<(std::ostream & out, Split const & row) { return out << '"' << row.path << '"'; }

class ParsePath : public testing::TestWithParam<Split> {};

TEST_P(ParsePath, SplitsAtTheLastDot) {
  String base("old");
  String extension("old");
  KivExtensionManager::parsePath(GetParam().path, base, extension);
  EXPECT_STREQ(base.c_str(), GetParam().base);
  EXPECT_STREQ(extension.c_str(), GetParam().extension);
}

TEST_P(ParsePath, MayWriteOverThePath) {
  String path(GetParam().path);
  String other;
  KivExtensionManager::parsePath(path, path, other);
  EXPECT_STREQ(path.c_str(), GetParam().base);
  EXPECT_STREQ(other.c_str(), GetParam().extension);
  path = GetParam().path;
  KivExtensionManager::parsePath(path, other, path);
  EXPECT_STREQ(other.c_str(), GetParam().base);
  EXPECT_STREQ(path.c_str(), GetParam().extension);
}

INSTANTIATE_TEST_SUITE_P(Table, ParsePath,
                         testing::Values(Split{"model.xml", "model", "xml"}, Split{"model", "model", ""},
                                         Split{"", "", ""}, Split{".hidden", "", "hidden"}, Split{"a.b.c", "a.b", "c"},
                                         Split{"a..b", "a.", "b"}, Split{"a.", "a", ""}, Split{".", "", ""},
                                         Split{"c:\\dir.d\\name", "c:\\dir", "d\\name"}));

} // namespace
