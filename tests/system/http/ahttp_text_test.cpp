// The text of a body: UTF-8 where that is forced, otherwise the ANSI code page.

#include "httpclient.hpp"

#include "support/imports/import_hook.hpp"

#include <gtest/gtest.h>

#include <tuple>

using namespace kivtest;

namespace {

/// By the system's own conversion.
std::wstring fromAnsi(std::string const & bytes) {
  std::wstring text(bytes.size(), L'\0');
  int const length = MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, bytes.data(), static_cast<int>(bytes.size()),
                                         text.data(), static_cast<int>(text.size()));
  return text.substr(0, static_cast<std::size_t>(length));
}

WString contentOf(std::string const & bytes, wchar_t const * charset, std::string const & headers = "") {
  HttpServer server;
  server.answer("/", okWith(bytes, headers));
  KivHTTPClient client(wide(server.url("/")), nullptr);
  if (charset != nullptr) {
    EXPECT_TRUE(client.SetForceCharset(charset));
  }
  EXPECT_TRUE(get(client));
  EXPECT_EQ(body(client), bytes);
  EXPECT_EQ(client.GetResponseCharset(), charset != nullptr ? charset : L"");
  return client.GetResponseContent();
}

constexpr char kUtf8[] = "Gr\xC3\xBC\xC3\x9F"
                         "e \xE2\x82\xAC \xF0\x9F\x8E\xB5";

class HttpUtf8Name : public testing::TestWithParam<wchar_t const *> {};
TEST_P(HttpUtf8Name, DecodesUtf8) { EXPECT_EQ(contentOf(kUtf8, GetParam()), L"Gr\u00FC\u00DFe \u20AC \U0001F3B5"); }
INSTANTIATE_TEST_SUITE_P(Names, HttpUtf8Name, testing::Values(L"UTF-8", L"utf-8", L"Utf-8", L"utf-8; more", L"utf-80"));

class HttpAnsiName : public testing::TestWithParam<wchar_t const *> {};
TEST_P(HttpAnsiName, DecodesTheAnsiCodePage) { EXPECT_EQ(contentOf(kUtf8, GetParam()), fromAnsi(kUtf8).c_str()); }
INSTANTIATE_TEST_SUITE_P(Names, HttpAnsiName, testing::Values(L"", L"utf8", L"utf-", L" utf-8", L"iso-8859-1"));

TEST(HttpText, WithoutAForcedCharsetIsAnsiWhateverTheServerSays) {
  EXPECT_EQ(contentOf(kUtf8, nullptr, "Content-Type: text/plain; charset=utf-8\r\n"), fromAnsi(kUtf8).c_str());
}

TEST(HttpText, OfEightBitsIsThatOfTheCodePage) {
  std::string bytes;
  for (int c = 1; c < 256; ++c)
    bytes += static_cast<char>(c);
  std::wstring const expected = fromAnsi(bytes);
  EXPECT_EQ(contentOf(bytes, nullptr), expected.c_str());
  EXPECT_EQ(expected.substr(0, 127), std::wstring(bytes.begin(), bytes.begin() + 127));
}

struct Broken {
  char const * bytes;
  wchar_t const * text;
};
void PrintTo(Broken const & broken, std::ostream * out) { *out << testing::PrintToString(broken.bytes); }

/// How many U+FFFD stand for a broken character differs among systems; what is whole stays.
std::wstring withoutDoubles(std::wstring const & text) {
  std::wstring result;
  for (wchar_t const c : text)
    if (c != 0xFFFD || !result.ends_with(0xFFFD))
      result += c;
  return result;
}

class HttpBrokenUtf8 : public testing::TestWithParam<Broken> {};
TEST_P(HttpBrokenUtf8, KeepsWhatIsWhole) {
  EXPECT_EQ(withoutDoubles(contentOf(GetParam().bytes, L"utf-8").c_str()), GetParam().text);
}
INSTANTIATE_TEST_SUITE_P(Texts, HttpBrokenUtf8,
                         testing::Values(Broken{"a\xFFz", L"a\uFFFDz"}, Broken{"a\xC3", L"a\uFFFD"},
                                         Broken{"a\xC3z", L"a\uFFFDz"}, Broken{"\x80\x81", L"\uFFFD"},
                                         Broken{"a\xE2\x82", L"a\uFFFD"}, Broken{"a\xC0\x80z", L"a\uFFFDz"},
                                         Broken{"a\xED\xA0\x80z", L"a\uFFFDz"}, Broken{"\xF0\x9F\x8E", L"\uFFFD"},
                                         Broken{"a\xF8\x88\x80\x80\x80z", L"a\uFFFDz"}));

TEST(HttpText, AByteOrderMarkIsACharacter) { EXPECT_EQ(contentOf("\xEF\xBB\xBFtext", L"utf-8"), L"\uFEFFtext"); }

// Conversions that fail

std::vector<std::tuple<UINT, DWORD>> conversions;
constexpr UINT kNone = 1; // no code pages
constexpr UINT kAll = 2;
UINT failing = kNone;

int WINAPI convertOrFail(UINT codePage, DWORD flags, char const * bytes, int size, wchar_t * text, int room) {
  conversions.emplace_back(codePage, flags);
  if (failing == kAll || failing == codePage)
    return 0;
  return MultiByteToWideChar(codePage, flags, bytes, size, text, room);
}

class HttpFailingConversion : public testing::Test {
protected:
  HttpFailingConversion() {
    server.answer("/", okWith(kUtf8));
    client.UpdateUrl(wide(server.url("/")));
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"MultiByteToWideChar", reinterpret_cast<void *>(convertOrFail)}});
    conversions.clear();
  }
  ~HttpFailingConversion() override { failing = kNone; }

  using Conversion = std::tuple<UINT, DWORD>;
  HttpServer server;
  ClientWithFormerAnswer client{server};
};

TEST_F(HttpFailingConversion, OfUtf8FallsBackToTheAnsiCodePage) {
  failing = CP_UTF8;
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), fromAnsi(kUtf8).c_str());
  EXPECT_EQ(conversions[0], Conversion(CP_UTF8, 0));
  EXPECT_EQ(conversions[1], Conversion(CP_ACP, MB_PRECOMPOSED));
}

TEST_F(HttpFailingConversion, OfBothLeavesTheFormerTextAndTheNewBytes) {
  failing = kAll;
  EXPECT_TRUE(get(client));
  EXPECT_EQ(client.GetResponseContent(), L"former");
  EXPECT_EQ(body(client), kUtf8);
}

} // namespace
