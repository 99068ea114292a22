// Texts for XML: the rules byte by byte, and what a parser reads of them.
#include "asgml.hpp"
#include "atools.hpp"

#include "support/data/xml.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

using SV::String;

namespace {

String stringOf(std::string const & text) { return String(text.data(), static_cast<std::int32_t>(text.size())); }

std::string bytesOf(String const & text) { return std::string(text.c_str(), static_cast<std::size_t>(text.Len())); }

std::string xml(std::string const & text, bool all) { return bytesOf(KivSGMLString::XMLStr(stringOf(text), all)); }

std::wstring wide(std::string const & text) {
  std::wstring result(text.size(), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                      static_cast<int>(result.size()));
  return result;
}

std::string utf8(std::string const & text) {
  std::wstring const units = wide(text);
  std::string result(units.size() * 3, '\0');
  result.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, units.data(), static_cast<int>(units.size()),
                                                   result.data(), static_cast<int>(result.size()), nullptr, nullptr)));
  return result;
}

/// What one byte becomes, by the rules.
std::string expectedFor(int byte, bool all) {
  char const c = static_cast<char>(byte);
  if (!Kiv_IsValidXMLChar(c, true, all))
    return "";
  if (byte >= 1 && byte <= 31)
    return "&#" + std::to_string(byte) + ";";
  switch (byte) {
  case '<': return "&lt;";
  case '>': return "&gt;";
  case '&': return "&amp;";
  case '"': return "&quot;";
  case 128: return "&#8364;";
  default: return utf8(std::string(1, c));
  }
}

struct Row {
  char const * text;
  bool all;
  char const * xml;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << testing::PrintToString(row.text); }

class XmlText : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(XmlText, IsByItsRules) { EXPECT_EQ(xml(GetParam().text, GetParam().all), GetParam().xml); }

INSTANTIATE_TEST_SUITE_P(Rows, XmlText,
                         testing::Values(Row{"", true, ""}, Row{"plain", true, "plain"}, Row{"\t", true, "&#9;"},
                                         Row{"\n", true, "&#10;"}, Row{"\r", true, "&#13;"}, Row{"\x1F", true, "&#31;"},
                                         Row{"\x01", true, "&#1;"}, Row{" ", true, " "}, Row{"<", true, "&lt;"},
                                         Row{">", true, "&gt;"}, Row{"&", true, "&amp;"}, Row{"\"", true, "&quot;"},
                                         Row{"'", true, "'"}, Row{"\x80", true, "&#8364;"},
                                         Row{"\xE4", true, "\xC3\xA4"}, Row{"\x7F", true, ""}, Row{"\x81", true, ""},
                                         Row{"\x99", true, "\xE2\x84\xA2"}, Row{"\t", false, "&#9;"},
                                         Row{"\n", false, "&#10;"}, Row{"\r", false, "&#13;"}, Row{"\x01", false, ""},
                                         Row{"\x1F", false, ""}, Row{"<>&\"", false, "&lt;&gt;&amp;&quot;"},
                                         Row{"\x7F", false, "\x7F"}, Row{"\x80", false, "&#8364;"},
                                         Row{"\x81", false, "\xC2\x81"}, Row{"&lt;", true, "&amp;lt;"}));

TEST(XmlTextOfAllBytes, IsByTheRules) {
  for (bool const all : {true, false})
    for (int byte = 0; byte < 256; ++byte)
      EXPECT_EQ(xml(std::string(1, static_cast<char>(byte)), all), expectedFor(byte, all)) << byte << ' ' << all;
}

TEST(XmlTextOfAllBytes, InOneTextIsThatOfEach) {
  for (bool const all : {true, false}) {
    std::string text, expected;
    for (int byte = 255; byte >= 0; --byte) {
      text += static_cast<char>(byte);
      expected += expectedFor(byte, all);
    }
    EXPECT_EQ(xml(text, all), expected);
  }
}

TEST(XmlTextWithANul, GoesOnAfterIt) {
  using namespace std::string_literals;
  EXPECT_EQ(xml("a\0<"s, true), "a\0&lt;"s);
  EXPECT_EQ(xml("\0"s, false), "\0"s);
}

TEST(XmlTextWithoutAnyByteLeft, IsEmpty) { EXPECT_EQ(xml("\x01\x02", false), ""); }

TEST(XmlTextOfTwoMegabytes, IsThatOfItsBytes) {
  std::string text, expected;
  for (unsigned i = 0; text.size() < 2'000'000; ++i) {
    int const byte = static_cast<int>(i * i % 256);
    text += static_cast<char>(byte);
  }
  std::string each[256];
  for (int byte = 0; byte < 256; ++byte)
    each[byte] = expectedFor(byte, true);
  for (char const c : text)
    expected += each[static_cast<unsigned char>(c)];
  EXPECT_TRUE(xml(text, true) == expected);
}

// Through a parser.

namespace {

/// All bytes that stand in XML: 9, 10, 13 and from 32 on, but for those without a character.
std::string allAllowed() {
  std::string text;
  for (int byte = 1; byte < 256; ++byte)
    if ((byte >= 32 || byte == 9 || byte == 10 || byte == 13) &&
        Kiv_IsValidXMLChar(static_cast<char>(byte), true, true))
      text += static_cast<char>(byte);
  return text;
}

std::string documentOf(std::string const & content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<text value=\"" + content + "\">" + content + "</text>\n";
}

} // namespace

TEST(XmlParser, ReadsEachByteBackAsContentAndAsAnAttribute) {
  for (char const c : allAllowed()) {
    std::string const text = {'a', c, 'b'};
    support::XmlDocument const document(documentOf(xml(text, true)));
    ASSERT_EQ(document.error(), "") << int{c};
    EXPECT_EQ(document.text(L"/text"), wide(text)) << int{c};
    EXPECT_EQ(document.text(L"/text/@value"), wide(text)) << int{c};
  }
}

TEST(XmlParser, ReadsAllBytesBackInOneText) {
  std::string const text = allAllowed();
  support::XmlDocument const document(documentOf(xml(text, true)));
  ASSERT_EQ(document.error(), "");
  EXPECT_EQ(document.text(L"/text"), wide(text));
  EXPECT_EQ(document.text(L"/text/@value"), wide(text));
}

TEST(XmlParser, ReadsAllFrom32OnBackWhereControlCharactersAreLeftOut) {
  std::string text = "\t\n\r";
  for (int byte = 32; byte < 256; ++byte)
    text += static_cast<char>(byte);
  support::XmlDocument const document(documentOf(xml(text, false)));
  ASSERT_EQ(document.error(), "");
  EXPECT_EQ(document.text(L"/text"), wide(text));
  EXPECT_EQ(document.text(L"/text/@value"), wide(text));
}

TEST(XmlParser, ReadsWhatIsLeftOfATextWithControlCharacters) {
  support::XmlDocument const document(documentOf(xml("a\x01\x1F\tb", false)));
  ASSERT_EQ(document.error(), "");
  EXPECT_EQ(document.text(L"/text"), L"a\tb");
}

TEST(XmlParser, RefusesControlCharactersThatAreWrittenAsTheyWereAskedFor) {
  EXPECT_NE(support::XmlDocument(documentOf(xml("a\x01", true))).error(), "");
}
