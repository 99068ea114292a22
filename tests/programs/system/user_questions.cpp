// user_questions QUESTION...: prints what the library says of users.
//   current                     the account of this process, asked twice
//   account [FILE]              the database account of a file
//   logon USER DOMAIN PASSWORD  whether that account is good, and how many more handles are open after further questions

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "auser.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <string>

namespace {

void printCurrent() {
  SV::String user;
  SV::String domain;
  bool const isFound = Kiv_GetCurrentUserAndDomain(user, domain);
  std::printf("found=%d user=%s domain=%s\n", isFound, user.c_str(), domain.c_str());
}

void printAccount(KivDBUserUtils & account) {
  std::printf("external=%d name=%s password=%s\n", account.IsExternalDefined(), account.GetDBUserName("").c_str(),
              account.GetDBUserPassword("").c_str());
}

DWORD openHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

void printLogon(char ** account) {
  constexpr int kMore = 5;
  std::printf("xp=%d good=%d\n", Kiv_IsAtLeastWindowsXP(), Kiv_LU(account[0], account[1], account[2]));
  DWORD const before = openHandles();
  for (int i = 0; i < kMore; ++i)
    Kiv_LU(account[0], account[1], account[2]);
  std::printf("more handles=%ld\n", static_cast<long>(openHandles()) - static_cast<long>(before));
}

} // namespace

int main(int argc, char ** argv) {
  KivCmdline::init(argc, argv, true, "log_users");
  std::string const question = argc > 1 ? argv[1] : "";
  if (question == "current") {
    printCurrent();
    printCurrent();
  } else if (question == "account" && argc == 2) {
    KivDBUserUtils account;
    printAccount(account);
  } else if (question == "account") {
    KivDBUserUtils account(argv[2]);
    printAccount(account);
  } else if (question == "logon" && argc == 5) {
    printLogon(argv + 2);
  } else {
    return 1;
  }
}
