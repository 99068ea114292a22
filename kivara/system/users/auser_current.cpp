// The Windows account of this process.

#include "auser.hpp"

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/openfile.hpp"
#include "system/users/heapblock.hpp"
#include "system/users/systemlibrary.hpp"

#define SECURITY_WIN32 // the interface for programs
#include <sspi.h>

#include <secext.h>

#include <cstring>

using SV::String;

namespace {

constexpr DWORD kNameSize = 260;
constexpr DWORD kPrincipalSize = 1'024;
constexpr char kFullDomainFlag[] = "getfulldomainname";
constexpr char kFullDomainEntry[] = "getfulldomainname=1";

String foundUser;
String foundDomain;

/// The functions of the system that the search needs.
struct Functions {
  decltype(&::OpenThreadToken) openThreadToken;
  decltype(&::OpenProcessToken) openProcessToken;
  decltype(&::GetTokenInformation) getTokenInformation;
  decltype(&::LookupAccountSidA) lookupAccountSid;
  decltype(&::GetUserNameExA) getUserNameEx;

  bool areThere() const {
    return openThreadToken != nullptr && openProcessToken != nullptr && getTokenInformation != nullptr &&
           lookupAccountSid != nullptr && getUserNameEx != nullptr;
  }
};

/// That of the thread where it impersonates somebody, otherwise that of the process; none when it cannot be opened.
handles::KernelObject openToken(Functions const & functions) {
  HANDLE token = nullptr;
  if (functions.openThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token))
    return handles::KernelObject(token);
  if (GetLastError() == ERROR_NO_TOKEN && functions.openProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token))
    return handles::KernelObject(token);
  return {};
}

/// The record of the token's user; none when the system does not give it.
kivara::HeapBlock readUser(Functions const & functions, HANDLE token) {
  DWORD size = 0;
  if (functions.getTokenInformation(token, TokenUser, nullptr, 0, &size) || GetLastError() != ERROR_INSUFFICIENT_BUFFER)
    return {};
  kivara::HeapBlock block = kivara::heapBlock(size);
  if (!block || !functions.getTokenInformation(token, TokenUser, block.get(), size, &size))
    return {};
  return block;
}

/// A line of "login.ini" without its end.
bool isFullDomainEntry(char * line) {
  for (char const end : {'\n', '\r'})
    if (std::size_t const length = std::strlen(line); length != 0 && line[length - 1] == end)
      line[length - 1] = '\0';
  return std::strcmp(line, kFullDomainEntry) == 0;
}

bool hasFullDomainEntry() {
  FILE * const file = kivara::openForThisProgram(Kiv_GetProgramPathFilename("login.ini").c_str(), "r");
  if (file == nullptr)
    return false;
  char line[2048 + 1];
  // The file stays open: it is read once in a process.
  while (std::fgets(line, sizeof line, file) != nullptr)
    if (isFullDomainEntry(line))
      return true;
  return false;
}

bool isFullDomainWanted() { return KivCmdline::Instance().isFlag(kFullDomainFlag) || hasFullDomainEntry(); }

bool findFullDomain(Functions const & functions) {
  char principal[kPrincipalSize] = "";
  ULONG size = kPrincipalSize;
  if (!functions.getUserNameEx(NameUserPrincipal, principal, &size))
    return false;
  foundDomain = String(principal).token(1, '@');
  return true;
}

/// Keeps the user as soon as it is known, though its full domain may not be found.
bool find(Functions const & functions) {
  handles::KernelObject const token = openToken(functions);
  if (!token)
    return false;
  kivara::HeapBlock const record = readUser(functions, token.get());
  if (!record)
    return false;
  char name[kNameSize] = "";
  char domain[kNameSize] = "";
  DWORD nameSize = kNameSize;
  DWORD domainSize = kNameSize;
  SID_NAME_USE use;
  PSID const user = static_cast<TOKEN_USER const *>(record.get())->User.Sid;
  if (!functions.lookupAccountSid(nullptr, user, name, &nameSize, domain, &domainSize, &use))
    return false;
  foundUser = name;
  if (isFullDomainWanted())
    return findFullDomain(functions);
  foundDomain = domain;
  return true;
}

bool search() {
  kivara::SystemLibrary accounts("advapi32");
  kivara::SystemLibrary names("secur32");
  Functions const functions = {accounts.function<decltype(::OpenThreadToken)>("OpenThreadToken"),
                               accounts.function<decltype(::OpenProcessToken)>("OpenProcessToken"),
                               accounts.function<decltype(::GetTokenInformation)>("GetTokenInformation"),
                               accounts.function<decltype(::LookupAccountSidA)>("LookupAccountSidA"),
                               names.function<decltype(::GetUserNameExA)>("GetUserNameExA")};
  bool const isFound = functions.areThere() && find(functions);
  KivDebugOut(("[alu] Using domain " + foundDomain + "\n").c_str());
  return isFound;
}

} // namespace

bool Kiv_GetCurrentUserAndDomain(String & user, String & domain) {
  bool const isFound = foundUser.Len() != 0 || search();
  user = foundUser;
  domain = foundDomain;
  return isFound;
}
