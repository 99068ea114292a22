#include "aplatfrm.hpp"

#include "diagnostics/internal_errors.hpp"
#include "sv0105/application/testapplication.hpp"
#include "system/uuid_text.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

using kivtest::InternalErrors;
using SV::String;

namespace {

// Moments.

SYSTEMTIME moment = {};
void WINAPI tellMoment(SYSTEMTIME * now) { *now = moment; }

std::string momentText(WORD hour, WORD minute, WORD second, bool withSeconds) {
  moment.wDay = 3;
  moment.wMonth = 7;
  moment.wYear = 2026;
  moment.wHour = hour;
  moment.wMinute = minute;
  moment.wSecond = second;
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll",
                          {{"GetLocalTime", reinterpret_cast<void *>(tellMoment)}});
  String text("before");
  Kiv_GetCurrentDateTimeString(text, withSeconds);
  return text.c_str();
}

TEST(DateTimeText, HasAPointBetweenMinuteAndSecond) {
  EXPECT_EQ(momentText(14, 5, 9, true), "03.07.2026, 14:05.09");
  EXPECT_EQ(momentText(14, 5, 9, false), "03.07.2026, 14:05");
}

TEST(DateTimeText, HasAnHourWithoutLeadingZero) {
  EXPECT_EQ(momentText(7, 30, 0, true), "03.07.2026, 7:30.00");
  EXPECT_EQ(momentText(0, 0, 0, false), "03.07.2026, 0:00");
}

TEST(DateTimeText, IsTheLocalTime) {
  SYSTEMTIME now = {};
  String text;
  char wanted[64];
  do { // until no minute ends in between
    GetLocalTime(&now);
    Kiv_GetCurrentDateTimeString(text, false);
    std::snprintf(wanted, sizeof wanted, "%02d.%02d.%04d, %d:%02d", now.wDay, now.wMonth, now.wYear, now.wHour,
                  now.wMinute);
    GetLocalTime(&moment);
  } while (moment.wMinute != now.wMinute);
  EXPECT_STREQ(text.c_str(), wanted);
}

TEST(StartupMoment, IsThatOfLoadingTheLibrary) {
  FILETIME created, unused, local;
  ASSERT_TRUE(GetProcessTimes(GetCurrentProcess(), &created, &unused, &unused, &unused));
  FileTimeToLocalFileTime(&created, &local);
  SYSTEMTIME start = {};
  FileTimeToSystemTime(&local, &start);
  auto const seconds = [](int hour, int minute, int second) { return (hour * 60 + minute) * 60 + second; };
  SV::Time const & time = *Kiv_GetStartupTime();
  int const late =
      seconds(static_cast<int>(time.GetHour()), static_cast<int>(time.GetMin()), static_cast<int>(time.GetSec())) -
      seconds(start.wHour, start.wMinute, start.wSecond);
  constexpr int day = 24 * 60 * 60;
  EXPECT_LE((late + day) % day, 120);              // the machine may be busy
  if (start.wHour != 23 || time.GetHour() == 23) { // not over midnight
    EXPECT_EQ(*Kiv_GetStartupDate(), SV::Date(start.wDay, start.wMonth, start.wYear));
  }
}

TEST(StartupMoment, StaysAndIsOneObjectForAll) {
  SV::Time const before = *Kiv_GetStartupTime();
  Sleep(20);
  EXPECT_EQ(*Kiv_GetStartupTime(), before);
  EXPECT_EQ(Kiv_GetStartupTime(), Kiv_GetStartupTime());
  Kiv_GetStartupDate()->ChangeYear(1999);
  EXPECT_EQ(Kiv_GetStartupDate()->GetYear(), 1999u);
}

// Identifiers.

TEST(NewUUID, IsALowerCaseTextThatNeverRepeats) {
  std::set<std::string> ids;
  for (int i = 0; i < 200; ++i) {
    std::string const id = Kiv_GetNewUUID().c_str();
    ASSERT_EQ(id.size(), 36u) << id;
    for (std::size_t at = 0; at < id.size(); ++at) {
      bool const isDash = at == 8 || at == 13 || at == 18 || at == 23;
      ASSERT_NE(std::strchr(isDash ? "-" : "0123456789abcdef", id[at]), nullptr) << id;
    }
    ASSERT_TRUE(ids.insert(id).second) << id;
  }
}

using uuidtext::giveNoText;
using uuidtext::giveText;
using uuidtext::released;
using uuidtext::useForText;

TEST(NewUUID, GivesTheSystemsTextBackInLowerCase) {
  useForText(giveText);
  EXPECT_STREQ(Kiv_GetNewUUID().c_str(), "abcdef01-2345-6789-abcd-ef0123456789");
  EXPECT_EQ(released, 1);
}

TEST(NewUUID, WithoutATextIsReportedAndEmpty) {
  InternalErrors const errors;
  useForText(giveNoText);
  EXPECT_EQ(Kiv_GetNewUUID().Len(), 0);
  EXPECT_EQ(released, 0);
  EXPECT_EQ(errors.places(), std::vector<std::string>{"atools.cpp (4090)"});
}

// Values of the product.

TEST(ProductValues, AreEmptyAtFirst) {
  EXPECT_EQ(Kiv_GetLoginType(), KIV_DB_SINGLE_SIGN_ON_OFF);
  EXPECT_EQ(Kiv_GetCurrentUserDisplayName().Len(), 0);
  EXPECT_EQ(Kiv_GetUserListChangeCounter(), 0);
  EXPECT_EQ(Kiv_GetSyntaxChecksLevel().Len(), 0);
  EXPECT_TRUE(Kiv_Is_DBConnected());
}

TEST(ProductValues, OfTheLoginAreTheirNumbers) {
  EXPECT_EQ(KIV_DB_SINGLE_SIGN_ON_OFF, 0);
  EXPECT_EQ(KIV_DB_SINGLE_SIGN_ON, 1);
}

TEST(ProductValues, AreWhatWasStored) {
  Kiv_SetLoginType(KIV_DB_SINGLE_SIGN_ON);
  Kiv_SetCurrentUserDisplayName("J\xFCrgen");
  Kiv_SetUserListChangeCounter(-7);
  Kiv_SetSyntaxChecksLevel("strict");
  EXPECT_EQ(Kiv_GetLoginType(), KIV_DB_SINGLE_SIGN_ON);
  EXPECT_STREQ(Kiv_GetCurrentUserDisplayName().c_str(), "J\xFCrgen");
  EXPECT_EQ(Kiv_GetUserListChangeCounter(), -7);
  EXPECT_STREQ(Kiv_GetSyntaxChecksLevel().c_str(), "strict");
  Kiv_SetLoginType(static_cast<KivDBSingleSignOnStatus>(99));
  EXPECT_EQ(static_cast<int>(Kiv_GetLoginType()), 99);
}

TEST(DatabaseConnection, IsWhatTheLinkedWordSaysAtTheMoment) {
  short words[] = {1, 0, 1}; // the words beside it say nothing
  short & connected = words[1];
  Kiv_SetDBConnected_Link(&connected);
  EXPECT_FALSE(Kiv_Is_DBConnected());
  for (short const yes : {1, -1, 0x100, -0x8000}) {
    connected = yes;
    EXPECT_TRUE(Kiv_Is_DBConnected()) << yes;
  }
  connected = 0;
  EXPECT_FALSE(Kiv_Is_DBConnected());
}

TEST(DatabaseConnection, IsThereAgainWhenTheLinkIsTakenBack) {
  short const connected = 0;
  Kiv_SetDBConnected_Link(&connected);
  EXPECT_FALSE(Kiv_Is_DBConnected());
  Kiv_SetDBConnected_Link(nullptr);
  EXPECT_TRUE(Kiv_Is_DBConnected());
}

// Names in the database.

struct Language {
  char const * id;
  char const * administrator;
  char const * userGroup;
};

class NamesInTheDatabase : public ToolkitTest, public testing::WithParamInterface<Language> {};

TEST_P(NamesInTheDatabase, FollowTheLanguage) {
  SV::ResMgr pack(String("language\\") + GetParam().id + "\\kivara72.dll");
  SV::Resource::SetResManager(&pack);
  EXPECT_STREQ(Kiv_GetAdminUserName().c_str(), GetParam().administrator);
  EXPECT_STREQ(Kiv_GetKivaraUserGroupName().c_str(), GetParam().userGroup);
  EXPECT_EQ(Kiv_GetpAdminUserName(), Kiv_GetAdminUserName().c_str());
  EXPECT_EQ(Kiv_GetpKivaraUserGroupName(), Kiv_GetKivaraUserGroupName().c_str());
  SV::Resource::SetResManager(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Packs, NamesInTheDatabase,
                         testing::Values(Language{"2057", "Administrator", "kivara users"},
                                         Language{"1031", "Administrator", "kivara-Benutzer"}),
                         [](auto const & each) { return each.param.id; });

} // namespace
