#include "amachine.hpp"

#include "system/machine/registrykey.hpp"
#include "system/machine/systemfunction.hpp"
#include "tools/winapi.hpp"

#include <winsock2.h>

#include <ws2tcpip.h>

#include <iphlpapi.h>
#include <netioapi.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>

using SV::String;

namespace {

constexpr std::size_t kAddressBytes = 6;

bool isEmpty(UCHAR const * address) {
  return std::all_of(address, address + kAddressBytes, [](UCHAR byte) { return byte == 0; });
}

/// The address built into the adapter. It may currently use another, so that it cannot be tracked from network to network.
UCHAR const * ownAddress(MIB_IF_ROW2 const & adapter) {
  return isEmpty(adapter.PermanentPhysicalAddress) ? adapter.PhysicalAddress : adapter.PermanentPhysicalAddress;
}

/// Hardware, as opposed to the loopback, a tunnel, a bridge or a filter on another adapter.
bool isPhysical(MIB_IF_ROW2 const & adapter) {
  bool const isNetwork = adapter.Type == IF_TYPE_ETHERNET_CSMACD || adapter.Type == IF_TYPE_IEEE80211;
  return isNetwork && adapter.InterfaceAndOperStatusFlags.HardwareInterface != 0 &&
         adapter.InterfaceAndOperStatusFlags.FilterInterface == 0 && adapter.PhysicalAddressLength == kAddressBytes &&
         !isEmpty(ownAddress(adapter));
}

/// Physical adapters first, ordered by the number that they keep across restarts. It begins with the type, which is lower for
/// wired adapters.
bool isBefore(MIB_IF_ROW2 const & a, MIB_IF_ROW2 const & b) {
  return isPhysical(a) != isPhysical(b) ? isPhysical(a) : a.InterfaceLuid.Value < b.InterfaceLuid.Value;
}

String addressText(UCHAR const * address) {
  char text[3 * kAddressBytes];
  std::snprintf(text, sizeof text, "%02X-%02X-%02X-%02X-%02X-%02X", address[0], address[1], address[2], address[3],
                address[4], address[5]);
  return text;
}

String addressOfFirst(MIB_IF_TABLE2 const & adapters) {
  auto const end = adapters.Table + adapters.NumEntries;
  auto const first = std::min_element(adapters.Table, end, isBefore);
  return first != end && isPhysical(*first) ? addressText(ownAddress(*first)) : String();
}

} // namespace

String Kiv_GetMACAsString() {
  auto * const getTable = kivara::systemFunction<decltype(GetIfTable2)>("iphlpapi.dll", "GetIfTable2");
  auto * const freeTable = kivara::systemFunction<decltype(FreeMibTable)>("iphlpapi.dll", "FreeMibTable");
  MIB_IF_TABLE2 * table = nullptr;
  if (getTable == nullptr || freeTable == nullptr || getTable(&table) != NO_ERROR)
    return {};
  std::unique_ptr<MIB_IF_TABLE2, decltype(freeTable)> const adapters(table, freeTable);
  return addressOfFirst(*adapters);
}

String Kiv_GetSystemIDAsString() {
  constexpr DWORD most = 256;
  char text[most + 1] = "";
  kivara::MachineKey const key("SOFTWARE\\Microsoft\\Cryptography", KEY_READ | KEY_WOW64_64KEY);
  return key.read("MachineGuid", text, most) ? String(text) : String();
}
