#include "utf8fit.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using SV::unitsThatFit;

namespace {

int utf8Bytes(std::wstring const & wide) {
  return wide.empty() ? 0
                      : WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0, nullptr,
                                            nullptr);
}

/// The longest start of whole characters that has at most so many bytes, as the system counts them.
std::size_t expectedUnits(std::wstring const & wide, std::size_t most) {
  std::size_t units = 0;
  for (std::size_t end = 0; end <= wide.size(); ++end) {
    bool const splitsPair = end > 0 && end < wide.size() && IS_SURROGATE_PAIR(wide[end - 1], wide[end]);
    if (!splitsPair && static_cast<std::size_t>(utf8Bytes(wide.substr(0, end))) <= most)
      units = end;
  }
  return units;
}

} // namespace

TEST(Utf8Fit, CountsWholeCharactersUpToTheLimit) {
  std::vector<std::wstring> const texts = {L"",
                                           L"abc",
                                           L"\u00E4\u00F6\u00FC",
                                           L"\u20AC\u20AC",
                                           L"a\u00E4\u20ACz",
                                           L"\x7F\x80\u07FF\u0800\uFFFF",
                                           L"\xD83D\xDE00\xD83D\xDE01",
                                           L"a\xD83D\xDE00z",
                                           L"\xD83D",
                                           L"a\xDE00z",
                                           L"\xD83D\xD83D\xDE00",
                                           L"\xD83D\xDE00\xDE00"};
  for (std::wstring const & text : texts)
    for (std::size_t most = 0; most <= 16; ++most)
      EXPECT_EQ(unitsThatFit(text.data(), text.size(), most), expectedUnits(text, most))
          << testing::PrintToString(text) << " in " << most;
}

TEST(Utf8Fit, FillsTheLimitToItsLastByte) {
  EXPECT_EQ(unitsThatFit(L"\u20AC\u20ACa", 3, 7), 3u);
  EXPECT_EQ(unitsThatFit(L"\u20AC\u20ACa", 3, 6), 2u);
  EXPECT_EQ(unitsThatFit(L"\u20AC\u20ACa", 3, 5), 1u);
}
