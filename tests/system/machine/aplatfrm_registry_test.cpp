// What is read from real values of the registry, which these tests write and remove.

#include "facts_program.hpp"

#include "aplatfrm.hpp"
#include "support/imports/import_hook.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <string>
#include <vector>

using kivtest::FactsProgram;
using SV::String;

namespace {

/// A key that was not there before, with all above it that was not; it goes away with this object.
class TemporaryKey {
public:
  TemporaryKey(HKEY root, std::string const & path, REGSAM view = 0) : root_(root), view_(view) {
    for (std::size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1))
      make(path.substr(0, end));
    make(path);
    RegOpenKeyExA(root, path.c_str(), 0, KEY_READ | KEY_WRITE | view, &key_);
  }
  TemporaryKey(TemporaryKey const &) = delete;
  TemporaryKey & operator=(TemporaryKey const &) = delete;
  ~TemporaryKey() {
    RegCloseKey(key_);
    for (auto each = made_.rbegin(); each != made_.rend(); ++each)
      RegDeleteKeyExA(root_, each->c_str(), view_, 0);
  }

  void set(char const * name, std::string const & bytes, DWORD type = REG_SZ) const {
    EXPECT_EQ(RegSetValueExA(key_, name, 0, type, reinterpret_cast<BYTE const *>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }

private:
  void make(std::string const & path) {
    HKEY key = nullptr;
    DWORD what = 0;
    EXPECT_EQ(RegCreateKeyExA(root_, path.c_str(), 0, nullptr, 0, KEY_READ | view_, nullptr, &key, &what),
              ERROR_SUCCESS);
    RegCloseKey(key);
    if (what == REG_CREATED_NEW_KEY)
      made_.push_back(path);
  }

  HKEY root_;
  REGSAM view_;
  HKEY key_ = nullptr;
  std::vector<std::string> made_;
};

// The version of Windows that Wine reports to a program.

struct Reported {
  char const * version;
  char const * answers;
};
std::ostream & operator<<(std::ostream & out, Reported const & reported) { return out << reported.version; }

class ReportedWindows : public testing::TestWithParam<Reported> {};

TEST_P(ReportedWindows, DecidesTheVersionTests) {
  std::string const name = "facts_" + std::to_string(GetCurrentProcessId());
  FactsProgram const program(name);
  TemporaryKey const key(HKEY_CURRENT_USER, "Software\\Wine\\AppDefaults\\" + name + ".exe");
  key.set("Version", GetParam().version);
  EXPECT_EQ(program.answers("xp vista 7"), GetParam().answers);
}

INSTANTIATE_TEST_SUITE_P(Version, ReportedWindows,
                         testing::Values(Reported{"win2k", "xp=0\nvista=0\n7=0\n"},  // 5.0
                                         Reported{"winxp", "xp=1\nvista=0\n7=0\n"},  // 5.1
                                         Reported{"vista", "xp=1\nvista=1\n7=0\n"},  // 6.0
                                         Reported{"win7", "xp=1\nvista=1\n7=1\n"},   // 6.1
                                         Reported{"win10", "xp=1\nvista=1\n7=1\n"}), // 10.0
                         [](auto const & each) { return each.param.version; });

// Instances of SQL Server.

constexpr char kServers[] = "SOFTWARE\\Microsoft\\Microsoft SQL Server";

std::string list(std::vector<std::string> const & names) {
  std::string bytes;
  for (std::string const & name : names)
    bytes += name + '\0';
  return bytes + '\0';
}

std::vector<std::string> instances() {
  ISequence<String> found{"what was there before"};
  Kiv_GetSQLServerInstances(found);
  std::vector<std::string> names;
  for (String const & name : found)
    names.emplace_back(name.c_str());
  return names;
}

using Names = std::vector<std::string>;

TEST(SQLServerInstances, WithoutTheKeyOrTheValueAreNone) {
  EXPECT_EQ(instances(), Names{});
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
  EXPECT_EQ(instances(), Names{});
}

TEST(SQLServerInstances, AreListedOnceThoughBothReadsFindThem) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
  key.set("InstalledInstances", list({"MSSQLSERVER", "SQLEXPRESS"}), REG_MULTI_SZ);
  EXPECT_EQ(instances(), (Names{"MSSQLSERVER", "SQLEXPRESS"}));
}

TEST(SQLServerInstances, OfTheViewOf32BitProgramsAreNotSeenByA64BitOne) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_32KEY);
  key.set("InstalledInstances", list({"SMALL"}), REG_MULTI_SZ);
  EXPECT_EQ(instances(), Names{});
}

/// Opens keys as in a 32-bit program, whose own view is the other one.
LSTATUS WINAPI openAsIn32Bits(HKEY root, char const * path, DWORD options, REGSAM access, HKEY * key) {
  REGSAM const view = (access & KEY_WOW64_64KEY) != 0 ? 0 : KEY_WOW64_32KEY;
  return RegOpenKeyExA(root, path, options, access | view, key);
}

class SQLServerInstancesIn32Bits : public testing::Test {
protected:
  SQLServerInstancesIn32Bits() {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "ADVAPI32.dll",
                            {{"RegOpenKeyExA", reinterpret_cast<void *>(openAsIn32Bits)}});
  }
};

TEST_F(SQLServerInstancesIn32Bits, AreThoseOfBothViewsEachOnce) {
  TemporaryKey const small(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_32KEY);
  TemporaryKey const large(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
  small.set("InstalledInstances", list({"SMALL", "BOTH"}), REG_MULTI_SZ);
  large.set("InstalledInstances", list({"LARGE", "BOTH"}), REG_MULTI_SZ);
  EXPECT_EQ(instances(), (Names{"SMALL", "BOTH", "LARGE"}));
}

TEST_F(SQLServerInstancesIn32Bits, AreThoseOfOneViewWhenTheOtherHasNone) {
  {
    TemporaryKey const large(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
    large.set("InstalledInstances", list({"LARGE"}), REG_MULTI_SZ);
    EXPECT_EQ(instances(), Names{"LARGE"});
  }
  TemporaryKey const small(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_32KEY);
  small.set("InstalledInstances", list({"SMALL"}), REG_MULTI_SZ);
  EXPECT_EQ(instances(), Names{"SMALL"});
}

TEST(SQLServerInstances, AreReadUpToTheLastNULOfTheValue) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
  key.set("InstalledInstances", std::string("\0A\0\0B\0A\0open", 12), REG_BINARY);
  EXPECT_EQ(instances(), (Names{"A", "B"}));
}

TEST(SQLServerInstances, OfMoreThan4096BytesAreNone) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kServers, KEY_WOW64_64KEY);
  std::string const name(4095, 'x');
  key.set("InstalledInstances", name + '\0', REG_BINARY);
  EXPECT_EQ(instances(), Names{name});
  key.set("InstalledInstances", name + std::string("x\0", 2), REG_BINARY);
  EXPECT_EQ(instances(), Names{});
}

// Versions of SQL Server.

constexpr char kDefaultVersion[] = "SOFTWARE\\Microsoft\\MSSqlServer\\MSSqlServer\\CurrentVersion";
constexpr char kNamedVersion[] = "SOFTWARE\\Microsoft\\Microsoft SQL Server\\EXPRESS\\MSSQLServer\\CurrentVersion";

struct Answer {
  int code;
  long version;
  bool operator==(Answer const &) const = default;
};
std::ostream & operator<<(std::ostream & out, Answer const & answer) {
  return out << answer.code << " and " << answer.version;
}

Answer versionOf(char const * instance, char const * server = "") {
  long version = -77;
  int const code = Kiv_DetermineSQLServerVersion(instance, server, version);
  return {code, version};
}

TEST(SQLServerVersion, IsTheTextUpToItsFirstPoint) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kDefaultVersion);
  struct {
    char const * text;
    long version;
  } const rows[] = {{"9.00.1399.06", 9}, {"10.50.1600.1", 10}, {"100", 100}, {"8", 8},  {"", 0},
                    {"7.", 7},           {"15.", 15},          {"x", 0},     {".5", 0}, {"100.5", 100}};
  for (auto const & row : rows) {
    key.set("CurrentVersion", row.text + std::string(1, '\0'));
    EXPECT_EQ(versionOf(""), (Answer{0, row.version})) << row.text;
    key.set("CurrentVersion", row.text, REG_BINARY); // to a text the system would add a NUL
    EXPECT_EQ(versionOf(""), (Answer{0, row.version})) << row.text;
  }
}

TEST(SQLServerVersion, OfTheDefaultInstanceHasTwoNames) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kDefaultVersion);
  key.set("CurrentVersion", "9.0");
  EXPECT_EQ(versionOf(""), (Answer{0, 9}));
  EXPECT_EQ(versionOf("MSSQLSERVER"), (Answer{0, 9}));
  EXPECT_EQ(versionOf("mssqlserver"), (Answer{35, -1}));
  EXPECT_EQ(versionOf("EXPRESS"), (Answer{35, -1}));
}

TEST(SQLServerVersion, OfANamedInstanceLiesUnderItsName) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kNamedVersion);
  key.set("CurrentVersion", "10.50.1600.1");
  EXPECT_EQ(versionOf("EXPRESS"), (Answer{0, 10}));
  EXPECT_EQ(versionOf(""), (Answer{35, -1}));
}

TEST(SQLServerVersion, OfThisMachineIsAskedForByNoServerOrAPoint) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kDefaultVersion);
  key.set("CurrentVersion", "9.0");
  EXPECT_EQ(versionOf("", ""), (Answer{0, 9}));
  EXPECT_EQ(versionOf("", "."), (Answer{0, 9}));
}

TEST(SQLServerVersion, OfAnotherMachineIsNotGiven) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kDefaultVersion);
  key.set("CurrentVersion", "9.0");
  for (char const * server : {"server", "..", "localhost", " "})
    EXPECT_EQ(versionOf("", server), (Answer{1, -77})) << server;
}

TEST(SQLServerVersion, ThatIsMissingOrTooLongIsMinus1) {
  TemporaryKey const key(HKEY_LOCAL_MACHINE, kDefaultVersion);
  EXPECT_EQ(versionOf(""), (Answer{1, -1}));
  key.set("CurrentVersion", "9." + std::string(255, '0'), REG_BINARY);
  EXPECT_EQ(versionOf(""), (Answer{1, -1}));
  key.set("CurrentVersion", "9." + std::string(254, '0'), REG_BINARY);
  EXPECT_EQ(versionOf(""), (Answer{0, 9}));
}

TEST(SQLServerVersion, OfAnInstanceWithAnyNameIsNotThere) {
  EXPECT_EQ(versionOf(std::string(5000, 'x').c_str()), (Answer{35, -1}));
  EXPECT_EQ(versionOf("\\..\\%s"), (Answer{35, -1}));
}

} // namespace
