// Lists of printers that were damaged in WIN.INI and in the registry, as the system hands them out.
#include "support/data/damage.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"
#include "sv/printer.hpp"
#include "sv0105/application/testapplication.hpp"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

using SV::Printer;
using SV::String;

/// What the system reads.
std::string profile;
std::string device;

/// As the system does it: what does not fit is cut, a list at two NULs and a value at one.
DWORD WINAPI giveProfile(char const *, char const * key, char const *, char * text, DWORD size) {
  std::size_t const ends = key == nullptr ? 2 : 1;
  bool const fits = profile.size() + ends <= size;
  std::size_t const length = fits ? profile.size() : size - ends;
  std::memcpy(text, profile.data(), length);
  std::memset(text + length, 0, ends);
  return static_cast<DWORD>(length);
}

LSTATUS WINAPI giveValue(HKEY, char const *, char const *, DWORD, DWORD *, void * data, DWORD * size) {
  bool const fits = device.size() + 1 <= *size;
  std::memcpy(data, device.c_str(), fits ? device.size() + 1 : *size);
  *size = static_cast<DWORD>(device.size() + 1);
  return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

void replaceReaders() {
  HMODULE const library = GetModuleHandleA("SV0105.dll");
  support::replaceImports(library, "KERNEL32.dll", {{"GetProfileStringA", reinterpret_cast<void *>(giveProfile)}});
  support::replaceImports(library, "ADVAPI32.dll", {{"RegGetValueA", reinterpret_cast<void *>(giveValue)}});
}

TEST(PrinterListDamage, OfWinIniGivesItsPartsAsNames) {
  replaceReaders();
  SV::SetPrinterSwitches({false, false, false});
  Printer::GetNames(); // what is loaded for it is there
  std::string const sound("Laser\0Plotter on the second floor\0PDF, A4\0", 43);
  support::Random random(141);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    profile = support::damaged(sound, random);
    ISequence<String> const names = Printer::GetNames();
    std::size_t length = 0;
    for (String const & name : names)
      length += static_cast<std::size_t>(name.Len()) + 1;
    ASSERT_TRUE(length == profile.size() || length == profile.size() + 1) << i;
    std::string const first = profile.substr(0, std::min(profile.find('\0'), profile.find(',')));
    ASSERT_EQ(Printer::GetDefaultName(), first.c_str()) << i;
  }
}

TEST(PrinterListDamage, OfTheRegistryGivesADefaultOrNone) {
  replaceReaders();
  SV::SetPrinterSwitches({true, false, false});
  support::Random random(142);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    device = support::damagedText("Laser on the first floor,winspool,Ne00:", random, {.pieces = {",", " ", "\xE4"}});
    std::string const first = device.substr(0, device.find(','));
    ASSERT_EQ(Printer::GetDefaultName(), device.size() < 1024 ? first.c_str() : "") << device;
  }
}

} // namespace
