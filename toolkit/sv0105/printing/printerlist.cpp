#include "printing/printerlist.hpp"

#include "application/toolkit.hpp"
#include "handles/handle.hpp"

#include <winspool.h>

#include "tools/winnames.hpp"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace SV::detail {

namespace {

constexpr char kMachinePrinters[] = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers";
constexpr char kUserConnections[] = "Printers\\Connections";
constexpr char kUserDevice[] = "Software\\Microsoft\\Windows NT\\CurrentVersion\\Windows";

ISequence<String> namesOfSpooler() {
  constexpr DWORD kWhich = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  std::vector<unsigned char> bytes;
  DWORD size = 0;
  DWORD count = 0;
  // There may be one more by the second call.
  while (!EnumPrintersA(kWhich, nullptr, 4, bytes.data(), static_cast<DWORD>(bytes.size()), &size, &count)) {
    if (size <= bytes.size())
      return {};
    bytes.resize(size);
  }
  auto const * const printers = reinterpret_cast<PRINTER_INFO_4A const *>(bytes.data());
  ISequence<String> names;
  for (DWORD i = 0; i < count; ++i)
    names.emplace_back(printers[i].pPrinterName);
  return names;
}

/// A value of WIN.INI, or with null all keys of the section, each with its NUL.
std::string profileText(char const * section, char const * key) {
  std::string text(1024, '\0');
  for (;;) {
    DWORD const length = GetProfileStringA(section, key, "", text.data(), static_cast<DWORD>(text.size()));
    // What was cut ends one or two characters before the end.
    if (length + 2 < text.size()) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 2);
  }
}

ISequence<String> namesOfProfile() {
  std::string const keys = profileText("devices", nullptr);
  ISequence<String> names;
  for (std::size_t at = 0; at < keys.size(); at += std::strlen(keys.c_str() + at) + 1)
    names.emplace_back(keys.c_str() + at);
  return names;
}

handles::RegistryKey openKey(HKEY root, char const * path) {
  HKEY key = nullptr;
  return handles::RegistryKey(RegOpenKeyExA(root, path, 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr);
}

/// The names of the keys below one.
ISequence<String> keysBelow(HKEY root, char const * path) {
  handles::RegistryKey const key = openKey(root, path);
  ISequence<String> names;
  char name[256];
  for (DWORD i = 0;; ++i) {
    DWORD length = sizeof name;
    LSTATUS const status = key ? RegEnumKeyExA(key.get(), i, name, &length, nullptr, nullptr, nullptr, nullptr)
                               : static_cast<LSTATUS>(ERROR_NO_MORE_ITEMS);
    if (status == ERROR_SUCCESS)
      names.emplace_back(name);
    else if (status != ERROR_MORE_DATA)
      return names;
  }
}

ISequence<String> namesOfRegistry() {
  ISequence<String> names = keysBelow(HKEY_LOCAL_MACHINE, kMachinePrinters);
  // A name of a key has no backslashes: "\\server\printer" is ",,server,printer" there.
  for (String & connection : keysBelow(HKEY_CURRENT_USER, kUserConnections))
    names.push_back(connection.replaceAll(',', '\\'));
  return names;
}

String defaultOfSpooler() {
  DWORD size = 0;
  GetDefaultPrinterA(nullptr, &size);
  std::string name(size, '\0');
  return size > 0 && GetDefaultPrinterA(name.data(), &size) ? String(name.c_str()) : String();
}

/// Of "name,driver,port".
String firstPart(std::string const & device) { return String(device.substr(0, device.find(',')).c_str()); }

String defaultOfRegistry() {
  char device[1024];
  DWORD size = sizeof device;
  // Of a longer text the system leaves any part in the buffer, and no NUL after it.
  if (RegGetValueA(HKEY_CURRENT_USER, kUserDevice, "Device", RRF_RT_REG_SZ, nullptr, device, &size) != ERROR_SUCCESS)
    return {};
  return firstPart(device);
}

/// As long as a program has not loaded the library of the spooler, registry and WIN.INI may hold the printers of an earlier
/// program: some systems write them when that library is loaded.
void bringListsUpToDate() {
  static HMODULE const library = LoadLibraryA("winspool.drv");
  static_cast<void>(library);
}

PrinterSwitches const & switches() { return toolkit().printers; }

} // namespace

ISequence<String> printerNames() {
  bringListsUpToDate();
  if (switches().registryPrinters)
    return namesOfRegistry();
  return switches().currentPrinting ? namesOfSpooler() : namesOfProfile();
}

String defaultPrinterName() {
  bringListsUpToDate();
  if (switches().registryPrinters)
    return defaultOfRegistry();
  return switches().currentPrinting ? defaultOfSpooler() : firstPart(profileText("windows", "device"));
}

std::optional<String> findPrinter(String const & name) {
  ISequence<String> const names = printerNames();
  auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end() && !switches().caseSensitivePrinters)
    found = std::find_if(names.begin(), names.end(),
                         [&](String const & each) { return lstrcmpiA(each.c_str(), name.c_str()) == 0; });
  return found != names.end() ? std::optional(*found) : std::nullopt;
}

} // namespace SV::detail
