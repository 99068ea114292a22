// Whether an account is good.

#include "auser.hpp"

#include "aplatfrm.hpp"
#include "system/users/ntlmexchange.hpp"
#include "system/users/systemlibrary.hpp"
#include "tools/winapi.hpp"

#include <cstddef>
#include <iterator>

namespace {

constexpr DWORD kOverTheNetwork = 3;
constexpr DWORD kUsualProvider = 0;

using LogOn = BOOL WINAPI(char *, char *, char *, DWORD, DWORD, HANDLE *);

/// The name of the system's function. It is put together here, since it must not stand in the library.
class HiddenName {
public:
  HiddenName() {
    for (std::size_t i = 0; i < std::size(kCodes); ++i)
      text_[i] = static_cast<char>(kCodes[i] ^ kMask);
  }
  char const * text() const { return text_; }

private:
  static constexpr unsigned char kMask = 0x15;
  // Volatile, or the compiler would put the name together itself.
  static constexpr unsigned char const volatile kCodes[] = {'L' ^ kMask, 'o' ^ kMask, 'g' ^ kMask, 'o' ^ kMask,
                                                            'n' ^ kMask, 'U' ^ kMask, 's' ^ kMask, 'e' ^ kMask,
                                                            'r' ^ kMask, 'A' ^ kMask};
  char text_[std::size(kCodes) + 1] = "";
};

bool logsOn(char * user, char * domain, char * password) {
  kivara::SystemLibrary library("advapi32");
  auto * const logOn = library.function<LogOn>(HiddenName().text());
  HANDLE session = nullptr; // stays open, as the header says
  return logOn != nullptr && logOn(user, domain, password, kOverTheNetwork, kUsualProvider, &session) != FALSE;
}

} // namespace

bool Kiv_LU(char * user, char * domain, char * password) {
  if (user == nullptr || domain == nullptr || password == nullptr)
    return false;
  return Kiv_IsAtLeastWindowsXP() ? logsOn(user, domain, password) : kivara::passesNtlm(user, domain, password);
}
