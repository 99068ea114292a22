#include "sv0105/application/testapplication.hpp"

#include "support/imports/import_hook.hpp"

namespace {

using SV::Bitmap;

COLORREF pixel(Bitmap const & bitmap, int x, int y) {
  HDC const device = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(device, bitmap.GethBitmap());
  COLORREF const color = GetPixel(device, x, y);
  SelectObject(device, former);
  DeleteDC(device);
  return color;
}

void setPixel(Bitmap const & bitmap, int x, int y, COLORREF color) {
  HDC const device = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(device, bitmap.GethBitmap());
  SetPixel(device, x, y, color);
  SelectObject(device, former);
  DeleteDC(device);
}

class BitmapTest : public testing::Test {
protected:
  TestApplication application;
};

TEST_F(BitmapTest, IsEmptyUntilItHasAPicture) {
  Bitmap const bitmap;
  EXPECT_TRUE(bitmap.IsEmpty());
  EXPECT_EQ(bitmap.GethBitmap(), nullptr);
  EXPECT_EQ(bitmap.GetSizePixel(), (SV::Size{0, 0}));
  EXPECT_TRUE(bitmap.Clone().IsEmpty());
  EXPECT_TRUE(Bitmap(HBITMAP{}).IsEmpty());
}

TEST_F(BitmapTest, OfASizeIsBlackAndHas32Bits) {
  Bitmap const bitmap(SV::Size{5, 7});
  EXPECT_EQ(bitmap.GetSizePixel(), (SV::Size{5, 7}));
  EXPECT_EQ(pixel(bitmap, 4, 6), 0u);
  BITMAP description;
  GetObjectA(bitmap.GethBitmap(), sizeof description, &description);
  EXPECT_EQ(description.bmBitsPixel, 32);
}

TEST_F(BitmapTest, WithASideBelowOneIsEmptyAndNoFault) {
  for (SV::Size size : {SV::Size{0, 1}, SV::Size{1, 0}, SV::Size{-1, 5}, SV::Size{5, -1}})
    EXPECT_TRUE(Bitmap(size).IsEmpty());
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(BitmapTest, ThatTheSystemRefusesRaisesAnException) {
  EXPECT_TRUE(Bitmap(SV::Size{0x7FFFFFFF, 0x7FFFFFFF}).IsEmpty());
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x200);
}

TEST_F(BitmapTest, SharesItsPixelsWithACopyAndNotWithAClone) {
  Bitmap const bitmap(SV::Size{2, 2});
  setPixel(bitmap, 1, 1, 0x112233);
  Bitmap const copy = bitmap;
  Bitmap const clone = bitmap.Clone();
  EXPECT_EQ(copy.GethBitmap(), bitmap.GethBitmap());
  EXPECT_NE(clone.GethBitmap(), bitmap.GethBitmap());
  EXPECT_EQ(clone.GetSizePixel(), bitmap.GetSizePixel());
  EXPECT_EQ(pixel(clone, 1, 1), 0x112233u);
  setPixel(bitmap, 1, 1, 0x445566);
  EXPECT_EQ(pixel(copy, 1, 1), 0x445566u);
  EXPECT_EQ(pixel(clone, 1, 1), 0x112233u);
}

TEST_F(BitmapTest, LivesAsLongAsItsLastOwner) {
  HBITMAP handle;
  {
    Bitmap copy;
    {
      Bitmap const bitmap(SV::Size{2, 2});
      handle = bitmap.GethBitmap();
      copy = bitmap;
    }
    EXPECT_EQ(GetObjectType(handle), static_cast<DWORD>(OBJ_BITMAP));
  }
  EXPECT_EQ(GetObjectType(handle), 0u);
}

TEST_F(BitmapTest, ComesFromAResource) {
  SV::ResMgr manager("testres\\first72.dll");
  Bitmap const bitmap(SV::ResId(10, &manager));
  ASSERT_EQ(bitmap.GetSizePixel(), (SV::Size{3, 2}));
  EXPECT_EQ(pixel(bitmap, 0, 0), 0x0000FFu);
  EXPECT_EQ(pixel(bitmap, 1, 0), 0x00FF00u);
  EXPECT_EQ(pixel(bitmap, 2, 0), 0xFF0000u);
  EXPECT_EQ(pixel(bitmap, 0, 1), 0xFFFFFFu);
  EXPECT_EQ(pixel(bitmap, 1, 1), 0x000000u);
  EXPECT_EQ(pixel(bitmap, 2, 1), 0x563412u);
  EXPECT_TRUE(application.exceptions.empty());
}

// Its table has two colours of the 16 that 4 bits could name.
TEST_F(BitmapTest, HasTheColoursOfItsTable) {
  SV::ResMgr manager("testres\\first72.dll");
  for (unsigned long const number : {12ul, 13ul}) {
    Bitmap const bitmap(SV::ResId(number, &manager));
    ASSERT_EQ(bitmap.GetSizePixel(), (SV::Size{2, 1})) << number;
    EXPECT_EQ(pixel(bitmap, 0, 0), 0x302010u) << number;
    EXPECT_EQ(pixel(bitmap, 1, 0), 0xC0B0A0u) << number;
  }
  EXPECT_TRUE(application.exceptions.empty());
}

HBITMAP WINAPI refusePixels(HDC, BITMAPINFO const *, UINT, void **, HANDLE, DWORD) { return nullptr; }
int WINAPI refuseLines(HDC, int, int, DWORD, DWORD, int, int, UINT, UINT, void const *, BITMAPINFO const *, UINT) {
  return 0;
}

HBITMAP WINAPI refuseForLackOfMemory(HDC, BITMAPINFO const *, UINT, void **, HANDLE, DWORD) {
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return nullptr;
}

TEST_F(BitmapTest, ThatTheSystemRefusesReportsItsErrorAndNoOlderOne) {
  struct {
    void * function;
    DWORD error;
  } const rows[] = {{reinterpret_cast<void *>(refuseForLackOfMemory), ERROR_NOT_ENOUGH_MEMORY},
                    {reinterpret_cast<void *>(refusePixels), ERROR_SUCCESS}};
  for (auto const & [function, error] : rows) {
    support::replaceImports(GetModuleHandleA("SV0105.dll"), "GDI32.dll", {{"CreateDIBSection", function}});
    application.exceptions.clear();
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Bitmap(SV::Size{2, 2}).IsEmpty());
    ASSERT_EQ(application.exceptions.size(), 1u);
    EXPECT_EQ(application.exceptions[0].code, 0x200);
    EXPECT_EQ(application.exceptions[0].arg, error);
  }
}

TEST_F(BitmapTest, OfAResourceThatTheSystemRefusesIsEmptyAndRaisesAnException) {
  SV::ResMgr manager("testres\\first72.dll");
  support::Replacement const rows[] = {{"SetDIBitsToDevice", reinterpret_cast<void *>(refuseLines)},
                                       {"CreateDIBSection", reinterpret_cast<void *>(refusePixels)}};
  for (support::Replacement const & row : rows) {
    support::replaceImports(GetModuleHandleA("SV0105.dll"), "GDI32.dll", {row});
    application.exceptions.clear();
    EXPECT_TRUE(Bitmap(SV::ResId(10, &manager)).IsEmpty()) << row.name;
    ASSERT_FALSE(application.exceptions.empty()) << row.name;
    EXPECT_EQ(application.exceptions[0].code, 0x100) << row.name;
    EXPECT_EQ(application.exceptions[0].arg, 10u) << row.name;
  }
}

TEST_F(BitmapTest, OfAMissingResourceIsLookedForInTheNextManager) {
  SV::ResMgr first("testres\\first72.dll");
  SV::ResMgr second("testres\\second72.dll");
  SV::Resource::SetResManager(&first);
  EXPECT_TRUE(Bitmap(SV::ResId(11)).IsEmpty());
  application.onException = [&] { SV::Resource::SetResManager(&second); };
  EXPECT_EQ(Bitmap(SV::ResId(11)).GetSizePixel(), (SV::Size{3, 2}));
  ASSERT_EQ(application.exceptions.size(), 2u);
  EXPECT_EQ(application.exceptions[1].code, 0x100);
  EXPECT_EQ(application.exceptions[1].arg, 11u);
}

using ImageTest = BitmapTest;

TEST_F(ImageTest, IsEmptyUntilItHasAPicture) {
  SV::Image const image;
  EXPECT_TRUE(image.IsEmpty());
  EXPECT_EQ(image.GetSizePixel(), (SV::Size{0, 0}));
}

TEST_F(ImageTest, SharesThePixelsOfItsBitmap) {
  Bitmap const bitmap(SV::Size{4, 3});
  SV::Image const image(bitmap);
  EXPECT_EQ(image.GetSizePixel(), (SV::Size{4, 3}));
  EXPECT_EQ(image.GetBitmap().GethBitmap(), bitmap.GethBitmap());
}

TEST_F(ImageTest, ComesFromAResource) {
  SV::ResMgr manager("testres\\first72.dll");
  EXPECT_EQ(SV::Image(SV::ResId(10, &manager)).GetSizePixel(), (SV::Size{3, 2}));
}

// Icons, of which a resource may have several sizes

TEST_F(BitmapTest, IconOfAResourceHasTheSizeThatTheSystemHasForIcons) {
  SV::ResMgr manager("testres\\first72.dll");
  SV::Icon const icon(SV::ResId(14, &manager));
  EXPECT_EQ(icon.GetSizePixel(), (SV::Size{GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)}));
  ICONINFO info = {};
  ASSERT_TRUE(GetIconInfo(icon.GethIcon(), &info));
  EXPECT_EQ(pixel(Bitmap(info.hbmColor), 5, 5), 0xFF0000u);
  DeleteObject(info.hbmMask);
}

TEST_F(BitmapTest, IconThatIsMissingIsEmptyAndASevereException) {
  SV::ResMgr manager("testres\\first72.dll");
  EXPECT_TRUE(SV::Icon(SV::ResId(15, &manager)).IsEmpty());
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
}

} // namespace
