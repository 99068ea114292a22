// Files with a database account that are damaged by chance.

#include "auser.hpp"

#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "userfile.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

constexpr std::size_t kFiles = 2'000;

using Account = std::pair<std::string, std::string>;

/// Name and password by the rules of the file, read another way.
Account expected(std::string const & bytes) {
  std::string const line = bytes.substr(0, std::min(bytes.find('\0'), bytes.size()));
  auto const [plain, length] = KivCryptoUtils::AESDecrypt(line.c_str());
  std::string const text(plain != nullptr ? plain : "");
  KivCryptoUtils::Free(plain);
  std::size_t const first = text.find('\n');
  std::size_t const second = text.find('\n', first + 1);
  if (first == std::string::npos || second == std::string::npos || text.find('\n', second + 1) != std::string::npos)
    return {};
  return {text.substr(first + 1, second - first - 1), text.substr(second + 1)};
}

TEST(DbUserDamage, GivesAnotherAccountOrNone) {
  support::GuardPages const guard;
  support::Random random(27);
  support::TempFolder const folder;
  std::string const name = folder / "account.txt";
  std::size_t unusable = 0;
  std::size_t usable = 0;
  for (std::size_t i = 0; i < support::times(kFiles); ++i) {
    std::string const bytes = kivtest::damagedAccount(random);
    support::writeFile(name, bytes);
    KivDBUserUtils user(name.c_str());
    ASSERT_TRUE(user.IsExternalDefined());
    Account const account(user.GetDBUserName("").c_str(), user.GetDBUserPassword("").c_str());
    // Beyond that the runtime's reading of text decides: an end-of-file character, a carriage return, a line that is too long.
    if (bytes.find_first_of("\x1A\r") == std::string::npos && bytes.size() < 4'096) {
      ASSERT_EQ(account, expected(bytes)) << i << ": " << bytes;
    }
    ++(account == Account() ? unusable : usable);
  }
  EXPECT_GT(unusable, 0u);
  EXPECT_GT(usable, 0u);
}

} // namespace
