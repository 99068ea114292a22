#include "sv0105/application/testapplication.hpp"

#include "support/data/damage.hpp"
#include "support/imports/import_hook.hpp"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

namespace {

using SV::ResId;
using SV::ResMgr;
using SV::Resource;
using SV::String;

constexpr char kFirst[] = "testres\\first72.dll";
constexpr char kSecond[] = "testres\\second72.dll";

std::string programFolder() {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, sizeof path);
  return std::string(path).substr(0, std::string(path).rfind('\\') + 1);
}

std::string currentFolder() {
  char path[MAX_PATH];
  GetCurrentDirectoryA(sizeof path, path);
  return std::string(path) + '\\';
}

std::string bytesOf(std::string const & path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void write(std::string const & path, std::string const & bytes) { std::ofstream(path, std::ios::binary) << bytes; }

class ResourceTest : public testing::Test {
protected:
  TestApplication application;
};

using ResourceIdentifier = ResourceTest;

TEST_F(ResourceIdentifier, IsTypeAndNumber) {
  ResId const id(0x2002B7E);
  EXPECT_EQ(id.GetId(), 0x2002B7Eu);
  EXPECT_EQ(id.GetType(), SV::RSC_STRING);
  EXPECT_EQ(id.GetNumber(), 0x2B7Eu);
  EXPECT_EQ(id.GetResMgr(), nullptr);
}

TEST_F(ResourceIdentifier, IsAPlainNumberWithoutAHighPart) {
  ResMgr manager(kFirst);
  ResId const id(4801, &manager);
  EXPECT_EQ(id.GetType(), 0u);
  EXPECT_EQ(id.GetNumber(), 4801u);
  EXPECT_EQ(id.GetResMgr(), &manager);
}

using ResourceFile = ResourceTest;

TEST_F(ResourceFile, IsLoadedAndKeepsItsNameAsGiven) {
  ResMgr const manager(kFirst);
  EXPECT_TRUE(manager.IsLoaded());
  EXPECT_NE(manager.GetModule(), nullptr);
  EXPECT_STREQ(manager.GetFileName().c_str(), kFirst);
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(ResourceFile, WithABareNameGetsABackslash) {
  std::string const name = "sv0105_bare_" + std::to_string(GetCurrentProcessId()) + ".dll";
  std::filesystem::copy_file(programFolder() + kFirst, programFolder() + name);
  {
    ResMgr const manager(name.c_str());
    EXPECT_TRUE(manager.IsLoaded());
    EXPECT_EQ(textOf(manager.GetFileName()), ".\\" + name);
  }
  std::filesystem::remove(programFolder() + name);
}

TEST_F(ResourceFile, IsFoundByItsAbsoluteNameAndWithSlashes) {
  std::string const absolute = programFolder() + kFirst;
  EXPECT_TRUE(ResMgr(absolute.c_str()).IsLoaded());
  EXPECT_TRUE(ResMgr("testres/first72.dll").IsLoaded());
  EXPECT_TRUE(ResMgr(absolute.substr(2).c_str()).IsLoaded()) << "from the root of the program's drive";
  EXPECT_TRUE(ResMgr("testres\\..\\testres\\first72.dll").IsLoaded());
}

TEST_F(ResourceFile, WithoutAPointInItsNameIsNotCompleted) {
  std::filesystem::copy_file(programFolder() + kFirst, "nopoint");
  EXPECT_TRUE(ResMgr((currentFolder() + "nopoint").c_str()).IsLoaded());
  std::filesystem::copy_file(programFolder() + kFirst, "other.dll");
  EXPECT_FALSE(ResMgr((currentFolder() + "other").c_str()).IsLoaded());
}

TEST_F(ResourceFile, IsNeverTakenFromTheWorkingDirectory) {
  std::filesystem::copy_file(programFolder() + kFirst, "here72.dll");
  std::filesystem::create_directory("testres");
  std::filesystem::copy_file(programFolder() + kFirst, "testres\\here72.dll");
  char drive[] = "?:here72.dll";
  drive[0] = currentFolder()[0];
  for (char const * name : {"here72.dll", ".\\here72.dll", "testres\\here72.dll", static_cast<char const *>(drive)})
    EXPECT_FALSE(ResMgr(name).IsLoaded()) << name;
}

/// The headers of a whole file.
IMAGE_NT_HEADERS64 & headersOf(std::string & bytes) {
  return *reinterpret_cast<IMAGE_NT_HEADERS64 *>(bytes.data() + *reinterpret_cast<int const *>(bytes.data() + 0x3C));
}

TEST_F(ResourceFile, WithoutATableOfResourcesIsLoadedAndHasNone) {
  std::string const whole = bytesOf(programFolder() + kFirst);
  std::string const path = currentFolder() + "empty.dll";
  void (*const rows[])(IMAGE_OPTIONAL_HEADER64 &) = {
      [](IMAGE_OPTIONAL_HEADER64 & header) { header.DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE] = {}; },
      [](IMAGE_OPTIONAL_HEADER64 & header) { header.NumberOfRvaAndSizes = IMAGE_DIRECTORY_ENTRY_RESOURCE; }};
  for (auto const takeAway : rows) {
    std::string bytes = whole;
    takeAway(headersOf(bytes).OptionalHeader);
    write(path, bytes);
    ResMgr manager(path.c_str());
    EXPECT_TRUE(manager.IsLoaded());
    EXPECT_EQ(Resource::LoadString(ResId(1, &manager)), "");
    EXPECT_EQ(application.exceptions.back().code, 0x100);
  }
}

/// The same file with the shorter header of 32-bit DLLs, whose space stays as long as it was.
std::string in32Bits(std::string bytes) {
  IMAGE_NT_HEADERS64 & headers = headersOf(bytes);
  IMAGE_OPTIONAL_HEADER64 const from = headers.OptionalHeader;
  IMAGE_OPTIONAL_HEADER32 to = {};
  to.Magic = IMAGE_NT_OPTIONAL_HDR32_MAGIC;
  to.SizeOfInitializedData = from.SizeOfInitializedData;
  to.ImageBase = 0x10000000;
  to.SectionAlignment = from.SectionAlignment;
  to.FileAlignment = from.FileAlignment;
  to.MajorOperatingSystemVersion = from.MajorOperatingSystemVersion;
  to.MajorSubsystemVersion = from.MajorSubsystemVersion;
  to.SizeOfImage = from.SizeOfImage;
  to.SizeOfHeaders = from.SizeOfHeaders;
  to.Subsystem = from.Subsystem;
  to.NumberOfRvaAndSizes = IMAGE_NUMBEROF_DIRECTORY_ENTRIES;
  to.DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE] = from.DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE];
  headers.FileHeader.Machine = IMAGE_FILE_MACHINE_I386;
  std::memcpy(&headers.OptionalHeader, &to, sizeof to);
  return bytes;
}

TEST_F(ResourceFile, MayHaveBeenMadeFor32Bits) {
  std::string const path = currentFolder() + "narrow.dll";
  write(path, in32Bits(bytesOf(programFolder() + kFirst)));
  ResMgr manager(path.c_str());
  ASSERT_TRUE(manager.IsLoaded());
  EXPECT_EQ(Resource::LoadString(ResId(1, &manager)), "one");
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(ResourceFile, ThatIsMissingRaisesAnExceptionWithItsNameBelow4GiB) {
  ResMgr const manager("language\\1031\\missing72.dll");
  EXPECT_FALSE(manager.IsLoaded());
  EXPECT_EQ(manager.GetModule(), nullptr);
  EXPECT_STREQ(manager.GetFileName().c_str(), "language\\1031\\missing72.dll");
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x400);
  EXPECT_NE(application.exceptions[0].arg, 0u);
  EXPECT_EQ(application.exceptions[0].name, "language\\1031\\missing72.dll");
}

void play(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "KERNEL32.dll", {{function, replacement}});
}

void * WINAPI refuseMemory(void *, SIZE_T, DWORD, DWORD) { return nullptr; }
SIZE_T WINAPI refuseToTell(void const *, MEMORY_BASIC_INFORMATION *, SIZE_T) { return 0; }

TEST_F(ResourceFile, ThatIsMissingIsReportedWithoutItsNameWhenNoMemoryIsLeftBelow4GiB) {
  play("VirtualAlloc", reinterpret_cast<void *>(refuseMemory));
  EXPECT_FALSE(ResMgr("missing72.dll").IsLoaded());
  play("VirtualQuery", reinterpret_cast<void *>(refuseToTell));
  EXPECT_FALSE(ResMgr("missing72.dll").IsLoaded());
  ASSERT_EQ(application.exceptions.size(), 2u);
  for (auto const & exception : application.exceptions) {
    EXPECT_EQ(exception.code, 0x400);
    EXPECT_EQ(exception.arg, 0u);
  }
}

DWORD longestAsked = 0;

/// As of a program whose path has 600 characters: what is too short is filled, and its whole size answered.
DWORD WINAPI pathOfManyLetters(HMODULE module, wchar_t * path, DWORD size) {
  longestAsked = size;
  return size < 600 ? size : GetModuleFileNameW(module, path, size);
}

TEST_F(ResourceFile, IsFoundBesideAProgramWithALongPath) {
  play("GetModuleFileNameW", reinterpret_cast<void *>(pathOfManyLetters));
  EXPECT_TRUE(ResMgr(kFirst).IsLoaded());
  EXPECT_GE(longestAsked, 600u);
}

TEST_F(ResourceFile, ThatIsMissingReportsItsNameForEveryLength) {
  for (int length : {0, 1, 4095, 65535, 65536, 1000000, 3}) {
    std::string const name(static_cast<std::size_t>(length), 'n');
    ResMgr const manager(name.c_str());
    EXPECT_EQ(application.exceptions.back().name, ".\\" + name);
  }
}

TEST(ResourceFileWithoutAnApplication, IsRefusedInSilence) {
  EXPECT_FALSE(ResMgr("missing72.dll").IsLoaded());
  EXPECT_EQ(Resource::LoadString(1).Len(), 0);
}

class BrokenResourceFile : public ResourceTest {
protected:
  /// Whether the bytes are taken for a resource DLL. If so, everything in it is read.
  bool loads(std::string const & bytes) {
    std::string const path = currentFolder() + "broken.dll";
    write(path, bytes);
    ResMgr manager(path.c_str());
    if (!manager.IsLoaded()) {
      EXPECT_EQ(application.exceptions.back().code, 0x400);
      EXPECT_EQ(application.exceptions.back().name, path);
      return false;
    }
    for (unsigned long number : {0, 1, 15, 16, 300, 301, 302, 0x2B7E, 0x2B80, 0xFFFF})
      Resource::LoadString(ResId(number, &manager));
    SV::Bitmap(ResId(10, &manager)).GetSizePixel();
    return true;
  }

  std::string const whole = bytesOf(programFolder() + kFirst);
};

TEST_F(BrokenResourceFile, IsRefusedAtEveryLengthThatCutsASection) {
  ASSERT_TRUE(loads(whole));
  std::size_t const header = *reinterpret_cast<unsigned const *>(whole.data() + 0x3C);
  auto const * const nt = reinterpret_cast<IMAGE_NT_HEADERS64 const *>(whole.data() + header);
  auto const * const section = IMAGE_FIRST_SECTION(nt);
  std::size_t end = 0;
  for (int i = 0; i < nt->FileHeader.NumberOfSections; ++i)
    end = std::max<std::size_t>(end, section[i].PointerToRawData + section[i].SizeOfRawData);
  ASSERT_LE(end, whole.size());
  for (std::size_t length = 0; length <= whole.size(); length += length < 1024 || length + 64 > end ? 1 : 37)
    EXPECT_EQ(loads(whole.substr(0, length)), length >= end) << length;
}

TEST_F(BrokenResourceFile, IsRefusedWhenItIsText) {
  EXPECT_FALSE(loads(""));
  EXPECT_FALSE(loads("[languages]\r\n1031\r\n"));
  EXPECT_FALSE(loads("MZ" + std::string(100, ' ')));
  EXPECT_FALSE(loads("MZ" + std::string(1000, '\xFF')));
}

TEST_F(BrokenResourceFile, IsRefusedWhenItIsAProgramOrAFolder) {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, sizeof path);
  EXPECT_FALSE(ResMgr(path).IsLoaded());
  EXPECT_FALSE(ResMgr(currentFolder().c_str()).IsLoaded());
  EXPECT_FALSE(ResMgr("").IsLoaded());
}

TEST_F(BrokenResourceFile, IsRefusedWhenItsBytesAreRandom) {
  support::Random random(1);
  for (int i = 0; i < 300; ++i) {
    std::string bytes(random() % 5000, '\0');
    for (char & byte : bytes)
      byte = static_cast<char>(random());
    EXPECT_FALSE(loads(bytes));
    EXPECT_FALSE(loads(whole.substr(0, 0x200) + bytes));
  }
}

TEST_F(BrokenResourceFile, NeverFaultsWhenSomeOfItsBytesAreWrong) {
  support::Random random(2);
  for (std::size_t i = 0; i < support::times(1000); ++i)
    loads(support::damaged(whole, random));
}

/// The table of resources of a whole file, to be spoilt.
class ResourceTable {
public:
  explicit ResourceTable(std::string & bytes) {
    auto const * const nt = reinterpret_cast<IMAGE_NT_HEADERS64 const *>(
        bytes.data() + *reinterpret_cast<int const *>(bytes.data() + 0x3C));
    auto const * section = IMAGE_FIRST_SECTION(nt);
    while (section->VirtualAddress != nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE].VirtualAddress)
      ++section;
    start_ = bytes.data() + section->PointerToRawData;
  }

  /// The first entry of the folder at \p offset.
  IMAGE_RESOURCE_DIRECTORY_ENTRY & firstEntry(DWORD offset = 0) const {
    return *reinterpret_cast<IMAGE_RESOURCE_DIRECTORY_ENTRY *>(start_ + offset + sizeof(IMAGE_RESOURCE_DIRECTORY));
  }
  IMAGE_RESOURCE_DIRECTORY_ENTRY & firstLanguage() const {
    return firstEntry(firstEntry(firstEntry().OffsetToDirectory).OffsetToDirectory);
  }
  IMAGE_RESOURCE_DATA_ENTRY & firstData() const {
    return *reinterpret_cast<IMAGE_RESOURCE_DATA_ENTRY *>(start_ + firstLanguage().OffsetToData);
  }
  IMAGE_RESOURCE_DIRECTORY & root() const { return *reinterpret_cast<IMAGE_RESOURCE_DIRECTORY *>(start_); }

private:
  char * start_;
};

TEST_F(BrokenResourceFile, WhoseTableLeadsAstrayIsRefused) {
  struct {
    char const * what;
    void (*spoil)(ResourceTable const &);
  } const rows[] = {
      {"a folder that leads back", [](ResourceTable const & t) { t.firstEntry().OffsetToData = 0x80000000; }},
      {"a folder beyond the section", [](ResourceTable const & t) { t.firstEntry().OffsetToData = 0xFFFFFFF0; }},
      {"a folder in place of data", [](ResourceTable const & t) { t.firstLanguage().OffsetToData |= 0x80000000; }},
      {"data in place of a folder", [](ResourceTable const & t) { t.firstEntry().OffsetToData &= 0x7FFFFFFF; }},
      {"more entries than there is room", [](ResourceTable const & t) { t.root().NumberOfIdEntries = 0xFFFF; }},
      {"a name beyond the section", [](ResourceTable const & t) { t.firstEntry().Name = 0xFFFFFFFE; }},
      {"a data entry beyond the section", [](ResourceTable const & t) { t.firstLanguage().OffsetToData = 0x7FFFFFF0; }},
      {"data beyond the sections", [](ResourceTable const & t) { t.firstData().OffsetToData = 0x00FFFFFF; }},
      {"data before the sections", [](ResourceTable const & t) { t.firstData().OffsetToData = 0; }},
      {"data that ends beyond its section", [](ResourceTable const & t) { t.firstData().Size = 0x10000; }},
      {"data of more than 2 GiB", [](ResourceTable const & t) { t.firstData().Size = 0xFFFFFFFF; }}};
  for (auto const & row : rows) {
    std::string bytes = whole;
    row.spoil(ResourceTable(bytes));
    EXPECT_FALSE(loads(bytes)) << row.what;
  }
}

using StringResource = ResourceTest;

TEST_F(StringResource, IsFoundOnBothSidesOfABlockBoundary) {
  ResMgr manager(kFirst);
  Resource::SetResManager(&manager);
  struct {
    unsigned long id;
    char const * text;
  } const rows[] = {{0x0001, "one"},
                    {0x000F, "last of the first block"},
                    {0x0010, "first of the second block"},
                    {0x2B7E, "Internal error %s"},
                    {0x2B7F, "last of its block"},
                    {0x2B80, "first of its block"},
                    {0xFFFF, "the last of all"},
                    {0x2002B7E, "Internal error %s"},
                    {0x200FFFF, "the last of all"}};
  for (auto const & row : rows)
    EXPECT_STREQ(Resource::LoadString(row.id).c_str(), row.text) << row.id;
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(StringResource, ComesInTheCodePageOfTheSystem) {
  ResMgr manager(kFirst);
  ASSERT_EQ(GetACP(), 1252u);
  EXPECT_STREQ(Resource::LoadString(ResId(300, &manager)).c_str(), "Gr\xF6\xDF"
                                                                   "e");
}

TEST_F(StringResource, ThatIsMissingRaisesAnExceptionWithItsWholeIdentifier) {
  ResMgr manager(kFirst);
  Resource::SetResManager(&manager);
  EXPECT_EQ(Resource::LoadString(0x2001234).Len(), 0);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x100);
  EXPECT_EQ(application.exceptions[0].arg, 0x2001234u);
}

TEST_F(StringResource, ThatIsMissingInAnExistingBlockOrEmptyIsMissing) {
  ResMgr manager(kFirst);
  for (unsigned long id : {0UL, 2UL, 14UL, 302UL, 0xFFFEUL})
    EXPECT_EQ(Resource::LoadString(ResId(id, &manager)).Len(), 0) << id;
  EXPECT_EQ(application.exceptions.size(), 5u);
}

TEST_F(StringResource, IsTriedAgainWithTheManagerThatIsActiveAfterTheException) {
  ResMgr first(kFirst);
  ResMgr second(kSecond);
  Resource::SetResManager(&first);
  application.onException = [&] { Resource::SetResManager(&second); };
  EXPECT_STREQ(Resource::LoadString(400).c_str(), "nur im zweiten");
  EXPECT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(Resource::GetResManager(), &second) << "there is no return to the first one";
  EXPECT_STREQ(Resource::LoadString(1).c_str(), "eins");
}

TEST_F(StringResource, IsTriedWithTheActiveManagerAfterItsOwnHasFailed) {
  ResMgr first(kFirst);
  ResMgr second(kSecond);
  Resource::SetResManager(&second);
  EXPECT_STREQ(Resource::LoadString(ResId(1, &first)).c_str(), "one");
  EXPECT_STREQ(Resource::LoadString(ResId(400, &first)).c_str(), "nur im zweiten");
  EXPECT_EQ(application.exceptions.size(), 1u);
}

TEST_F(StringResource, IsEmptyWhenNoManagerIsLeft) {
  ResMgr first(kFirst);
  Resource::SetResManager(&first);
  application.onException = [&] { Resource::SetResManager(nullptr); };
  EXPECT_EQ(Resource::LoadString(400).Len(), 0);
  EXPECT_EQ(application.exceptions.size(), 1u);
}

TEST_F(StringResource, IsTriedOnceWithEachManager) {
  ResMgr first(kFirst);
  ResMgr second(kSecond);
  Resource::SetResManager(&first);
  application.onException = [&] { Resource::SetResManager(Resource::GetResManager() == &first ? &second : &first); };
  EXPECT_EQ(Resource::LoadString(999).Len(), 0);
  EXPECT_EQ(application.exceptions.size(), 2u);
}

TEST_F(StringResource, WithoutAnyManagerRaisesTheExceptionAndTakesTheOneThatIsThenActive) {
  EXPECT_EQ(Resource::LoadString(1).Len(), 0);
  EXPECT_EQ(application.exceptions.size(), 1u);
  ResMgr first(kFirst);
  application.onException = [&] { Resource::SetResManager(&first); };
  EXPECT_STREQ(Resource::LoadString(1).c_str(), "one");
}

TEST_F(StringResource, OfAManagerThatWasNotLoadedIsMissing) {
  ResMgr missing("missing72.dll");
  application.exceptions.clear();
  EXPECT_EQ(Resource::LoadString(ResId(1, &missing)).Len(), 0);
  EXPECT_EQ(application.exceptions.size(), 1u);
}

using ActiveManager = ResourceTest;

TEST_F(ActiveManager, IsTheOneThatWasSetLast) {
  ResMgr first(kFirst);
  ResMgr second(kSecond);
  EXPECT_EQ(Resource::GetResManager(), nullptr);
  EXPECT_EQ(Resource::SetResManager(&first), nullptr);
  EXPECT_EQ(Resource::SetResManager(&second), &first);
  EXPECT_EQ(Resource::SetResManager(nullptr), &second);
}

TEST_F(ActiveManager, IsGoneWhenItDies) {
  auto first = std::make_unique<ResMgr>(kFirst);
  ResMgr second(kSecond);
  Resource::SetResManager(&second);
  first.reset();
  EXPECT_EQ(Resource::GetResManager(), &second);
  first = std::make_unique<ResMgr>(kFirst);
  Resource::SetResManager(first.get());
  first.reset();
  EXPECT_EQ(Resource::GetResManager(), nullptr);
}

} // namespace
