#include "common/wholefile.hpp"
#include "modules/modulefiles.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

using namespace kivcrash;
namespace fs = std::filesystem;

namespace {

Image imageOf(std::string const & bytes) {
  std::string reason;
  return Image::read(std::make_shared<std::string const>(bytes), reason).value();
}

/// A product's folder with a program, and the dump's entry for it as if it had run elsewhere.
class Product {
public:
  Product() {
    fs::create_directories(root_ / L"plugins");
    bytes_ = readWhole(fs::path(support::binFolder()) / L"crash_plug.dll");
    Image const image = imageOf(bytes_);
    module.base = 0x180000000;
    module.size = image.size();
    module.timeStamp = image.timeStamp();
    module.checkSum = image.checkSum();
    module.path = "C:\\Program Files\\orders\\plugins\\crash_plug.dll";
  }

  void put(fs::path const & name, std::string const & bytes) const {
    fs::create_directories((root_ / name).parent_path());
    support::writeFile((root_ / name).string(), bytes);
  }
  fs::path root() const { return root_; }
  std::string const & bytes() const { return bytes_; }

  /// With another moment in the header.
  std::string otherBuild() const {
    std::string other = bytes_;
    std::uint32_t header = 0;
    std::memcpy(&header, other.data() + 0x3C, sizeof header);
    other[header + 8] = static_cast<char>(other[header + 8] + 1);
    return other;
  }

  Module module;

private:
  support::TempFolder const folder_;
  fs::path const root_ = fs::path(folder_.path());
  std::string bytes_;
};

TEST(CrashModuleFiles, AreFoundInTheFolderItself) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  ModuleFiles files({product.root()});
  EXPECT_EQ(files.file(product.module).path, product.root() / L"crash_plug.dll");
  EXPECT_TRUE(files.file(product.module).image);
}

TEST(CrashModuleFiles, AreFoundInFoldersThatTheirPathsEndIn) {
  for (wchar_t const * place : {L"plugins\\crash_plug.dll", L"orders\\plugins\\crash_plug.dll"}) {
    Product product;
    product.put(place, product.bytes());
    ModuleFiles files({product.root()});
    EXPECT_EQ(files.file(product.module).path, product.root() / place);
  }
}

TEST(CrashModuleFiles, AreLookedForInTheOrderOfTheFolders) {
  Product product;
  product.put(L"a\\crash_plug.dll", product.bytes());
  product.put(L"b\\crash_plug.dll", product.bytes());
  ModuleFiles files({product.root() / L"b", product.root() / L"a"});
  EXPECT_EQ(files.file(product.module).path, product.root() / L"b" / L"crash_plug.dll");
}

TEST(CrashModuleFiles, AreFoundWhereTheyWere) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  product.module.path = (product.root() / L"crash_plug.dll").string();
  ModuleFiles files({});
  EXPECT_TRUE(files.file(product.module).image);
}

TEST(CrashModuleFiles, AreFoundInAFolderOfTheNetwork) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  fs::path const root = L"\\\\?\\" + product.root().native(); // in the form of a share
  ModuleFiles files({root});
  EXPECT_EQ(files.file(product.module).path, root / L"crash_plug.dll");
}

TEST(CrashModuleFiles, OfAFolderThatIsNamedTwiceAreNamedOnce) {
  Product product;
  product.put(L"crash_plug.dll", product.otherBuild());
  ModuleFiles files({product.root(), product.root() / L"plugins" / L".."});
  EXPECT_EQ(files.file(product.module).others.size(), 1u);
}

TEST(CrashModuleFiles, AreNotLookedForInTheNetwork) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  product.module.path = "\\\\?\\" + (product.root() / L"crash_plug.dll").string(); // in the form of a share
  ASSERT_TRUE(isFile(product.module.path));
  ModuleFiles files({});
  EXPECT_FALSE(files.file(product.module).image);
}

TEST(CrashModuleFiles, OfAnotherBuildAreNamedAndNotUsed) {
  Product product;
  product.put(L"crash_plug.dll", product.otherBuild());
  ModuleFiles files({product.root()});
  FoundFile const & found = files.file(product.module);
  EXPECT_FALSE(found.image);
  ASSERT_EQ(found.others.size(), 1u);
  EXPECT_NE(found.others[0].find("crash_plug.dll: another build: its time stamp is "), std::string::npos)
      << found.others[0];
}

TEST(CrashModuleFiles, OfAnotherSizeOrCheckSumAreNamed) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  Module larger = product.module;
  larger.size += 0x1000;
  ModuleFiles files({product.root()});
  EXPECT_NE(files.file(larger).others.at(0).find("another build: its size is "), std::string::npos);
  Module other = product.module;
  other.base += 0x10000000;
  other.checkSum += 1;
  EXPECT_NE(files.file(other).others.at(0).find("another build: its check sum is "), std::string::npos);
  other.base += 0x10000000;
  other.checkSum = 0; // not known
  EXPECT_TRUE(files.file(other).image);
}

TEST(CrashModuleFiles, AfterOneOfAnotherBuildTheNextThatFitsIsUsed) {
  Product product;
  product.put(L"crash_plug.dll", product.otherBuild());
  product.put(L"plugins\\crash_plug.dll", product.bytes());
  ModuleFiles files({product.root()});
  EXPECT_EQ(files.file(product.module).path, product.root() / L"plugins" / L"crash_plug.dll");
  EXPECT_EQ(files.file(product.module).others.size(), 1u);
}

TEST(CrashModuleFiles, ThatAreDamagedAreNamed) {
  Product product;
  product.put(L"crash_plug.dll", "text");
  product.put(L"plugins\\crash_plug.dll", product.bytes().substr(0, 5'000));
  ModuleFiles files({product.root()});
  auto const & others = files.file(product.module).others;
  ASSERT_EQ(others.size(), 2u);
  EXPECT_NE(others[0].find("it is no 64-bit program or DLL"), std::string::npos);
  EXPECT_NE(others[1].find("it is damaged or cut off"), std::string::npos);
}

TEST(CrashSymbolFiles, AreTheModuleItselfWhereTheyAreInIt) {
  Product product;
  product.put(L"crash_plug.dll", product.bytes());
  ModuleFiles files({product.root()});
  EXPECT_EQ(files.symbols(product.module).path, product.root() / L"crash_plug.dll");
  EXPECT_TRUE(files.symbols(product.module).image);
}

/// A program without symbols in it, and the file of symbols that its link names.
class Split {
public:
  Split() {
    fs::path const folder = fs::path(support::binFolder()) / L"split";
    std::string const bytes = readWhole(folder / L"crash_lines.exe");
    Image const image = imageOf(bytes);
    product.module.size = image.size();
    product.module.timeStamp = image.timeStamp();
    product.module.checkSum = image.checkSum();
    product.module.path = "C:\\orders\\crash_lines.exe";
    product.put(L"crash_lines.exe", bytes);
    symbols = readWhole(folder / L".debug" / L"crash_lines.exe.debug");
  }

  /// The place of the size of the last section that a program has, too.
  std::size_t placeOfLastSize() const {
    Image const image = imageOf(symbols);
    std::size_t last = 0;
    for (std::size_t i = 0; i < image.sections().size(); ++i)
      if (image.sections()[i].address + image.sections()[i].size == image.sizeOfCode())
        last = i;
    return 24 + sizeof(IMAGE_OPTIONAL_HEADER64) + last * sizeof(IMAGE_SECTION_HEADER) + 8;
  }

  /// Why the symbols are not used with another value there in their header.
  std::string reasonWith(std::size_t place) {
    std::uint32_t header = 0;
    std::memcpy(&header, symbols.data() + 0x3C, sizeof header);
    symbols[header + place] = static_cast<char>(symbols[header + place] ^ 1);
    return reason();
  }

  std::string reason() const {
    product.put(L".debug\\crash_lines.exe.debug", symbols);
    ModuleFiles files({product.root()});
    FoundFile const & found = files.symbols(product.module);
    return found.image ? "used" : found.others.at(0).substr(found.others.at(0).find(".debug: ") + 8);
  }

  Product product;
  std::string symbols;
};

TEST(CrashSymbolFiles, ThatTheLinkNamesFitByTimeSizeAndCheckSum) {
  constexpr std::size_t kTimeStamp = 8;
  constexpr std::size_t kCheckSum = 24 + 64;
  EXPECT_EQ(Split().reason(), "used");
  EXPECT_TRUE(Split().reasonWith(kTimeStamp).starts_with("debug symbols of another build: their time stamp is "));
  Split split;
  EXPECT_TRUE(split.reasonWith(split.placeOfLastSize()).starts_with("debug symbols of another build: they are for "));
  EXPECT_TRUE(Split().reasonWith(kCheckSum).starts_with("damaged, or debug symbols of another build: "));
}

TEST(CrashSymbolFiles, WithoutTheModuleAreThoseOfItsNameAndTime) {
  for (wchar_t const * place :
       {L"crash_plug.dll.debug", L".debug\\crash_plug.dll.debug", L"plugins\\.debug\\crash_plug.dll.debug"}) {
    Product product;
    product.put(place, product.bytes());
    ModuleFiles files({product.root()});
    EXPECT_FALSE(files.file(product.module).image);
    EXPECT_EQ(files.symbols(product.module).path, product.root() / place);
  }
}

TEST(CrashSymbolFiles, WithoutTheModuleAndOfAnotherBuildAreNamed) {
  Product product;
  product.put(L"crash_plug.dll.debug", product.otherBuild());
  ModuleFiles files({product.root()});
  EXPECT_FALSE(files.symbols(product.module).image);
  EXPECT_NE(files.symbols(product.module).others.at(0).find("debug symbols of another build: their time stamp is "),
            std::string::npos);
}

TEST(CrashSymbolFiles, WithoutTheModuleAndForAnotherSizeAreNamed) {
  Product product;
  product.put(L"crash_plug.dll.debug", product.bytes());
  product.module.size += 0x100000;
  ModuleFiles files({product.root()});
  EXPECT_FALSE(files.symbols(product.module).image);
  EXPECT_NE(files.symbols(product.module).others.at(0).find("debug symbols of another build: they are for "),
            std::string::npos);
}

} // namespace
