// What a request to a URL has brought, in words.
#include "apps/modeler/in_process.hpp"
#include "apps/modeler/languages.hpp"
#include "background/answertext.hpp"

#include <ostream>

namespace modeler {
namespace {

using Lines = std::vector<std::string>;

/// In the code page of the system.
std::string narrow(wchar_t const * text) {
  char bytes[512] = "";
  WideCharToMultiByte(CP_ACP, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
  return bytes;
}

Lines linesOf(std::string const & body) {
  bool goesOn = false;
  return firstLines(body, goesOn);
}

bool goesOnAfter(std::string const & body) {
  bool goesOn = false;
  firstLines(body, goesOn);
  return goesOn;
}

TEST(WebBody, IsShownLineByLine) {
  EXPECT_EQ(linesOf("one\r\ntwo\nthree"), (Lines{"one", "two", "three"}));
  EXPECT_EQ(linesOf("one\n\n two\n"), (Lines{"one", "", " two"}));
  EXPECT_EQ(linesOf(""), Lines());
  EXPECT_FALSE(goesOnAfter("one\r\ntwo\n"));
}

TEST(WebBody, IsUtf8OrOtherwiseInTheSystemsCodePage) {
  EXPECT_EQ(linesOf("Gr\xC3\xBC\xC3\x9F"
                    "e"),
            Lines{narrow(L"Gr\u00FC\u00DFe")});
  EXPECT_EQ(linesOf("Gr\xFC"), Lines{"Gr\xFC"});
}

TEST(WebBody, WithCharactersThatCannotBeShownHasBlanks) {
  EXPECT_EQ(linesOf(std::string("a\0b\tc\x1B\x7F", 7)), Lines{"a b c  "});
}

TEST(WebBody, IsCutAfterFortyLinesOf200Characters) {
  std::string forty;
  for (int i = 0; i < 40; ++i)
    forty += "line\n";
  EXPECT_EQ(linesOf(forty).size(), 40u);
  EXPECT_FALSE(goesOnAfter(forty));
  EXPECT_EQ(linesOf(forty + "x").size(), 40u);
  EXPECT_TRUE(goesOnAfter(forty + "x"));
  EXPECT_FALSE(goesOnAfter(std::string(200, 'x')));
  EXPECT_TRUE(goesOnAfter(std::string(201, 'x')));
  EXPECT_EQ(linesOf(std::string(201, 'x')).front().size(), 200u);
}

TEST(WebBody, CutWithinACharacterStaysUtf8) {
  for (int before = 16'380; before < 16'384; ++before) {
    std::string const body =
        "\xC3\xBC" + std::string(static_cast<std::size_t>(before) - 2, 'a') + "\xF0\x9F\x98\x80 more";
    EXPECT_EQ(linesOf(body).front().substr(0, 2), narrow(L"\u00FCa")) << before;
    EXPECT_TRUE(goesOnAfter(body));
  }
}

class WebAnswerText : public InProcess {};

TEST_F(WebAnswerText, HasStatusSizesAndTheFirstLines) {
  WebAnswer answer = {.status = "404", .headerBytes = 120, .headerLines = 4, .bodyBytes = 9, .lines = {"not", "here"}};
  EXPECT_STREQ(answerText(answer).c_str(), "Status: 404\nHeaders: 120 bytes in 4 lines\nBody: 9 bytes\n\nnot\nhere");
  answer.goesOn = true;
  EXPECT_TRUE(std::string(answerText(answer).c_str()).ends_with("\nhere\n\nThe body goes on."));
  answer = {.status = "204", .headerBytes = 80, .headerLines = 2};
  EXPECT_STREQ(answerText(answer).c_str(), "Status: 204\nHeaders: 80 bytes in 2 lines\nBody: 0 bytes");
}

struct Failure {
  unsigned long error;
  wchar_t const * english;
  wchar_t const * german;
};
std::ostream & operator<<(std::ostream & out, Failure const & row) { return out << row.error; }

constexpr wchar_t kNoUrlEnglish[] = L"This is no URL that can be used. It has to begin with http:// or https://.";
constexpr wchar_t kNoUrlGerman[] =
    L"Das ist keine URL, die verwendet werden kann. Sie muss mit http:// oder https:// beginnen.";
constexpr wchar_t kCertificateEnglish[] =
    L"The connection is not secure: the server's certificate is not valid, or not for this server.";
constexpr wchar_t kCertificateGerman[] =
    L"Die Verbindung ist nicht sicher: Das Zertifikat des Servers ist ung\u00FCltig oder "
    L"gilt nicht f\u00FCr diesen Server.";

class WebFailure : public InProcess, public testing::WithParamInterface<Failure> {};
TEST_P(WebFailure, IsSaidInTheLanguageOfTheProgram) {
  EXPECT_EQ(answerText({.error = GetParam().error}).c_str(), narrow(GetParam().english));
  useTexts(kGerman);
  EXPECT_EQ(answerText({.error = GetParam().error}).c_str(), narrow(GetParam().german));
}
INSTANTIATE_TEST_SUITE_P(, WebFailure,
                         testing::Values(Failure{3, kNoUrlEnglish, kNoUrlGerman},
                                         Failure{123, kNoUrlEnglish, kNoUrlGerman},
                                         Failure{12005, kNoUrlEnglish, kNoUrlGerman},
                                         Failure{12006, kNoUrlEnglish, kNoUrlGerman},
                                         Failure{12002, L"The server did not answer in time.",
                                                 L"Der Server hat nicht rechtzeitig geantwortet."},
                                         Failure{12007, L"No server of this name was found.",
                                                 L"Ein Server dieses Namens wurde nicht gefunden."},
                                         Failure{12029, L"The server cannot be reached, or refuses the connection.",
                                                 L"Der Server ist nicht erreichbar oder lehnt die Verbindung ab."},
                                         Failure{12030, L"The connection ended before the answer was complete.",
                                                 L"Die Verbindung endete, bevor die Antwort vollst\u00E4ndig war."},
                                         Failure{12152, L"What the server sent is not an answer of HTTP.",
                                                 L"Was der Server sendet, ist keine Antwort in HTTP."},
                                         Failure{12157, kCertificateEnglish, kCertificateGerman},
                                         Failure{12175, kCertificateEnglish, kCertificateGerman},
                                         Failure{8, L"There is not enough memory for the answer.",
                                                 L"Der Speicher reicht f\u00FCr die Antwort nicht aus."},
                                         Failure{14, L"There was no answer. The system's error code is 14.",
                                                 L"Es kam keine Antwort. Der Fehlercode des Systems ist 14."}),
                         [](auto const & row) { return std::to_string(row.param.error); });

} // namespace
} // namespace modeler
