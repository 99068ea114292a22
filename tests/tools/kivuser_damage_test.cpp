// Files with a database account that are damaged by chance: the tool says what is wrong, or finds what the library finds.

#include "account.hpp"
#include "auser.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "system/users/userfile.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

constexpr std::size_t kFiles = 2'000;

TEST(KivuserDamage, IsReportedOrTheAccountIsThatOfTheLibrary) {
  support::GuardPages const guard;
  support::Random random(28);
  support::TempFolder const folder;
  std::string const file = folder / "account.txt";
  std::size_t sound = 0;
  for (std::size_t i = 0; i < support::times(kFiles); ++i) {
    std::string const bytes = kivtest::damagedAccount(random);
    support::writeFile(file, bytes);
    KivDBUserUtils library(file.c_str());
    std::string reason;
    std::optional<kivuser::Account> const account = kivuser::accountIn(bytes, reason);
    ASSERT_TRUE(account || !reason.empty()) << bytes;
    ASSERT_TRUE(!account || library.GetDBUserName("").Len() != 0) << bytes;
    if (account) {
      ++sound;
      ASSERT_EQ(library.GetDBUserName(""), account->name.c_str()) << bytes;
      ASSERT_EQ(library.GetDBUserPassword(""), account->password.c_str()) << bytes;
    }
  }
  EXPECT_GT(sound, 0u);
  EXPECT_LT(sound, support::times(kFiles));
}

} // namespace
