#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/memory/allocation.hpp"
#include "sv0105/drawing/page.hpp"
#include "sv0105/drawing/testarchive.hpp"

#include <algorithm>

namespace {

using SV::Image;
using SV::ImagePool;
using SV::Size;
using namespace svtest;

constexpr char kArchive[] = "pictures.zip";
constexpr std::size_t kLargestFile = 4 * 1024 * 1024;

std::string opaqueRed(Size const & size) {
  return pngOf(size, [](long, long) { return 0xFFFF0000; });
}

class Pool : public ToolkitTest {
protected:
  ~Pool() override { ImagePool::SetPoolFile(""); }

  static void hold(std::vector<Packed> const & files) {
    support::writeFile(kArchive, zipOf(files));
    ImagePool::SetPoolFile(kArchive);
  }
};

TEST_F(Pool, GivesThePictureOfAName) {
  hold({{"control/close.png",
         pngOf({3, 2}, [](long x, long y) { return 0xFF000000u | (x == 2 && y == 1 ? 0x123456u : 0xFF0000u); })},
        {"selbox/chkbox0.png", opaqueRed({5, 5}), false}});
  Image const image = ImagePool::GetImage("control/close.png");
  ASSERT_EQ(image.GetSizePixel(), (Size{3, 2}));
  EXPECT_EQ(pixelOf(image.GetBitmap(), 0, 0), kRed);
  EXPECT_EQ(pixelOf(image.GetBitmap(), 2, 1), 0x563412u);
  EXPECT_EQ(image.GetMaskMode(), SV::IMAGE_MASK_NONE);
  EXPECT_EQ(ImagePool::GetImage("selbox/chkbox0.png").GetSizePixel(), (Size{5, 5}));
}

TEST_F(Pool, TakesNamesToTheLetter) {
  hold({{"control/Close.png", opaqueRed({3, 2})}});
  for (char const * const name : {"control/close.png", "CONTROL/CLOSE.PNG", "control\\Close.png", "/control/Close.png",
                                  "control/Close.pn", "control/Close.png ", "Close.png", "", "./control/Close.png"})
    EXPECT_TRUE(ImagePool::GetImage(name).IsEmpty()) << name;
  EXPECT_FALSE(ImagePool::GetImage("control/Close.png").IsEmpty());
  EXPECT_TRUE(ImagePool::GetImage(SV::String("control/Close.png\0x", 19)).IsEmpty());
}

TEST_F(Pool, TakesNamesOfAnyLength) {
  std::string const longest(1024, 'n');
  std::string const tooLong(1025, 'n');
  hold({{longest, opaqueRed({3, 2})}, {tooLong, opaqueRed({3, 2})}, {"last", opaqueRed({1, 1})}});
  EXPECT_FALSE(ImagePool::GetImage(longest.c_str()).IsEmpty());
  EXPECT_TRUE(ImagePool::GetImage(tooLong.c_str()).IsEmpty());
  EXPECT_FALSE(ImagePool::GetImage("last").IsEmpty());
}

TEST_F(Pool, BlendsPicturesWithAFourthChannel) {
  hold({{"half.png", pngOf({2, 1}, [](long x, long) { return x == 0 ? 0x80FF0000u : 0x00FF0000u; })}});
  Image const image = ImagePool::GetImage("half.png");
  EXPECT_EQ(image.GetMaskMode(), SV::IMAGE_MASK_ALPHA);
  Page page;
  SV::OutputDevice device(page.context());
  device.DrawImage({1, 1}, image);
  EXPECT_TRUE(support::alike(page.pixel(1, 1), 0x7F7FFF)) << std::hex << page.pixel(1, 1);
  EXPECT_EQ(page.pixel(2, 1), kWhite);
  device.DrawImage({{10, 10}, {4, 4}}, image);
  EXPECT_TRUE(support::alike(page.pixel(11, 13), 0x7F7FFF));
  EXPECT_EQ(page.pixel(13, 13), kWhite);
}

TEST_F(Pool, ReadsPicturesOfOtherKinds) {
  hold({{"gray.png", grayPngOf({4, 4}, 0x66)}});
  EXPECT_EQ(pixelOf(ImagePool::GetImage("gray.png").GetBitmap(), 3, 3), 0x666666u);
}

TEST_F(Pool, KeepsPicturesUntilAnotherFileIsSet) {
  hold({{"a.png", opaqueRed({3, 2})}});
  Image const first = ImagePool::GetImage("a.png");
  support::writeFile(kArchive, zipOf({{"a.png", opaqueRed({5, 5})}}));
  EXPECT_EQ(ImagePool::GetImage("a.png").GetBitmap().GethBitmap(), first.GetBitmap().GethBitmap());
  ImagePool::SetPoolFile(kArchive);
  EXPECT_EQ(ImagePool::GetImage("a.png").GetSizePixel(), (Size{5, 5}));
}

/// Asks for a picture when it is destroyed.
class AsksAtItsEnd : public SV::Window {
public:
  using Window::Window;

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override {
    if (message == WM_DESTROY)
      seen = ImagePool::GetImage("a.png").GetSizePixel();
    return Window::HandleMessage(message, wParam, lParam);
  }

  Size seen;
};

TEST_F(Pool, KeepsNothingOverAShutdownThoughAWindowAsksAtItsEnd) {
  hold({{"a.png", opaqueRed({3, 2})}});
  AsksAtItsEnd window(nullptr, SV::WB_BORDER);
  SV::DeInitSV();
  EXPECT_EQ(window.seen, (Size{3, 2}));
  ASSERT_TRUE(SV::InitSV(0, nullptr));
  support::writeFile(kArchive, zipOf({{"a.png", opaqueRed({5, 5})}}));
  EXPECT_EQ(ImagePool::GetImage("a.png").GetSizePixel(), (Size{5, 5}));
}

TEST_F(Pool, KeepsNoMoreThanItsShareOfTheMemory) {
  // 16 MiB each
  hold({{"a.png", grayPngOf({2048, 2048}, 1)},
        {"b.png", grayPngOf({2048, 2048}, 2)},
        {"c.png", grayPngOf({2048, 2048}, 3)}});
  for (char const * const name : {"a.png", "b.png", "c.png"})
    EXPECT_EQ(ImagePool::GetImage(name).GetSizePixel(), (Size{2048, 2048}));
  support::writeFile(kArchive, "");
  EXPECT_FALSE(ImagePool::GetImage("a.png").IsEmpty());
  EXPECT_FALSE(ImagePool::GetImage("b.png").IsEmpty());
  EXPECT_TRUE(ImagePool::GetImage("c.png").IsEmpty());
}

TEST_F(Pool, AsksAgainForWhatWasNotThere) {
  hold({});
  EXPECT_TRUE(ImagePool::GetImage("a.png").IsEmpty());
  support::writeFile(kArchive, zipOf({{"a.png", opaqueRed({5, 5})}}));
  EXPECT_FALSE(ImagePool::GetImage("a.png").IsEmpty());
}

TEST_F(Pool, WithoutAnArchiveIsEmpty) {
  ImagePool::SetPoolFile("");
  EXPECT_TRUE(ImagePool::GetImage("a.png").IsEmpty());
  ImagePool::SetPoolFile("nowhere\\pictures.zip");
  EXPECT_TRUE(ImagePool::GetImage("a.png").IsEmpty());
  ImagePool::SetPoolFile(".");
  EXPECT_TRUE(ImagePool::GetImage("a.png").IsEmpty());
}

TEST_F(Pool, IsOfPictures) {
  hold({{"text.png", "no picture at all, but longer than its header would be"},
        {"short.png", opaqueRed({3, 2}).substr(0, 23)},
        {"bmp.png", "BM" + std::string(100, '\0')},
        {"empty.png", ""},
        {"folder/", ""}});
  for (char const * const name : {"text.png", "short.png", "bmp.png", "empty.png", "folder/"})
    EXPECT_TRUE(ImagePool::GetImage(name).IsEmpty()) << name;
}

struct SideRow {
  std::uint32_t width;
  std::uint32_t height;
  bool allowed;
};

TEST_F(Pool, HasPicturesOfAtMost4096PixelsASide) {
  std::vector<Packed> files;
  SideRow const rows[] = {{4096, 1, true}, {1, 4096, true}, {4097, 1, false}, {1, 4097, false}};
  for (SideRow const & row : rows)
    files.push_back(
        {std::to_string(files.size()), grayPngOf({static_cast<long>(row.width), static_cast<long>(row.height)}, 7)});
  hold(files);
  for (std::size_t i = 0; i < std::size(rows); ++i)
    EXPECT_EQ(!ImagePool::GetImage(files[i].name.c_str()).IsEmpty(), rows[i].allowed) << i;
}

TEST_F(Pool, TestsTheSizeBeforeItDecodes) {
  std::string const picture = grayPngOf({2, 2}, 7);
  hold({{"a", withStatedSize(picture, 0x40000000, 1)},
        {"b", withStatedSize(picture, 1, 0xFFFFFFFF)},
        {"c", withStatedSize(picture, 0, 2)},
        {"d", withStatedSize(picture, 5000, 5000)}});
  for (char const * const name : {"a", "b", "c", "d"})
    EXPECT_TRUE(ImagePool::GetImage(name).IsEmpty()) << name;
  EXPECT_TRUE(application.exceptions.empty());
}

/// A picture in a file of that size: what follows its end is left unread.
std::string filled(std::size_t size) {
  std::string picture = opaqueRed({3, 2});
  picture.resize(size);
  return picture;
}

TEST_F(Pool, HasPicturesOfAtMost4MebibytesInTheirFiles) {
  hold({{"largest", filled(kLargestFile)}, {"larger", filled(kLargestFile + 1)}});
  EXPECT_FALSE(ImagePool::GetImage("largest").IsEmpty());
  EXPECT_TRUE(ImagePool::GetImage("larger").IsEmpty());
}

TEST_F(Pool, BelievesNoSizeThatIsNotTrue) {
  std::string const picture = opaqueRed({3, 2});
  Packed stated{"stated", picture};
  stated.statedSize = static_cast<std::uint32_t>(picture.size() + 1);
  Packed less{"less", filled(5'000'000)};
  less.statedSize = 1000;
  Packed huge{"huge", picture};
  huge.statedSize = 0xFFFFFFF0;
  hold({stated, less, huge});
  for (char const * const name : {"stated", "less", "huge"})
    EXPECT_TRUE(ImagePool::GetImage(name).IsEmpty()) << name;
}

TEST_F(Pool, RefusesWhatIsNotSound) {
  std::string const picture = opaqueRed({3, 2});
  Packed sum{"sum", picture};
  sum.checkSumError = 1;
  Packed locked{"locked", picture};
  locked.flags = 1;
  Packed method{"method", picture};
  method.method = 12;
  hold({sum, locked, method, {"sound", picture}});
  for (char const * const name : {"sum", "locked", "method"})
    EXPECT_TRUE(ImagePool::GetImage(name).IsEmpty()) << name;
  EXPECT_FALSE(ImagePool::GetImage("sound").IsEmpty());
}

TEST_F(Pool, TakesTheFirstOfSeveralOfAName) {
  hold({{"a", opaqueRed({3, 2})}, {"a", opaqueRed({5, 5})}});
  EXPECT_EQ(ImagePool::GetImage("a").GetSizePixel(), (Size{3, 2}));
}

TEST_F(Pool, OfADamagedArchiveIsThePictureOrEmpty) {
  std::string const picture =
      pngOf({9, 7}, [](long x, long y) { return 0x80000000u | static_cast<unsigned>(x * 4096 + y * 16); });
  std::string const sound = zipOf({{"a", picture}, {"b", picture, false}, {"c", grayPngOf({5, 3}, 9)}});
  support::Random random(18);
  std::size_t shown = 0;
  std::size_t const rounds = support::times(500);
  for (std::size_t i = 0; i < rounds; ++i) {
    support::writeFile(kArchive, support::damaged(sound, random, {.end = 200}));
    ImagePool::SetPoolFile(kArchive);
    char const * const name = random() % 3 == 0 ? "a" : random() % 2 ? "b" : "c";
    Image const image = ImagePool::GetImage(name);
    shown += image.IsEmpty() ? 0 : 1;
    Size const size = image.IsEmpty() ? Size() : name[0] == 'c' ? Size{5, 3} : Size{9, 7};
    ASSERT_EQ(image.GetSizePixel(), size) << i;
  }
  EXPECT_GT(shown, 0u);
  EXPECT_LT(shown, rounds);
  EXPECT_TRUE(application.exceptions.empty());
}

/// The archive is sound, so that the damage reaches the reader of pictures.
TEST_F(Pool, OfADamagedPictureIsEmptyOrOfAnAllowedSize) {
  std::string const picture =
      pngOf({9, 7}, [](long x, long y) { return 0x80000000u | static_cast<unsigned>(x * 4096 + y * 16); });
  support::Random random(19);
  for (std::size_t i = 0; i < support::times(500); ++i) {
    support::writeFile(kArchive, zipOf({{"a", support::damaged(picture, random, {.end = 200}), false}}));
    ImagePool::SetPoolFile(kArchive);
    Size const size = ImagePool::GetImage("a").GetSizePixel();
    ASSERT_LE(size.width, 4096) << i;
    ASSERT_LE(size.height, 4096) << i;
  }
}

} // namespace
