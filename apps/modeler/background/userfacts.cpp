#include "background/userfacts.hpp"

#include "texts/diagnosticstexts.hpp"
#include "tools/winapi.hpp"

#define SECURITY_WIN32
#include <secext.h>

using SV::String;

namespace modeler {
namespace {

constexpr char kAccountFile[] = "adbuser.txt";

String orNotKnown(String const & value) { return value.Len() > 0 ? value : text(kNotKnown); }

/// What the product shows for the user. It is asked of the system once, for all that show it.
String displayName() {
  if (Kiv_GetCurrentUserDisplayName().Len() == 0) {
    char name[256] = "";
    ULONG size = sizeof name;
    if (GetUserNameExA(NameDisplay, name, &size))
      Kiv_SetCurrentUserDisplayName(name);
  }
  return orNotKnown(Kiv_GetCurrentUserDisplayName());
}

bool isAdministrator() {
  BYTE group[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof group;
  BOOL isMember = FALSE;
  return CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, group, &size) &&
         CheckTokenMembership(nullptr, group, &isMember) && isMember;
}

} // namespace

String accountText(KivDBUserUtils & account) {
  if (!account.IsExternalDefined())
    return filled(kNoAccountFile, kAccountFile);
  String const name = account.GetDBUserName("");
  return name.Len() > 0 ? name : filled(kBadAccountFile, kAccountFile);
}

ISequence<Fact> userFacts() {
  KivDBUserUtils account;
  String user;
  String domain;
  Kiv_GetCurrentUserAndDomain(user, domain);
  return {{text(kUserName), orNotKnown(user)},
          {text(kDomain), orNotKnown(domain)},
          {text(kFullName), displayName()},
          {text(kIsAdministrator), text(isAdministrator() ? Text::Yes : Text::No)},
          {text(kDatabaseAccount), accountText(account)},
          {text(kAdapter), orNotKnown(Kiv_GetMACAsString())},
          {text(kInstallation), orNotKnown(Kiv_GetSystemIDAsString())}};
}

} // namespace modeler
