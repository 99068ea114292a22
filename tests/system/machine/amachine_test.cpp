#include "amachine.hpp"

#include "support/imports/import_hook.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <winsock2.h>

#include <ws2tcpip.h>

#include <iphlpapi.h>
#include <netioapi.h>
#include <objbase.h>
#include <oleauto.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <ostream>
#include <string>
#include <vector>

using SV::String;

namespace {

// What this machine says of itself.

bool isIdentifier(std::string const & text) {
  std::string const form = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  return text.size() == form.size() && std::equal(form.begin(), form.end(), text.begin(), [](char kind, char c) {
           return kind == 'x' ? std::isxdigit(static_cast<unsigned char>(c)) != 0 : c == kind;
         });
}

/// "AA-BB-CC-DD-EE-FF" of each adapter that has such an address.
std::vector<std::string> addressesOfTheMachine() {
  auto * const list = reinterpret_cast<decltype(GetAdaptersAddresses) *>(
      reinterpret_cast<void *>(GetProcAddress(LoadLibraryA("iphlpapi.dll"), "GetAdaptersAddresses")));
  ULONG size = 1 << 16;
  std::vector<ULONGLONG> memory(size / sizeof(ULONGLONG));
  auto const * adapter = reinterpret_cast<IP_ADAPTER_ADDRESSES *>(memory.data());
  if (list(AF_UNSPEC, 0, nullptr, reinterpret_cast<IP_ADAPTER_ADDRESSES *>(memory.data()), &size) != NO_ERROR)
    return {};
  std::vector<std::string> texts;
  for (; adapter != nullptr; adapter = adapter->Next) {
    std::string text;
    for (DWORD i = 0; i < adapter->PhysicalAddressLength; ++i) {
      constexpr char kDigits[] = "0123456789ABCDEF";
      text += text.empty() ? "" : "-";
      text += kDigits[adapter->PhysicalAddress[i] >> 4];
      text += kDigits[adapter->PhysicalAddress[i] & 15];
    }
    if (adapter->PhysicalAddressLength == 6)
      texts.push_back(text);
  }
  return texts;
}

TEST(MachineAddress, IsThatOfAnAdapterOfThisMachine) {
  std::string const address = Kiv_GetMACAsString().c_str();
  std::vector<std::string> const all = addressesOfTheMachine();
  if (all.empty())
    EXPECT_EQ(address, "");
  else
    EXPECT_EQ(std::count(all.begin(), all.end(), address), 1) << address;
  EXPECT_EQ(Kiv_GetMACAsString(), address.c_str()) << "asked again";
}

TEST(SystemID, IsTheOneInTheRegistry) {
  char expected[100] = "";
  DWORD size = sizeof expected;
  ASSERT_EQ(RegGetValueA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Cryptography", "MachineGuid",
                         RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, expected, &size),
            ERROR_SUCCESS);
  EXPECT_STREQ(Kiv_GetSystemIDAsString().c_str(), expected);
  EXPECT_TRUE(isIdentifier(expected));
}

TEST(WindowsSystemID, IsTheOneThatTheToolOfTheSystemPrints) {
  std::string const id = KivWMI::GetWindowsSystemID().c_str();
  EXPECT_TRUE(isIdentifier(id)) << id;
  std::string const tool = "C:\\windows\\system32\\wbem\\wmic.exe";
  if (GetFileAttributesA(tool.c_str()) == INVALID_FILE_ATTRIBUTES)
    GTEST_SKIP() << "this system has no " << tool;
  std::string printed =
      support::runProgram({.program = tool, .arguments = "path Win32_ComputerSystemProduct get UUID"}).output;
  std::erase(printed, '\0'); // UTF-16
  EXPECT_NE(printed.find(id), std::string::npos) << printed;
}

TEST(MachineFacts, NeedTheirLibrariesOnlyWhenTheyAreAskedFor) {
  for (char const * name : {"iphlpapi.dll", "ole32.dll", "oleaut32.dll", "wbemprox.dll"})
    EXPECT_EQ(GetModuleHandleA(name), nullptr) << name;
  Kiv_GetSystemIDAsString();
  Kiv_GetMACAsString();
  EXPECT_NE(GetModuleHandleA("iphlpapi.dll"), nullptr);
  EXPECT_EQ(GetModuleHandleA("ole32.dll"), nullptr);
  KivWMI::GetWindowsSystemID();
  EXPECT_NE(GetModuleHandleA("ole32.dll"), nullptr);
}

// What other machines say: the system's part is played by the test.

std::string missingLibrary;                  ///< cannot be loaded
std::map<std::string, void *> replacedNames; ///< functions by name; null is missing

HMODULE WINAPI loadLibrary(char const * name, HANDLE file, DWORD flags) {
  EXPECT_EQ(flags, DWORD{LOAD_LIBRARY_SEARCH_SYSTEM32}) << "never from the folder of the program";
  return name == missingLibrary ? nullptr : LoadLibraryExA(name, file, flags);
}

FARPROC WINAPI findFunction(HMODULE module, char const * name) {
  auto const replaced = replacedNames.find(name);
  return replaced == replacedNames.end() ? GetProcAddress(module, name) : reinterpret_cast<FARPROC>(replaced->second);
}

void playSystem() {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"LoadLibraryExA", reinterpret_cast<void *>(loadLibrary)},
                           {"GetProcAddress", reinterpret_cast<void *>(findFunction)}});
}

template <class Function> void replace(char const * name, Function * function) {
  replacedNames[name] = reinterpret_cast<void *>(function);
}

struct Adapter {
  int number; ///< by which adapters are ordered
  char const * own;
  char const * used = "\x0A\x0B\x0C\x0D\x0E\x0F";
  IFTYPE type = IF_TYPE_ETHERNET_CSMACD;
  bool isHardware = true;
  bool isFilter = false;
  ULONG length = 6;
};

std::vector<Adapter> adapters;
int tablesInUse = 0;

NETIO_STATUS WINAPI giveTable(MIB_IF_TABLE2 ** table) {
  std::size_t const size = sizeof(MIB_IF_TABLE2) + adapters.size() * sizeof(MIB_IF_ROW2);
  *table = static_cast<MIB_IF_TABLE2 *>(std::calloc(1, size));
  for (Adapter const & each : adapters) {
    MIB_IF_ROW2 & row = (*table)->Table[(*table)->NumEntries++];
    row.Type = each.type;
    row.InterfaceLuid.Value = static_cast<ULONG64>(each.type) << 48 | static_cast<ULONG64>(each.number) << 24;
    row.InterfaceAndOperStatusFlags.HardwareInterface = each.isHardware;
    row.InterfaceAndOperStatusFlags.FilterInterface = each.isFilter;
    row.PhysicalAddressLength = each.length;
    std::memcpy(row.PermanentPhysicalAddress, each.own, 6);
    std::memcpy(row.PhysicalAddress, each.used, 6);
  }
  ++tablesInUse;
  return NO_ERROR;
}

void WINAPI freeTable(void * table) {
  --tablesInUse;
  std::free(table);
}

constexpr char kNone[] = "\0\0\0\0\0";
constexpr char kFirst[] = "\x00\x1A\xFF\x03\x04\x05";
constexpr char kSecond[] = "\x10\x20\x30\x40\x50\x60";

struct Machine {
  char const * name;
  std::vector<Adapter> adapters;
  char const * address;
};
std::ostream & operator<<(std::ostream & out, Machine const & machine) { return out << machine.name; }

class MachineAddressOf : public testing::TestWithParam<Machine> {};

TEST_P(MachineAddressOf, IsThatOfItsFirstPhysicalAdapter) {
  adapters = GetParam().adapters;
  replace("GetIfTable2", giveTable);
  replace("FreeMibTable", freeTable);
  playSystem();
  EXPECT_STREQ(Kiv_GetMACAsString().c_str(), GetParam().address);
  EXPECT_EQ(tablesInUse, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Machines, MachineAddressOf,
    testing::Values(
        Machine{"one adapter", {{1, kFirst}}, "00-1A-FF-03-04-05"}, Machine{"none", {}, ""},
        Machine{"two in order", {{1, kFirst}, {2, kSecond}}, "00-1A-FF-03-04-05"},
        Machine{"two out of order", {{2, kSecond}, {1, kFirst}}, "00-1A-FF-03-04-05"},
        Machine{"wireless alone", {{1, kSecond, kSecond, IF_TYPE_IEEE80211}}, "10-20-30-40-50-60"},
        Machine{"cable before wireless", {{1, kSecond, kSecond, IF_TYPE_IEEE80211}, {9, kFirst}}, "00-1A-FF-03-04-05"},
        Machine{"loopback", {{1, kSecond, kSecond, IF_TYPE_SOFTWARE_LOOPBACK}}, ""},
        Machine{"another type before", {{1, kSecond, kSecond, IF_TYPE_PPP}, {2, kFirst}}, "00-1A-FF-03-04-05"},
        Machine{"made by software",
                {{1, kSecond, kSecond, IF_TYPE_ETHERNET_CSMACD, false}, {2, kFirst}},
                "00-1A-FF-03-04-05"},
        Machine{"filter of an adapter",
                {{1, kSecond, kSecond, IF_TYPE_ETHERNET_CSMACD, true, true}, {2, kFirst}},
                "00-1A-FF-03-04-05"},
        Machine{"address of another length",
                {{1, kSecond, kSecond, IF_TYPE_ETHERNET_CSMACD, true, false, 8}, {2, kFirst}},
                "00-1A-FF-03-04-05"},
        Machine{"no address", {{1, kNone, kNone}, {2, kFirst}}, "00-1A-FF-03-04-05"},
        Machine{"no address of its own", {{1, kNone, kSecond}}, "10-20-30-40-50-60"},
        Machine{"uses another address than its own", {{1, kFirst, kSecond}}, "00-1A-FF-03-04-05"}));

TEST(MachineAddress, IsEmptyWhereTheSystemHasNoSuchFunction) {
  playSystem();
  missingLibrary = "iphlpapi.dll";
  EXPECT_EQ(Kiv_GetMACAsString(), "");
  missingLibrary = "";
  for (char const * name : {"GetIfTable2", "FreeMibTable"}) {
    replacedNames = {{name, nullptr}};
    EXPECT_EQ(Kiv_GetMACAsString(), "") << name;
  }
}

TEST(MachineAddress, IsEmptyWhereTheSystemDoesNotAnswer) {
  playSystem();
  replace(
      "GetIfTable2", +[](MIB_IF_TABLE2 **) -> NETIO_STATUS { return ERROR_NOT_ENOUGH_MEMORY; });
  replace("FreeMibTable", freeTable);
  EXPECT_EQ(Kiv_GetMACAsString(), "");
  EXPECT_EQ(tablesInUse, 0);
}

TEST(SystemID, IsEmptyWhereTheRegistryHasNone) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "ADVAPI32.dll",
                          {{"RegQueryValueExA", reinterpret_cast<void *>(+[](HKEY key, char const *, DWORD * reserved,
                                                                             DWORD * type, BYTE * data, DWORD * size) {
                              return RegQueryValueExA(key, "no such value", reserved, type, data, size);
                            })}});
  EXPECT_EQ(Kiv_GetSystemIDAsString(), "");
}

TEST(SystemID, IsEmptyWhereTheKeyIsMissing) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "ADVAPI32.dll",
                          {{"RegOpenKeyExA", reinterpret_cast<void *>(+[](HKEY root, char const *, DWORD options,
                                                                          REGSAM access, HKEY * key) {
                              return RegOpenKeyExA(root, "SOFTWARE\\no such key", options, access, key);
                            })}});
  EXPECT_EQ(Kiv_GetSystemIDAsString(), "");
}

TEST(SystemID, IsReadInTheViewOf64BitPrograms) {
  static REGSAM view = 0;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "ADVAPI32.dll",
                          {{"RegOpenKeyExA", reinterpret_cast<void *>(+[](HKEY root, char const * path, DWORD options,
                                                                          REGSAM access, HKEY * key) {
                              view = access;
                              return RegOpenKeyExA(root, path, options, access, key);
                            })}});
  EXPECT_TRUE(isIdentifier(Kiv_GetSystemIDAsString().c_str()));
  EXPECT_EQ(view, REGSAM{0x20119});
}

TEST(WindowsSystemID, IsEmptyWhereTheSystemHasNoCom) {
  playSystem();
  for (char const * name : {"ole32.dll", "oleaut32.dll"}) {
    missingLibrary = name;
    EXPECT_EQ(KivWMI::GetWindowsSystemID(), "") << name;
  }
  missingLibrary = "";
  for (char const * name : {"CoInitializeEx", "CoUninitialize", "CoCreateInstance", "CoSetProxyBlanket",
                            "SysAllocString", "SysFreeString", "VariantClear"}) {
    replacedNames = {{name, nullptr}};
    EXPECT_EQ(KivWMI::GetWindowsSystemID(), "") << name;
  }
}

TEST(WindowsSystemID, IsEmptyWhereTheServiceIsNotInstalled) {
  playSystem();
  replace(
      "CoCreateInstance", +[](REFCLSID, IUnknown *, DWORD, REFIID, void ** object) -> HRESULT {
        *object = nullptr;
        return REGDB_E_CLASSNOTREG;
      });
  EXPECT_EQ(KivWMI::GetWindowsSystemID(), "");
}

/// The texts that the library hands to the service: one of them is exchanged for another.
std::wstring exchanged;
std::wstring exchangedFor;

class SilentService : public testing::Test {
protected:
  void ask(wchar_t const * text, wchar_t const * instead) {
    auto * const real = GetProcAddress(LoadLibraryA("oleaut32.dll"), "SysAllocString");
    allocate = reinterpret_cast<decltype(SysAllocString) *>(reinterpret_cast<void *>(real));
    exchanged = text;
    exchangedFor = instead;
    replace(
        "SysAllocString", +[](wchar_t const * each) -> BSTR {
          wasExchanged = wasExchanged || each == exchanged;
          return allocate(each == exchanged ? exchangedFor.c_str() : each);
        });
    playSystem();
    EXPECT_EQ(KivWMI::GetWindowsSystemID(), "");
    EXPECT_TRUE(wasExchanged);
  }

  static decltype(SysAllocString) * allocate;
  static bool wasExchanged;
};
decltype(SysAllocString) * SilentService::allocate = nullptr;
bool SilentService::wasExchanged = false;

constexpr wchar_t kQuery[] = L"SELECT UUID FROM Win32_ComputerSystemProduct";

TEST_F(SilentService, WithoutTheNamespaceGivesNoSystemID) { ask(L"ROOT\\CIMV2", L"ROOT\\NoSuchPlace"); }
TEST_F(SilentService, WithoutTheLanguageGivesNoSystemID) { ask(L"WQL", L"none such"); }
TEST_F(SilentService, WithoutTheClassGivesNoSystemID) { ask(kQuery, L"SELECT UUID FROM Win32_NoSuchClass"); }
TEST_F(SilentService, WithoutAnObjectGivesNoSystemID) {
  ask(kQuery, L"SELECT UUID FROM Win32_ComputerSystemProduct WHERE UUID = 'none'");
}
TEST_F(SilentService, WithoutThePropertyGivesNoSystemID) { ask(kQuery, L"SELECT Caption FROM Win32_Processor"); }

TEST(WindowsSystemID, LeavesComOnTheThreadAsItWas) {
  playSystem();
  static int uses = 0;
  static decltype(CoInitializeEx) * initialize = nullptr;
  static decltype(CoUninitialize) * uninitialize = nullptr;
  HMODULE const com = LoadLibraryA("ole32.dll");
  initialize =
      reinterpret_cast<decltype(CoInitializeEx) *>(reinterpret_cast<void *>(GetProcAddress(com, "CoInitializeEx")));
  uninitialize =
      reinterpret_cast<decltype(CoUninitialize) *>(reinterpret_cast<void *>(GetProcAddress(com, "CoUninitialize")));
  replace(
      "CoInitializeEx", +[](void * reserved, DWORD form) -> HRESULT {
        HRESULT const result = initialize(reserved, form);
        uses += SUCCEEDED(result) ? 1 : 0;
        return result;
      });
  replace(
      "CoUninitialize", +[] {
        --uses;
        uninitialize();
      });
  EXPECT_TRUE(isIdentifier(KivWMI::GetWindowsSystemID().c_str()));
  EXPECT_EQ(uses, 0);
  ASSERT_EQ(initialize(nullptr, COINIT_APARTMENTTHREADED), S_OK);
  EXPECT_TRUE(isIdentifier(KivWMI::GetWindowsSystemID().c_str())) << "a thread with an apartment of its own";
  EXPECT_EQ(uses, 0);
  EXPECT_EQ(initialize(nullptr, COINIT_APARTMENTTHREADED), S_FALSE) << "it still has it";
  uninitialize();
  uninitialize();
}

} // namespace
