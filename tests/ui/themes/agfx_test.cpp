// The pictures of the themes as they are shipped, and archives that are not.

#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "sv0105/drawing/testarchive.hpp"
#include "ui/themes/themetest.hpp"

#include <algorithm>

namespace {

using namespace themetest;
using svtest::Packed;

KivThemeManager & manager() { return KivThemeManager::Instance(); }

constexpr char const * kNames[] = {"control/close.png", "selbox/chkbox0.png", "selbox/chkbox1.png",
                                   "selbox/chkbox2.png"};
constexpr char kArchive[] = "agfx.zip";

class Pictures : public ThemeTest {
protected:
  Pictures() : ThemeTest({1, Styles::Off}) {}

  /// Makes these bytes the archive, and forgets what came from another one.
  static void use(std::string const & bytes) {
    support::writeFile(kArchive, bytes);
    SV::ImagePool::SetPoolFile(kArchive);
    KivThemeManager::SysThemeChanged();
  }

  /// What a program shows with the archive, whatever it is.
  void showAll() {
    for (KivThemeClass const part : {CaptionActive, CaptionInactive, PlainCaptionActive, PlainCaptionInactive})
      theme.DrawCloseButton(window, part, {{10, 9}, {16, 16}}, false, false);
    window.DrawImage({1, 40}, manager().GetCheckBoxIconImg(false));
    window.DrawImage({1, 60}, manager().GetCheckBoxIconImg(true));
    window.DrawImage({1, 80}, manager().GetMixedCheckBoxIconImg());
  }
};

TEST_F(Pictures, AreInTheArchiveUnderTheirNames) {
  for (char const * const name : kNames) {
    SV::Image const image = SV::ImagePool::GetImage(name);
    EXPECT_EQ(image.GetSizePixel(), (SV::Size{16, 16})) << name;
    EXPECT_EQ(image.GetMaskMode(), SV::IMAGE_MASK_ALPHA) << name;
  }
}

TEST_F(Pictures, AreNoneOfTheSameLook) {
  std::vector<Canvas> canvases(std::size(kNames));
  for (std::size_t i = 0; i < std::size(kNames); ++i)
    SV::OutputDevice(canvases[i].context()).DrawImage({0, 0}, SV::ImagePool::GetImage(kNames[i]));
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    EXPECT_FALSE(canvases[i].isUntouched()) << kNames[i];
    for (std::size_t j = 0; j < i; ++j)
      EXPECT_TRUE(canvases[i].difference(canvases[j])) << kNames[i] << ", " << kNames[j];
  }
}

struct HostileRow {
  char const * what;
  std::vector<Packed> files;
};

/// Each file under each of our names.
std::vector<Packed> everywhere(Packed file) {
  std::vector<Packed> files;
  for (char const * const name : kNames) {
    file.name = name;
    files.push_back(file);
  }
  return files;
}

std::vector<HostileRow> hostileRows() {
  std::string const sound = svtest::grayPngOf({16, 16}, 7);
  std::string const zeros = sound + std::string(5'000'000, '\0'); // some 5 KB when packed
  Packed bomb{"", zeros};
  bomb.statedSize = static_cast<std::uint32_t>(sound.size());
  Packed openBomb{"", zeros};
  Packed huge{"", sound};
  huge.statedSize = 0xFFFFFFF0;
  Packed less{"", sound};
  less.statedSize = static_cast<std::uint32_t>(sound.size() - 1);
  Packed sum{"", sound};
  sum.checkSumError = 1;
  Packed locked{"", sound};
  locked.flags = 1;
  return {{"a bomb", everywhere(bomb)},
          {"a bomb that says so", everywhere(openBomb)},
          {"a file that says it is huge", everywhere(huge)},
          {"a file that says it is smaller", everywhere(less)},
          {"a wrong check sum", everywhere(sum)},
          {"a password", everywhere(locked)},
          {"too many pixels", everywhere({"", svtest::withStatedSize(sound, 0x7FFFFFFF, 0x7FFFFFFF)})},
          {"too wide", everywhere({"", svtest::withStatedSize(sound, 4097, 1)})},
          {"no pixels", everywhere({"", svtest::withStatedSize(sound, 0, 0)})},
          {"no pictures", everywhere({"", "no picture at all, but longer than its header would be"})},
          {"nothing", {}},
          {"names that lead elsewhere",
           {{"../control/close.png", sound},
            {"..\\control\\close.png", sound},
            {"/control/close.png", sound},
            {"C:\\control\\close.png", sound},
            {"selbox/../selbox/chkbox0.png", sound},
            {"selbox/./chkbox1.png", sound}}}};
}

TEST_F(Pictures, OfAHostileArchiveAreEmpty) {
  for (HostileRow const & row : hostileRows()) {
    use(svtest::zipOf(row.files));
    drawn.reset();
    showAll();
    EXPECT_TRUE(drawn.isUntouched()) << row.what;
    for (SV::Image const * const image : {&manager().GetCheckBoxIconImg(false), &manager().GetCheckBoxIconImg(true),
                                          &manager().GetMixedCheckBoxIconImg()})
      EXPECT_TRUE(image->IsEmpty()) << row.what;
  }
  EXPECT_TRUE(application.exceptions.empty());
  EXPECT_FALSE(GetFileAttributesA("..\\control\\close.png") != INVALID_FILE_ATTRIBUTES)
      << "nothing is unpacked into files";
}

TEST_F(Pictures, OfABombDoNotFillTheMemory) {
  std::size_t const trueSize = svtest::grayPngOf({16, 16}, 7).size();
  for (char const * const archive : {"open.zip", "lying.zip"}) {
    Packed bomb{kNames[0], svtest::grayPngOf({16, 16}, 7)};
    bomb.content.resize(40'000'000);
    bomb.statedSize = static_cast<std::uint32_t>(archive[0] == 'l' ? trueSize : 0);
    support::writeFile(archive, svtest::zipOf({bomb}));
  }
  for (char const * const archive : {"open.zip", "lying.zip"}) {
    support::AllocationLimit const limit(6'000'000);
    SV::ImagePool::SetPoolFile(archive);
    KivThemeManager::SysThemeChanged();
    EXPECT_NO_THROW(showAll()) << archive;
    EXPECT_TRUE(drawn.isUntouched()) << archive;
  }
}

TEST_F(Pictures, OfADamagedArchiveAreThoseThatWereMeantOrEmpty) {
  std::string const sound = support::readFile(Kiv_GetProgramPathFilename("agfx.zip").c_str()).value();
  support::Random random(24);
  std::size_t shown = 0;
  std::size_t const rounds = support::times(1000);
  for (std::size_t i = 0; i < rounds; ++i) {
    use(support::damaged(sound, random, {.end = 300}));
    theme.DrawCloseButton(window, CaptionActive, {{10, 9}, {16, 16}}, false, false);
    for (char const * const name : kNames) {
      SV::Image const image = SV::ImagePool::GetImage(name);
      shown += image.IsEmpty() ? 0 : 1;
      ASSERT_TRUE(image.IsEmpty() || image.GetSizePixel() == (SV::Size{16, 16})) << i;
    }
  }
  EXPECT_GT(shown, 0u);
  EXPECT_LT(shown, rounds * std::size(kNames));
  EXPECT_TRUE(application.exceptions.empty());
}

} // namespace
