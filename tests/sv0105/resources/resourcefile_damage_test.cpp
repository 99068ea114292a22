// What is checked of a resource DLL before the system reads it.
#include "resources/resourcefile.hpp"

#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

using SV::detail::isSoundResourceFile;

TEST(SoundResourceFile, HasBothSignatures) {
  std::string const sound = support::readFile(support::binFolder() + "testres\\first72.dll").value();
  std::uint32_t header = 0;
  std::memcpy(&header, sound.data() + 0x3C, sizeof header);
  for (std::size_t const place : {0u, 1u, header, header + 1, header + 2, header + 3}) {
    std::string bytes = sound;
    bytes[place] = static_cast<char>(bytes[place] ^ 1);
    EXPECT_FALSE(isSoundResourceFile(std::as_bytes(std::span(bytes)))) << place;
  }
}

TEST(SoundResourceFile, MayEndWithItsHeaders) {
  IMAGE_DOS_HEADER dos = {};
  dos.e_magic = IMAGE_DOS_SIGNATURE;
  dos.e_lfanew = sizeof dos;
  IMAGE_NT_HEADERS64 headers = {};
  headers.Signature = IMAGE_NT_SIGNATURE;
  headers.FileHeader.Characteristics = IMAGE_FILE_DLL;
  headers.FileHeader.SizeOfOptionalHeader = sizeof headers.OptionalHeader;
  headers.OptionalHeader.Magic = IMAGE_NT_OPTIONAL_HDR64_MAGIC;
  headers.OptionalHeader.NumberOfRvaAndSizes = IMAGE_NUMBEROF_DIRECTORY_ENTRIES;
  std::string bytes(sizeof dos + sizeof headers, '\0');
  std::memcpy(bytes.data(), &dos, sizeof dos);
  std::memcpy(bytes.data() + sizeof dos, &headers, sizeof headers);
  EXPECT_TRUE(isSoundResourceFile(std::as_bytes(std::span(bytes))));
  bytes.pop_back();
  EXPECT_FALSE(isSoundResourceFile(std::as_bytes(std::span(bytes))));
}

TEST(ResourceFileDamage, IsSeenWithinTheFile) {
  std::string const sound = support::readFile(support::binFolder() + "testres\\first72.dll").value();
  ASSERT_TRUE(isSoundResourceFile(std::as_bytes(std::span(sound))));
  std::size_t const headers = 0x400; // DOS header, headers, and the sections
  support::Random random(151);
  support::GuardPages const guard;
  std::size_t taken = 0;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    std::string const bytes = i % 2 == 0 ? support::damaged(sound, random)
                                         : support::damaged(sound.substr(0, headers), random) + sound.substr(headers);
    std::unique_ptr<char[]> const block(new char[bytes.size()]);
    std::memcpy(block.get(), bytes.data(), bytes.size());
    taken += isSoundResourceFile(std::as_bytes(std::span(block.get(), bytes.size()))) ? 1 : 0;
  }
  EXPECT_GT(taken, 0u);
  EXPECT_LT(taken, support::times(1000));
}

} // namespace
