#include "aacceler.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "base/modules.hpp"
#include "base/newuuid.hpp"
#include "base/textids.hpp"

using SV::Date;
using SV::String;
using SV::Time;

namespace {

constexpr unsigned kLineNoUUIDText = 4090;

Date startupDate;
Time startupTime;

KivDBSingleSignOnStatus loginType = KIV_DB_SINGLE_SIGN_ON_OFF;
String currentUserDisplayName;
long userListChangeCounter = 0;
String syntaxChecksLevel;
short const volatile * databaseConnected = nullptr; // the database layer may change it on a thread of its own

KivStringAcceleratorTable & texts() { return *KivStringAcceleratorTable::GetGlobal(); }

} // namespace

KivDBSingleSignOnStatus Kiv_GetLoginType() { return loginType; }
void Kiv_SetLoginType(KivDBSingleSignOnStatus type) { loginType = type; }

String Kiv_GetCurrentUserDisplayName() { return currentUserDisplayName; }
void Kiv_SetCurrentUserDisplayName(String const & name) { currentUserDisplayName = name; }

long Kiv_GetUserListChangeCounter() { return userListChangeCounter; }
void Kiv_SetUserListChangeCounter(long counter) { userListChangeCounter = counter; }

String Kiv_GetSyntaxChecksLevel() { return syntaxChecksLevel; }
void Kiv_SetSyntaxChecksLevel(String const & level) { syntaxChecksLevel = level; }

void Kiv_SetDBConnected_Link(short const * link) { databaseConnected = link; }
bool Kiv_Is_DBConnected() { return databaseConnected == nullptr || *databaseConnected != 0; }

String const & Kiv_GetAdminUserName() { return texts().GetString(kivara::texts::kAdminUser); }
char const * Kiv_GetpAdminUserName() { return texts().GetCharPtr(kivara::texts::kAdminUser); }
String const & Kiv_GetKivaraUserGroupName() { return texts().GetString(kivara::texts::kUserGroup); }
char const * Kiv_GetpKivaraUserGroupName() { return texts().GetCharPtr(kivara::texts::kUserGroup); }

Date * Kiv_GetStartupDate() { return &startupDate; }
Time * Kiv_GetStartupTime() { return &startupTime; }

void Kiv_GetCurrentDateTimeString(String & out, bool withSeconds) {
  Date const date;
  Time const time;
  kivara::BoundedText<64> const text(withSeconds ? "%02d.%02d.%04d, %d:%02d.%02d" : "%02d.%02d.%04d, %d:%02d",
                                     static_cast<int>(date.GetDay()), static_cast<int>(date.GetMonth()),
                                     static_cast<int>(date.GetYear()), static_cast<int>(time.GetHour()),
                                     static_cast<int>(time.GetMin()), static_cast<int>(time.GetSec()));
  out = text.c_str();
}

String Kiv_GetNewUUID() {
  String uuid = kivara::newUuid();
  if (uuid.Len() == 0)
    displayErrorMessage(kivara::modules::kAtools, kLineNoUUIDText);
  return uuid.toLower();
}
