// Character maps, conversions by them, and the inserter.
#include "sgml_model.hpp"

#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"

#include <fstream>
#include <iomanip>
#include <memory>
#include <sstream>
#include <stdexcept>

using SV::String;

namespace {

std::string converted(std::string const & text) { return textOf(KivSGMLString::GetSGMLString(stringOf(text))); }

std::string inserted(String const & text) {
  std::ostringstream out;
  out << KivSGMLString(text);
  return out.str();
}

class CharacterMap : public SgmlTest {};
class SgmlConversion : public SgmlTest {};
class SgmlInserter : public SgmlTest {};

} // namespace

// Maps.

TEST_F(CharacterMap, WithoutAMapLineBeginsAtByte128) {
  ASSERT_TRUE(setMap(numberedMap("Name\n", 128)));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Name");
  EXPECT_EQ(SgmlInternals::startOffset(), 128);
  EXPECT_EQ(converted("\x80 \x81 \xFF A"), "e0 e1 e127 A");
}

TEST_F(CharacterMap, OfKind128BeginsAtByte128) {
  ASSERT_TRUE(setMap(numberedMap("MAP128\nName\n", 128)));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Name");
  EXPECT_EQ(converted("\x80"), "e0");
}

TEST_F(CharacterMap, OfKind256BeginsAtByte0) {
  ASSERT_TRUE(setMap(numberedMap("MAP256\nName\n", 256)));
  EXPECT_EQ(SgmlInternals::startOffset(), 0);
  EXPECT_EQ(converted("\x01"
                      "A\xFF"),
            "e1e65e255");
}

TEST_F(CharacterMap, MapLineMayBeRepeatedAndTheLastOneCounts) {
  EXPECT_TRUE(setMap(numberedMap("MAP256\nMAP128\nMAP128\nName\n", 128)));
  EXPECT_EQ(SgmlInternals::startOffset(), 128);
  EXPECT_TRUE(setMap(numberedMap("MAP128\nMAP256\nName\n", 256)));
  EXPECT_EQ(SgmlInternals::startOffset(), 0);
}

TEST_F(CharacterMap, MapLineAfterTheNameIsAnEntry) {
  ASSERT_TRUE(setMap(numberedMap("Name\nMAP256\n", 127)));
  EXPECT_EQ(converted("\x80\x81"), "MAP256e0");
}

TEST_F(CharacterMap, MapLineInLowerCaseIsTheName) {
  ASSERT_TRUE(setMap(numberedMap("map256\n", 128)));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "map256");
  EXPECT_EQ(SgmlInternals::startOffset(), 128);
}

TEST_F(CharacterMap, OneLineShortIsBadAndTheDefaultIsInForce) {
  EXPECT_FALSE(setMap(numberedMap("Name\n", 127))); // 128 lines in all
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "DEFAULT");
  EXPECT_EQ(table(), builtInEntities(128));
}

TEST_F(CharacterMap, OneLineTooManyIsBad) {
  EXPECT_FALSE(setMap(numberedMap("Name\n", 129)));
  EXPECT_FALSE(setMap(numberedMap("MAP256\nName\n", 257)));
}

TEST_F(CharacterMap, OfKind256WithFewerEntriesIsBadUnlessAllowed) {
  std::string const map = numberedMap("MAP256\nName\n", 199); // 200 lines
  EXPECT_FALSE(setMap(map));
  KivSGMLString::EnableWarning(false);
  EXPECT_TRUE(setMap(map));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Name");
  EXPECT_EQ(textOf(SgmlInternals::entities()[198]), "e198");
  for (int i = 199; i < 256; ++i)
    EXPECT_EQ(SgmlInternals::entities()[i].Len(), 0) << i;
  KivSGMLString::EnableWarning(true);
  EXPECT_FALSE(setMap(map));
}

TEST_F(CharacterMap, EntriesBeyondTheTableAreIgnoredWhereAnyNumberIsAllowed) {
  KivSGMLString::EnableWarning(false);
  EXPECT_TRUE(setMap(numberedMap("MAP256\nName\n", 1000)));
  EXPECT_EQ(textOf(SgmlInternals::entities()[255]), "e255");
}

TEST_F(CharacterMap, WithoutAnyLineHasNoNameWhereAnyNumberIsAllowed) {
  KivSGMLString::EnableWarning(false);
  EXPECT_TRUE(setMap("MAP256\n"));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "");
  EXPECT_EQ(converted("<\xE4>"), "<\xE4>");
}

TEST_F(CharacterMap, PermissionForFewerEntriesIsNotForKind128) {
  KivSGMLString::EnableWarning(false);
  EXPECT_FALSE(setMap(numberedMap("MAP128\nName\n", 100)));
}

TEST_F(CharacterMap, ReadingStopsAfter258Lines) {
  std::istringstream stream(numberedMap("MAP256\nName\n", 300));
  EXPECT_FALSE(KivSGMLString::SetCharacterMap(&stream));
  std::string next;
  EXPECT_TRUE(std::getline(stream, next));
  EXPECT_EQ(next, "e257");
}

TEST_F(CharacterMap, ABadOneOfKind256PutsTheBuiltInEntriesAtByte0) {
  EXPECT_FALSE(setMap(numberedMap("MAP256\nName\n", 10)));
  EXPECT_EQ(SgmlInternals::startOffset(), 0);
  EXPECT_EQ(table(), builtInEntities(0));
  EXPECT_EQ(converted("d"), "&auml;"); // 0xE4 - 0x80
}

TEST_F(CharacterMap, BlanksAndCarriageReturnsAreRemovedWhereverTheyStand) {
  ASSERT_TRUE(setMap(numberedMap(" M A P 1 2 8\r\n Na me \r\r\n & a u m l ; \r\n", 127)));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Name");
  EXPECT_EQ(converted("\x80"), "&auml;");
}

TEST_F(CharacterMap, TabsStay) {
  ASSERT_TRUE(setMap(numberedMap("Name\n\ta\tb\n", 127)));
  EXPECT_EQ(converted("\x80"), "\ta\tb");
}

TEST_F(CharacterMap, CommentEndsALine) {
  ASSERT_TRUE(setMap(numberedMap("Name // of it\n&auml; // a umlaut\n0//\n", 126)));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Name");
  EXPECT_EQ(converted("\x80\x81\x82"), "&auml;\x81"
                                       "e0");
}

TEST_F(CharacterMap, CommentMayBeginWithABlankBetweenItsSlashes) {
  ASSERT_TRUE(setMap(numberedMap("Name\na/ / b\n", 127)));
  EXPECT_EQ(converted("\x80"), "a");
}

TEST_F(CharacterMap, ASingleSlashIsText) {
  ASSERT_TRUE(setMap(numberedMap("Name\na/b\n", 127)));
  EXPECT_EQ(converted("\x80"), "a/b");
}

TEST_F(CharacterMap, EmptyLinesDoNotCount) {
  ASSERT_TRUE(setMap(numberedMap("\n \r\n// all of it\nMAP128\n\nName\n\n", 128) + "\n\n//\n"));
  EXPECT_EQ(converted("\x80"), "e0");
}

TEST_F(CharacterMap, ZeroStandsForTheByteItself) {
  ASSERT_TRUE(setMap(numberedMap("Name\n0\n00\n", 126)));
  EXPECT_EQ(converted("\x80\x81"), "\x80"
                                   "00");
}

TEST_F(CharacterMap, LastLineNeedsNoLineEnd) {
  std::string const map = numberedMap("Name\n", 127) + "last";
  ASSERT_TRUE(setMap(map));
  EXPECT_EQ(converted("\xFF"), "last");
}

TEST_F(CharacterMap, LineOf999CharactersIsRead) {
  ASSERT_TRUE(setMap(numberedMap("Name\n" + std::string(999, 'x') + "\n", 127)));
  EXPECT_EQ(converted("\x80"), std::string(999, 'x'));
}

TEST_F(CharacterMap, LineOf1000CharactersEndsTheReading) {
  EXPECT_FALSE(setMap(numberedMap("Name\n" + std::string(1000, 'x') + "\n", 127)));
  // Also one that would be a comment, after all that is needed.
  EXPECT_TRUE(setMap(numberedMap("Name\n", 128) + "//" + std::string(2000, 'x') + "\nmore\n"));
}

TEST_F(CharacterMap, OfKind128AlwaysReplacesTheMarkupCharacters) {
  ASSERT_TRUE(setMap(numberedMap("Name\n", 128)));
  EXPECT_EQ(converted("\"&<>'"), "&#34;&amp;&lt;&gt;'");
}

TEST_F(CharacterMap, OfKind256HasToNameTheMarkupCharacters) {
  std::string map = "MAP256\nName\n";
  for (int i = 0; i < 256; ++i)
    map += "0\n";
  ASSERT_TRUE(setMap(map));
  EXPECT_EQ(converted("\"&<>\xE4"), "\"&<>\xE4");
}

TEST_F(CharacterMap, NextOneTakesTheTableOver) {
  ASSERT_TRUE(setMap(numberedMap("MAP256\nName\n", 256)));
  ASSERT_TRUE(setMap(numberedMap("Other\n", 128)));
  EXPECT_EQ(converted("A\x80"), "Ae0");
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "Other");
}

TEST_F(CharacterMap, NullIsTheBuiltInOneAndTrue) {
  ASSERT_TRUE(setMap(numberedMap("MAP256\nName\n", 256)));
  EXPECT_TRUE(KivSGMLString::SetCharacterMap(nullptr));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "DEFAULT");
  EXPECT_EQ(SgmlInternals::startOffset(), 128);
  EXPECT_EQ(table(), builtInEntities(128));
}

TEST_F(CharacterMap, BuiltInOneIsTakenAtTheFirstConversion) {
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "");
  EXPECT_EQ(converted("Gr\xFC\xDF"
                      "e, 5 < 6 & \x80"),
            "Gr&uuml;&szlig;e, 5 &lt; 6 &amp; &euro;");
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "DEFAULT");
}

TEST_F(CharacterMap, StaysWhenTheLanguagePackIsGone) {
  EXPECT_EQ(converted("\xE4"), "&auml;");
  SV::Resource::SetResManager(nullptr);
  EXPECT_EQ(converted("\xE4"), "&auml;");
}

TEST_F(CharacterMap, WithoutALanguagePackIsEmptyAndTheMissingTextIsReported) {
  SV::Resource::SetResManager(nullptr);
  EXPECT_EQ(converted("\xE4<"), "\xE4&lt;");
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
  EXPECT_EQ(application.exceptions[0].arg & 0xFFFF, 11764u);
}

TEST_F(CharacterMap, IsTheSameInBothLanguages) {
  SV::ResMgr german("language\\1031\\kivara72.dll");
  EXPECT_EQ(textOf(SV::Resource::LoadString(SV::ResId(0x2000000 | 11764, &german))),
            textOf(SV::Resource::LoadString(0x2000000 | 11764)));
}

TEST_F(CharacterMap, BuiltInOneHas128EntriesBetweenSingleBlanks) {
  std::string const map = textOf(SV::Resource::LoadString(0x2000000 | 11764));
  EXPECT_EQ(std::count(map.begin(), map.end(), ' '), 127);
  EXPECT_EQ(map.find("  "), std::string::npos);
}

TEST_F(CharacterMap, CentralEuropeanFileIsGood) {
  std::ifstream file(support::binFolder() + "charmaps\\central-european.map");
  ASSERT_TRUE(KivSGMLString::SetCharacterMap(&file));
  EXPECT_STREQ(KivSGMLString::GetLanguage(), "CentralEuropean");
  EXPECT_EQ(converted("\xC8\x65sk\xFD \x81 \xA3\xF3\x64\x9F"), "&Ccaron;esk&yacute; \x81 &Lstrok;&oacute;d&zacute;");
}

// Conversions.

TEST_F(SgmlConversion, DropsCarriageReturnsAndKeepsLineFeeds) {
  EXPECT_EQ(converted("one\r\ntwo\rthree\n"), "one\ntwothree\n");
  EXPECT_EQ(converted("\r"), "");
}

TEST_F(SgmlConversion, OfAnEmptyTextIsEmpty) {
  EXPECT_EQ(converted(""), "");
  EXPECT_EQ(SgmlInternals::newString(String()), nullptr);
  bool changed = true;
  EXPECT_EQ(SgmlInternals::newOrSame(String(), changed), nullptr);
  EXPECT_FALSE(changed);
}

TEST_F(SgmlConversion, KeepsControlCharactersWhereNothingIsReplaced) {
  EXPECT_EQ(converted("a\x01\x1F\t\n"), "a\x01\x1F\t\n");
}

TEST_F(SgmlConversion, DropsControlCharactersWhereSomethingIsReplaced) {
  EXPECT_EQ(converted("a\x01\x1F\t\n<"), "a\t\n&lt;");
  EXPECT_EQ(converted("a\x01\r"), "a");
}

TEST_F(SgmlConversion, CountsWhatItDrops) { EXPECT_EQ(SgmlInternals::length("\x01<\r"), 5); }

TEST_F(SgmlConversion, EndsAtTheFirstNul) {
  EXPECT_EQ(converted(std::string("a<\0b", 4)), "a&lt;");
  EXPECT_EQ(converted(std::string("ab\0<", 4)), "ab");
}

TEST_F(SgmlConversion, OfEachByteIsItsEntryOrItself) {
  KivSGMLString::SetCharacterMap(nullptr);
  auto const entities = builtInEntities(128);
  for (int byte = 0; byte < 256; ++byte) {
    std::string const text(1, static_cast<char>(byte));
    EXPECT_EQ(converted(text), convertedByModel(text, entities)) << byte;
    EXPECT_EQ(converted("<" + text), convertedByModel("<" + text, entities)) << byte;
  }
}

TEST_F(SgmlConversion, ByAnEntryForACarriageReturnStillDropsIt) {
  ASSERT_TRUE(setMap(numberedMap("MAP256\nName\n", 256)));
  EXPECT_EQ(converted("\r"), "");
  EXPECT_EQ(converted("\n"), "e10");
  EXPECT_EQ(converted("\x01"), "e1"); // an entry lets a control character through
}

TEST_F(SgmlConversion, OfATextThatStaysTheSameSharesIt) {
  String const text("nothing to replace in this text, which is longer than a few characters");
  converted("x"); // the table is there
  support::AllocationCount const count;
  String const result = KivSGMLString::GetSGMLString(text);
  EXPECT_EQ(result.block(), text.block());
  EXPECT_EQ(count.value(), 0u);
}

TEST_F(SgmlConversion, NewTextBelongsToTheCaller) {
  std::unique_ptr<char[]> const changed(SgmlInternals::newString("a<b"));
  EXPECT_STREQ(changed.get(), "a&lt;b");
  String const same("ab");
  std::unique_ptr<char[]> const copy(SgmlInternals::newString(same));
  EXPECT_STREQ(copy.get(), "ab");
  EXPECT_NE(copy.get(), same.c_str());
  std::unique_ptr<char[]> const dropped(SgmlInternals::newString("\r"));
  EXPECT_STREQ(dropped.get(), "");
}

TEST_F(SgmlConversion, TextThatStaysTheSameIsGivenAsItIsWhereThatIsAllowed) {
  String const same("ab");
  bool changed = true;
  EXPECT_EQ(SgmlInternals::newOrSame(same, changed), same.c_str());
  EXPECT_FALSE(changed);
  std::unique_ptr<char[]> const other(SgmlInternals::newOrSame("a>", changed));
  EXPECT_STREQ(other.get(), "a&gt;");
  EXPECT_TRUE(changed);
}

TEST_F(SgmlConversion, OfTwoMegabytesIsThatOfTheModel) {
  std::string text;
  for (unsigned i = 0; text.size() < 2'000'000; ++i)
    text += static_cast<char>(i * i % 255 + 1);
  EXPECT_TRUE(converted(text) == convertedByModel(text, builtInEntities(128)));
}

TEST_F(SgmlConversion, LongerThanAnyTextThrowsAndAllocatesNothing) {
  ASSERT_TRUE(setMap(numberedMap("Name\n" + std::string(999, 'x') + "\n", 127)));
  String text = String::ofLength(2'200'000);
  std::fill_n(text.writable(), text.Len(), '\x80');
  support::AllocationLimit const limit(1'000'000);
  EXPECT_THROW(KivSGMLString::GetSGMLString(text), std::length_error);
  std::ostringstream out;
  EXPECT_THROW(out << KivSGMLString(text), std::length_error);
}

TEST_F(SgmlConversion, WithoutMemoryThrowsAndLeavesTheTextAlone) {
  std::string const text(100'000, '<');
  String const given = stringOf(text);
  converted("x");
  {
    support::AllocationLimit const limit(100'000);
    EXPECT_THROW(KivSGMLString::GetSGMLString(given), std::bad_alloc);
  }
  EXPECT_TRUE(textOf(given) == text);
}

// The object and the inserter.

TEST_F(SgmlInserter, WritesTheTextThatTheObjectHolds) {
  KivSGMLString const fromString(String("a<"));
  KivSGMLString const fromText("b<");
  KivSGMLString copy(fromString);
  std::ostringstream out;
  out << fromString << fromText << copy;
  copy = fromText;
  out << copy;
  EXPECT_EQ(out.str(), "a&lt;b&lt;a&lt;b&lt;");
}

TEST_F(SgmlInserter, TakesNullForTheEmptyText) {
  std::ostringstream out;
  out << KivSGMLString(static_cast<char const *>(nullptr));
  EXPECT_EQ(out.str(), "");
}

TEST_F(SgmlInserter, WritesXmlWhereThatIsTheExportFileType) {
  String const text("\xE4\t<\x80");
  EXPECT_EQ(inserted(text), "&auml;\t&lt;&euro;");
  KivSGMLString::SetExportFileType(KIV_EXPORT_XML);
  EXPECT_EQ(inserted(text), "\xC3\xA4&#9;&lt;&#8364;");
  KivSGMLString::SetExportFileType(static_cast<KivExportFileType>(2));
  EXPECT_EQ(inserted(text), "&auml;\t&lt;&euro;");
  KivSGMLString::SetExportFileType(KIV_EXPORT_SGML);
  EXPECT_EQ(inserted(text), "&auml;\t&lt;&euro;");
}

TEST_F(SgmlInserter, WritesAllControlCharactersInXml) {
  KivSGMLString::SetExportFileType(KIV_EXPORT_XML);
  EXPECT_EQ(inserted("\x01"), "&#1;");
}

TEST_F(SgmlInserter, EndsAtTheFirstNulInXmlToo) {
  KivSGMLString::SetExportFileType(KIV_EXPORT_XML);
  EXPECT_EQ(inserted(String("a\0b", 3)), "a");
}

TEST_F(SgmlInserter, HonoursWidthFillAndAdjustment) {
  for (KivExportFileType const type : {KIV_EXPORT_SGML, KIV_EXPORT_XML}) {
    KivSGMLString::SetExportFileType(type);
    for (char const * const text : {"a<", "ab"}) {
      std::ostringstream ours, standard;
      std::string const result = inserted(text);
      for (auto const adjust : {std::ios::left, std::ios::right, std::ios::internal}) {
        ours.setf(adjust, std::ios::adjustfield);
        standard.setf(adjust, std::ios::adjustfield);
        ours << std::setfill('*') << std::setw(9) << KivSGMLString(text) << '|' << KivSGMLString(text);
        standard << std::setfill('*') << std::setw(9) << result.c_str() << '|' << result.c_str();
      }
      EXPECT_EQ(ours.str(), standard.str());
    }
  }
}

TEST_F(SgmlInserter, LeavesTheWidthForAnEmptyTextExceptInXml) {
  std::ostringstream sgml;
  sgml << std::setw(3) << KivSGMLString("") << "a";
  EXPECT_EQ(sgml.str(), "  a");
  KivSGMLString::SetExportFileType(KIV_EXPORT_XML);
  std::ostringstream xml;
  xml << std::setw(3) << KivSGMLString("") << "a";
  EXPECT_EQ(xml.str(), "   a");
}

TEST_F(SgmlInserter, FillsUpATextOfWhichNothingIsLeft) {
  std::ostringstream out;
  out << std::setw(3) << KivSGMLString("\r") << "a";
  EXPECT_EQ(out.str(), "   a");
}

TEST_F(SgmlInserter, FreesTheTextWhenTheStreamThrows) {
  struct Failing : std::streambuf {
  } buffer;
  std::ostream out(&buffer);
  out.exceptions(std::ios::badbit);
  support::GuardPages const guard;
  EXPECT_THROW(out << KivSGMLString("a<"), std::ios::failure);
}
