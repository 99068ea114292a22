#include "adrawcch.hpp"

#include "acleanup.hpp"
#include "sv0105/application/testapplication.hpp"

#include <type_traits>
#include <vector>

namespace {

using SV::Bitmap;

constexpr unsigned short kPicture = 10;
constexpr unsigned short kOtherPicture = 12;
constexpr unsigned short kMissing = 11;

class Exit : public KivEvent {
public:
  Exit() : KivEvent(KIV_EVENT_AppExit) {}
};

void triggerExit() { Exit().trigger(); }

bool isPicture(Bitmap const & bitmap) { return !bitmap.IsEmpty(); }

class GdiCache : public testing::Test {
protected:
  GdiCache() { SV::Resource::SetResManager(&manager); }
  ~GdiCache() override {
    triggerExit();
    SV::Resource::SetResManager(nullptr);
  }

  static Bitmap const & get(unsigned short id) { return KivGDICache::Instance().getBitmap(id); }

  TestApplication application;
  SV::ResMgr manager{"testres\\first72.dll"};
};

TEST_F(GdiCache, IsOneObject) { EXPECT_EQ(&KivGDICache::Instance(), &KivGDICache::Instance()); }

TEST_F(GdiCache, GivesTheSameObjectForTheSameNumber) {
  Bitmap const & first = get(kPicture);
  EXPECT_TRUE(isPicture(first));
  EXPECT_EQ(&get(kPicture), &first);
  EXPECT_NE(&get(kOtherPicture), &first);
  EXPECT_EQ(&get(kPicture), &first);
}

TEST_F(GdiCache, HasThePixelsOfTheResource) {
  Bitmap const fresh(SV::ResId(0x2000000 + kPicture));
  Bitmap const & cached = get(kPicture);
  EXPECT_EQ(cached.GetSizePixel(), fresh.GetSizePixel());
  EXPECT_NE(cached.GethBitmap(), fresh.GethBitmap());
}

TEST_F(GdiCache, LoadsEachBitmapOnce) {
  HBITMAP const pixels = get(kPicture).GethBitmap();
  SV::Resource::SetResManager(nullptr);
  EXPECT_EQ(get(kPicture).GethBitmap(), pixels);
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(GdiCache, AsksForTheNumberWithTheTypeOfTheLibrary) {
  get(kMissing);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
  EXPECT_EQ(application.exceptions[0].arg, 0x200000Bul);
}

TEST_F(GdiCache, KeepsAMissingBitmapToo) {
  Bitmap const & missing = get(kMissing);
  EXPECT_TRUE(missing.IsEmpty());
  EXPECT_EQ(&get(kMissing), &missing);
  EXPECT_EQ(application.exceptions.size(), 1u);
}

TEST_F(GdiCache, HoldsAllNumbers) {
  std::vector<Bitmap const *> first;
  for (unsigned id = 0; id <= 0xFFFF; ++id)
    first.push_back(&get(static_cast<unsigned short>(id)));
  std::size_t pictures = 0;
  for (Bitmap const * bitmap : first)
    pictures += isPicture(*bitmap) ? 1 : 0;
  EXPECT_EQ(pictures, 3u);
  EXPECT_EQ(application.exceptions.size(), 0x10000 - pictures);
  for (unsigned id = 0; id <= 0xFFFF; ++id)
    ASSERT_EQ(&get(static_cast<unsigned short>(id)), first[id]) << id;
  EXPECT_EQ(application.exceptions.size(), 0x10000 - pictures);
}

TEST_F(GdiCache, KeepsOneBitmapWhenTheExceptionForAMissingOneAsksForItToo) {
  Bitmap const * inner = nullptr;
  application.onException = [&] {
    application.onException = nullptr;
    inner = &get(kMissing);
  };
  EXPECT_EQ(&get(kMissing), inner);
  EXPECT_EQ(&get(kMissing), inner);
}

TEST_F(GdiCache, LoadsAnewAfterTheExit) {
  get(kPicture);
  triggerExit();
  SV::Resource::SetResManager(nullptr);
  EXPECT_TRUE(get(kPicture).IsEmpty());
  EXPECT_EQ(application.exceptions.size(), 1u);
}

/// Hears of the exit after the cache and before the clean-up when it is made in between.
class LateListener : public KivEventListener {
public:
  explicit LateListener(std::function<void()> action) : action_(std::move(action)) {
    setEventHandler<&LateListener::onExit>(KIV_EVENT_AppExit);
  }
  ~LateListener() override { manualSignOff(); }

private:
  void onExit(KivEvent *) { action_(); }
  std::function<void()> action_;
};

TEST_F(GdiCache, IsEmptiedByTheExitEventAndDeletedByTheCleanUp) {
  KivCleanUp::Instance();
  KivGDICache * cache = nullptr;
  int calls = 0;
  LateListener const listener([&] {
    if (cache == nullptr)
      return;
    ++calls;
    EXPECT_EQ(&KivGDICache::Instance(), cache) << "the object is still the same";
    SV::Resource::SetResManager(nullptr);
    EXPECT_TRUE(get(kPicture).IsEmpty()) << "and its bitmaps are gone";
  });
  cache = &KivGDICache::Instance();
  EXPECT_TRUE(isPicture(get(kPicture)));
  triggerExit();
  EXPECT_EQ(calls, 1);
  cache = nullptr;
  SV::Resource::SetResManager(&manager);
  EXPECT_TRUE(isPicture(get(kPicture))) << "that of a new cache";
}

TEST_F(GdiCache, GivesItsBitmapsBackAtTheExit) {
  Bitmap const held = get(kPicture);
  HBITMAP const other = get(kOtherPicture).GethBitmap();
  EXPECT_EQ(GetObjectType(other), static_cast<DWORD>(OBJ_BITMAP));
  triggerExit();
  EXPECT_EQ(GetObjectType(held.GethBitmap()), static_cast<DWORD>(OBJ_BITMAP));
  EXPECT_EQ(GetObjectType(other), 0u);
}

TEST_F(GdiCache, IsCopiedWithBitmapsOfTheCopysOwn) {
  Bitmap const & original = get(kPicture);
  KivGDICache copy(KivGDICache::Instance());
  Bitmap const & copied = copy.getBitmap(kPicture);
  EXPECT_NE(&copied, &original);
  EXPECT_EQ(copied.GethBitmap(), original.GethBitmap());
  triggerExit();
  SV::Resource::SetResManager(nullptr);
  EXPECT_EQ(&copy.getBitmap(kPicture), &copied) << "a copy does not hear of the exit";
  EXPECT_TRUE(isPicture(copied));
}

TEST_F(GdiCache, IsAssignedWithAllItsBitmaps) {
  get(kPicture);
  KivGDICache copy(KivGDICache::Instance());
  triggerExit();
  get(kOtherPicture);
  copy = KivGDICache::Instance();
  copy = *&copy;
  SV::Resource::SetResManager(nullptr);
  EXPECT_TRUE(isPicture(copy.getBitmap(kOtherPicture)));
  EXPECT_TRUE(copy.getBitmap(kPicture).IsEmpty());
}

TEST_F(GdiCache, CanOnlyBeMadeByItself) {
  static_assert(!std::is_default_constructible_v<KivGDICache>);
  static_assert(std::is_copy_constructible_v<KivGDICache> && std::is_copy_assignable_v<KivGDICache>);
  static_assert(std::has_virtual_destructor_v<KivGDICache>);
  static_assert(std::is_base_of_v<KivEventListener, KivGDICache>);
}

} // namespace
