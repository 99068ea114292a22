// Values of the registry that were damaged: those of a machine are whatever somebody has written there.
#include "amachine.hpp"
#include "aplatfrm.hpp"

#include "support/data/damage.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using SV::String;

std::string value; ///< of every key

LSTATUS WINAPI openKey(HKEY, char const *, DWORD, REGSAM, HKEY * key) {
  *key = HKEY_CURRENT_USER;
  return ERROR_SUCCESS;
}

LSTATUS WINAPI closeKey(HKEY) { return ERROR_SUCCESS; }

/// What does not fit leaves the buffer undefined.
LSTATUS WINAPI queryValue(HKEY, char const *, DWORD *, DWORD *, BYTE * data, DWORD * size) {
  bool const fits = value.size() <= *size;
  std::memcpy(data, value.data(), fits ? value.size() : *size);
  *size = static_cast<DWORD>(value.size());
  return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

class RegistryDamage : public testing::Test {
protected:
  RegistryDamage() {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "ADVAPI32.dll",
                            {{"RegOpenKeyExA", reinterpret_cast<void *>(openKey)},
                             {"RegQueryValueExA", reinterpret_cast<void *>(queryValue)},
                             {"RegCloseKey", reinterpret_cast<void *>(closeKey)}});
  }

  support::Random random{161};
};

/// The text that a value with and without a NUL stands for.
std::string text() { return value.c_str(); }

TEST_F(RegistryDamage, OfTheMachinesIdentifierGivesATextOrNone) {
  std::string const sound("0f8fad5b-d9cb-469f-a165-70867728950e\0", 37);
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    value = support::damaged(sound, random);
    ASSERT_EQ(Kiv_GetSystemIDAsString(), value.size() <= 256 ? text().c_str() : "") << i;
  }
}

TEST_F(RegistryDamage, OfTheListOfServersGivesTheTextsThatEnd) {
  std::string const sound("MSSQLSERVER\0SMALL\0LARGE\0\0", 27);
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    value = support::damaged(sound, random, {.pieces = {std::string(1, '\0'), std::string(2, '\0'), "SMALL"}});
    ISequence<String> names;
    Kiv_GetSQLServerInstances(names);
    std::size_t length = 0;
    for (String const & name : names) {
      ASSERT_GT(name.Len(), 0) << i;
      ASSERT_NE(value.find(std::string(name.c_str()) + '\0'), std::string::npos) << i;
      length += static_cast<std::size_t>(name.Len()) + 1;
    }
    ASSERT_LE(length, value.size() <= 4096 ? value.size() : 0) << i;
  }
}

TEST_F(RegistryDamage, OfTheVersionOfAServerGivesANumberOrAFailure) {
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    value = support::damaged(std::string("10.50.1600.1\0", 13), random, {.pieces = {".", "-", "9"}});
    long version = -77;
    MsdeAdmToolErrCode const code = Kiv_DetermineSQLServerVersion("SMALL", "", version);
    ASSERT_EQ(code, value.size() <= 256 ? MSDE_ADM_TOOL_OK : MSDE_ADM_TOOL_FAILED) << i;
    ASSERT_TRUE(code == MSDE_ADM_TOOL_OK || version == -1) << i;
  }
}

TEST_F(RegistryDamage, OfTheVersionOfWindowsIsNoVersionUnlessItHasFourBytes) {
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    value = support::damaged(std::string("\x0A\0\0\0", 4), random);
    DWORD major = 0;
    if (value.size() == sizeof major)
      std::memcpy(&major, value.data(), sizeof major);
    ASSERT_EQ(Kiv_IsAtLeastWindows10(), major >= 10) << i;
  }
}

} // namespace
