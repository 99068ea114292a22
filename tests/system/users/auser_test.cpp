// The database account of a file. Files that are damaged by chance are in auser_damage_test.cpp.

#include "auser.hpp"

#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "support/processes/debug_lines.hpp"
#include "tools/winapi.hpp"
#include "userfile.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <new>
#include <ostream>
#include <string>

using kivtest::encrypted;
using SV::String;

namespace {

class DbUser : public testing::Test {
protected:
  /// A file with these bytes.
  std::string written(std::string const & bytes) const {
    support::writeFile(folder / "account.txt", bytes);
    return folder / "account.txt";
  }

  support::TempFolder const folder;
};

TEST_F(DbUser, IsTheSecondLineAndThePasswordTheThird) {
  KivDBUserUtils user(written(encrypted("first\nname\npass word")).c_str());
  EXPECT_TRUE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserName(""), "name");
  EXPECT_EQ(user.GetDBUserPassword(""), "pass word");
}

TEST_F(DbUser, IsGivenWhateverTheArgument) {
  KivDBUserUtils user(written(encrypted("\nname\npassword")).c_str());
  EXPECT_EQ(user.GetDBUserName("another"), "name");
  EXPECT_EQ(user.GetDBUserPassword("another"), "password");
}

TEST_F(DbUser, MayHaveEmptyLines) {
  KivDBUserUtils user(written(encrypted("\n\n")).c_str());
  EXPECT_TRUE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserName(""), "");
  EXPECT_EQ(user.GetDBUserPassword(""), "");
  KivDBUserUtils withoutName(written(encrypted("\n\npassword")).c_str());
  EXPECT_EQ(withoutName.GetDBUserPassword(""), "password");
}

TEST_F(DbUser, KeepsAllCharactersButTheLineFeed) {
  std::string all;
  for (int c = 1; c < 256; ++c)
    if (c != '\n')
      all += static_cast<char>(c);
  KivDBUserUtils user(written(encrypted("\n" + all + "\n" + all)).c_str());
  EXPECT_EQ(user.GetDBUserName(""), all.c_str());
  EXPECT_EQ(user.GetDBUserPassword(""), all.c_str());
}

TEST_F(DbUser, IsReadFromDigitsOfEitherCase) {
  std::string line = encrypted("\nname\npassword");
  for (char & c : line)
    c = static_cast<char>(std::tolower(c));
  KivDBUserUtils user(written(line).c_str());
  EXPECT_EQ(user.GetDBUserName(""), "name");
}

TEST_F(DbUser, OfTheLongestLineIsRead) {
  std::string const password(2'032 - 2, 'p'); // 127 blocks of 16 characters, in 4,064 digits
  std::string const line = encrypted("\n\n" + password);
  EXPECT_EQ(line.size(), 4'064u);
  KivDBUserUtils user(written(line).c_str());
  EXPECT_EQ(user.GetDBUserPassword(""), password.c_str());
}

TEST_F(DbUser, OfALineOf4096BytesIsNotRead) {
  KivDBUserUtils user(written(encrypted("\n\n" + std::string(2'048 - 2, 'p'))).c_str());
  EXPECT_TRUE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserPassword(""), "");
}

/// Content that is no account.
struct Unusable {
  char const * why;
  std::string bytes;
};
void PrintTo(Unusable const & unusable, std::ostream * out) { *out << unusable.why; }

class DbUserFile : public DbUser, public testing::WithParamInterface<Unusable> {};
TEST_P(DbUserFile, IsThereThoughNameAndPasswordAreEmpty) {
  KivDBUserUtils user(written(GetParam().bytes).c_str());
  EXPECT_TRUE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserName(""), "");
  EXPECT_EQ(user.GetDBUserPassword(""), "");
}
std::string const kGood = encrypted("first\nname\npassword");
INSTANTIATE_TEST_SUITE_P(
    Of, DbUserFile,
    testing::Values(Unusable{"no byte", ""}, Unusable{"one line in the text", encrypted("name")},
                    Unusable{"two lines in the text", encrypted("first\nname")},
                    Unusable{"four lines in the text", encrypted("first\nname\npassword\nmore")},
                    Unusable{"a line feed after the third line", encrypted("first\nname\npassword\n")},
                    Unusable{"the empty text", encrypted("")}, Unusable{"plain text", "first\nname\npassword"},
                    Unusable{"a line feed after the line", kGood + "\n"},
                    Unusable{"a carriage return and a line feed after it", kGood + "\r\n"},
                    Unusable{"a blank after the line", kGood + " "}, Unusable{"an empty line first", "\n" + kGood},
                    Unusable{"a digit less", kGood.substr(1)}, Unusable{"what is no digit", "G" + kGood.substr(1)},
                    Unusable{"the old text form", encrypted("first\nname\npassword", 0)}));

TEST_F(DbUser, EndsAtANulInTheFile) {
  KivDBUserUtils user(written(kGood + std::string("\0rest\n", 6)).c_str());
  EXPECT_EQ(user.GetDBUserName(""), "name");
}

// The file

TEST_F(DbUser, OfANamedFileThatIsMissingIsReported) {
  support::DebugLines const debug;
  KivDBUserUtils user((folder / "missing.txt").c_str());
  EXPECT_FALSE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserName(""), "");
  EXPECT_EQ(user.GetDBUserPassword(""), "");
  EXPECT_EQ(debug.all(), (std::vector<std::string>{"File " + folder / "missing.txt" +
                                                   " for KIV_BOOT information was not found!\n"}));
}

TEST_F(DbUser, OfNullIsMissing) {
  support::DebugLines const debug;
  KivDBUserUtils user(nullptr);
  EXPECT_FALSE(user.IsExternalDefined());
  EXPECT_EQ(debug.all(), (std::vector<std::string>{"File  for KIV_BOOT information was not found!\n"}));
}

TEST_F(DbUser, OfAFileThatIsThereIsNotReported) {
  support::DebugLines const debug;
  KivDBUserUtils const user(written("no account").c_str());
  EXPECT_EQ(debug.all(), std::vector<std::string>{});
}

/// The program's folder has no file of the default name.
TEST_F(DbUser, OfTheDefaultFileThatIsMissingIsNotReported) {
  support::DebugLines const debug;
  KivDBUserUtils user;
  EXPECT_FALSE(user.IsExternalDefined());
  EXPECT_EQ(user.GetDBUserName(""), "");
  EXPECT_EQ(debug.all(), std::vector<std::string>{});
}

TEST_F(DbUser, KeepsItsFileOpenUntilItsEnd) {
  std::string const name = written(kGood);
  {
    KivDBUserUtils const user(name.c_str());
    EXPECT_FALSE(DeleteFileA(name.c_str()));
  }
  EXPECT_TRUE(DeleteFileA(name.c_str()));
}

/// What an object looks like in memory.
struct Fields {
  FILE * file;
  String first, name, password;
};
static_assert(sizeof(Fields) == sizeof(KivDBUserUtils));

TEST_F(DbUser, HasItsFieldsInOrder) {
  KivDBUserUtils user(written(kGood).c_str());
  auto const * const fields = reinterpret_cast<Fields const *>(&user);
  EXPECT_NE(fields->file, nullptr);
  EXPECT_EQ(fields->first, "first");
  EXPECT_EQ(fields->name, "name");
  EXPECT_EQ(fields->password, "password");
}

TEST_F(DbUser, WithoutMemoryIsEmptyOrThrowsAndNothingStaysOpen) {
  std::string const name = written(encrypted("\nname\n" + std::string(1'914, 'p')));
  int empty = 0;
  int thrown = 0;
  for (std::size_t most = 1'900; most < 2'000; ++most) {
    try {
      support::AllocationLimit const limit(most);
      KivDBUserUtils user(name.c_str());
      empty += user.GetDBUserPassword("").Len() == 0 ? 1 : 0; // the cipher reports it like any other failure
    } catch (std::bad_alloc const &) {
      ++thrown;
    }
  }
  EXPECT_GT(empty, 0);
  EXPECT_GT(thrown, 0);
  EXPECT_TRUE(DeleteFileA(name.c_str()));
}

} // namespace
