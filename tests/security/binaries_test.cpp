// What the binaries ask of the system against those who find a fault in them.

#include "aappinfo.hpp"
#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

/// The headers of a file; empty where they are not whole.
IMAGE_NT_HEADERS64 headersOf(std::string const & file) {
  std::string const bytes = support::readFile(support::binFolder() + file).value_or("");
  IMAGE_DOS_HEADER dos = {};
  IMAGE_NT_HEADERS64 headers = {};
  if (bytes.size() >= sizeof dos)
    std::memcpy(&dos, bytes.data(), sizeof dos);
  if (bytes.size() >= static_cast<std::size_t>(dos.e_lfanew) + sizeof headers)
    std::memcpy(&headers, bytes.data() + dos.e_lfanew, sizeof headers);
  EXPECT_EQ(headers.Signature, DWORD{IMAGE_NT_SIGNATURE}) << file;
  return headers;
}

class Binary : public testing::TestWithParam<char const *> {
protected:
  WORD characteristics() const { return headers.OptionalHeader.DllCharacteristics; }

  IMAGE_NT_HEADERS64 const headers = headersOf(GetParam());
};

TEST_P(Binary, IsPutAtARandomPlaceOf64Bits) {
  EXPECT_TRUE(characteristics() & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
  EXPECT_TRUE(characteristics() & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
}

TEST_P(Binary, RunsNoData) { EXPECT_TRUE(characteristics() & IMAGE_DLLCHARACTERISTICS_NX_COMPAT); }

TEST_P(Binary, DoesNotGuardItsIndirectCalls) {
  EXPECT_FALSE(characteristics() & IMAGE_DLLCHARACTERISTICS_GUARD_CF) << "the compiler cannot do it";
}

TEST_P(Binary, IsNotSigned) {
  EXPECT_EQ(headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_SECURITY].Size, 0u);
}

INSTANTIATE_TEST_SUITE_P(OfTheProduct, Binary,
                         testing::Values("kivara.dll", "SV0105.dll", "TL0105.dll", "re00005.dll", "fetch.exe",
                                         "kivuser.exe"),
                         [](auto const & row) {
                           std::string name = row.param;
                           name[name.find('.')] = '_';
                           return name;
                         });

TEST(CodeOfTheSystem, HasAJumpOfTheLibraryAndCannotBeWrittenAfterThat) {
  KivApplicationInfo::GetInfo(); // so that the library is loaded
  auto const * const entry = reinterpret_cast<unsigned char const *>(
      GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetUnhandledExceptionFilter"));
  ASSERT_EQ(entry[0], 0x49);
  ASSERT_EQ(entry[1], 0xBA);
  void * target = nullptr;
  std::memcpy(&target, entry + 2, sizeof target);
  HMODULE owner = nullptr;
  EXPECT_TRUE(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                 static_cast<char const *>(target), &owner));
  EXPECT_EQ(owner, GetModuleHandleA("kivara.dll"));
  MEMORY_BASIC_INFORMATION page = {};
  VirtualQuery(entry, &page, sizeof page);
  EXPECT_EQ(page.Protect, DWORD{PAGE_EXECUTE_READ});
}

} // namespace
