#include "atools.hpp"

#include "sv0105/application/testapplication.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using SV::String;

namespace {

class ErrorString : public ToolkitTest, public testing::WithParamInterface<char const *> {
protected:
  ErrorString() { SV::Resource::SetResManager(&pack); }
  ~ErrorString() override { SV::Resource::SetResManager(nullptr); }

  SV::ResMgr pack{String("language\\") + GetParam() + "\\kivara72.dll"};
};

std::string textOf(int code) { return Kiv_GetErrorString(static_cast<KivErrorCode>(code)).c_str(); }

TEST_P(ErrorString, IsATextOfItsOwnForEachCode) {
  std::set<std::string> texts;
  for (int code = 1; code <= 119; ++code) {
    std::string const text = textOf(code);
    EXPECT_TRUE(text.ends_with('.')) << code;
    EXPECT_TRUE(texts.insert(text).second) << code << ' ' << text;
  }
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_P(ErrorString, IsTheResourceAt4800AndTheCode) {
  for (int code = 1; code <= 118; ++code)
    ASSERT_EQ(textOf(code),
              SV::Resource::LoadString(SV::ResId(0x2000000ul + 4800 + static_cast<unsigned>(code))).c_str());
  EXPECT_EQ(textOf(119), SV::Resource::LoadString(0x2000000 + 4999).c_str());
}

TEST_P(ErrorString, OfOtherCodesIsAMissingResource) {
  for (int const code : {0, -1, 120, 4998, 4999, 100000})
    EXPECT_EQ(textOf(code), "") << code;
  ASSERT_EQ(application.exceptions.size(), 1u); // the same text each time, which is asked for once
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
  EXPECT_EQ(application.exceptions[0].arg & 0xFFFF, 0u);
}

TEST_P(ErrorString, StaysWhereItIs) {
  EXPECT_EQ(&Kiv_GetErrorString(KIV_ERROR_OUT_OF_MEMORY), &Kiv_GetErrorString(KIV_ERROR_OUT_OF_MEMORY));
}

INSTANTIATE_TEST_SUITE_P(Language, ErrorString, testing::Values("2057", "1031"));

TEST(ErrorTexts, FollowTheLanguage) {
  std::map<char const *, char const *> const texts = {{"2057", "There is not enough memory."},
                                                      {"1031", "Es ist nicht gen\xFCgend Arbeitsspeicher vorhanden."}};
  for (auto const & [language, text] : texts) {
    SV::ResMgr pack(String("language\\") + language + "\\kivara72.dll");
    EXPECT_STREQ(SV::Resource::LoadString(SV::ResId(0x2000000ul + 4800 + KIV_ERROR_OUT_OF_MEMORY, &pack)).c_str(),
                 text);
  }
}

} // namespace
