#include "common/wholefile.hpp"
#include "modules/image.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

using kivcrash::Image;

namespace {

std::string programBytes() { return support::readFile(support::binFolder() + "\\crash_lines.exe").value(); }

std::optional<Image> readImage(std::string bytes, std::string & reason) {
  return Image::read(std::make_shared<std::string const>(std::move(bytes)), reason);
}

Image program() {
  std::string reason;
  return readImage(programBytes(), reason).value();
}

TEST(CrashImage, HasHeaderAndSections) {
  Image const image = program();
  EXPECT_EQ(image.base(), 0x140000000u);
  EXPECT_NE(image.timeStamp(), 0u);
  EXPECT_GT(image.size(), image.sizeOfCode());
  EXPECT_TRUE(image.hasDebugSymbols());
  EXPECT_FALSE(image.debugLink());
  auto const & sections = image.sections();
  ASSERT_FALSE(sections.empty());
  EXPECT_EQ(sections[0].name, ".text");
  EXPECT_TRUE(std::ranges::any_of(sections, [](auto const & each) { return each.name == ".debug_info"; }));
}

TEST(CrashImage, IsReadAsInMemoryWithZerosAfterWhatIsInTheFile) {
  Image const image = program();
  char code[4];
  EXPECT_EQ(image.readMemory(image.sections()[0].address, code, 4), 4u);
  EXPECT_EQ(std::string_view(code, 4), image.sections()[0].bytes.substr(0, 4));
  auto const bss = std::ranges::find(image.sections(), ".bss", &Image::Section::name);
  ASSERT_NE(bss, image.sections().end());
  EXPECT_EQ(image.readMemory(bss->address, code, 4), 4u);
  EXPECT_EQ(std::string_view(code, 4), std::string_view("\0\0\0\0", 4));
  EXPECT_EQ(image.readMemory(image.size() + 0x1000, code, 4), 0u);
  auto const & first = image.sections()[0];
  EXPECT_EQ(image.readMemory(first.address + first.size - 2, code, 4), 2u) << "up to the end of the section";
}

TEST(CrashImage, FindsTheFunctionOfAnAddress) {
  Image const image = program();
  RUNTIME_FUNCTION const * const first = image.functionAt(image.sections()[0].address);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(image.functionAt(first->EndAddress - 1), first);
  EXPECT_NE(image.functionAt(first->EndAddress), first);
  EXPECT_EQ(image.functionAt(0), nullptr);
  EXPECT_EQ(image.functionAt(image.size()), nullptr);
}

TEST(CrashImage, OfAnotherKindOrCutOffIsNone) {
  std::string reason;
  EXPECT_FALSE(readImage("text", reason));
  EXPECT_EQ(reason, "it is no 64-bit program or DLL");
  std::string const whole = programBytes();
  for (std::size_t const size : {std::size_t{1}, std::size_t{64}, std::size_t{512}, whole.size() / 2})
    EXPECT_FALSE(readImage(whole.substr(0, size), reason)) << size;
  EXPECT_EQ(reason, "it is damaged or cut off");
}

TEST(CrashImage, WhoseSectionsAskForGigabytesIsNone) {
  std::string bytes = programBytes();
  std::uint32_t const huge = 0x7FFFFFFF;
  std::size_t const name = bytes.find(".text");
  bytes.replace(name + 8, 4, reinterpret_cast<char const *>(&huge), 4);
  bytes.replace(name + 16, 4, reinterpret_cast<char const *>(&huge), 4);
  std::string reason;
  EXPECT_FALSE(readImage(bytes, reason));
  EXPECT_EQ(reason, "it is damaged or cut off");
}

TEST(CrashImage, CheckSumOfALinkIsThatOfDebuggers) { EXPECT_EQ(kivcrash::linkCheckSum("123456789"), 0xCBF43926u); }

TEST(CrashWholeFile, MayHaveANameInAnyScript) {
  support::TempFolder const folder;
  auto const path = std::filesystem::path(folder.path()) / L"\u65E5\u672C.bin";
  std::filesystem::copy_file(std::filesystem::path(support::binFolder()) / L"crash_lines.exe", path);
  EXPECT_TRUE(kivcrash::isFile(path));
  EXPECT_EQ(kivcrash::readWhole(path), programBytes());
  EXPECT_TRUE(std::filesystem::remove(path)); // the folder can remove only names in the system's code page
}

TEST(CrashWholeFile, ThatIsMissingIsNamedWithTheReason) {
  EXPECT_FALSE(kivcrash::isFile(L"none.bin"));
  EXPECT_FALSE(kivcrash::isFile(support::binFolder())) << "a folder";
  EXPECT_FALSE(kivcrash::isFile(L"a|b?"));
  try {
    kivcrash::readWhole(L"none.bin");
    FAIL();
  } catch (std::runtime_error const & error) {
    EXPECT_TRUE(std::string(error.what()).starts_with("none.bin: cannot be read: ")) << error.what();
  }
}

} // namespace
