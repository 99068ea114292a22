#include "adragman.hpp"

#include "support/imports/import_spy.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

class DragManager : public testing::Test {
protected:
  ~DragManager() override { KivDragManager::EndDragAction(); }

  static std::string content() {
    SV::String const & text = KivDragManager::GetDragContent();
    return {text.c_str(), static_cast<std::size_t>(text.Len())};
  }

  static void expectNothing() {
    EXPECT_FALSE(KivDragManager::ExistsDragContent());
    EXPECT_EQ(KivDragManager::GetDragType(), 0);
    EXPECT_EQ(content(), "");
  }

  static void expectText(std::string const & text) {
    EXPECT_TRUE(KivDragManager::ExistsDragContent());
    EXPECT_EQ(KivDragManager::GetDragType(), 1);
    EXPECT_EQ(content(), text);
  }
};

// Only the class itself makes one, but what there is can be copied.
static_assert(!std::is_default_constructible_v<KivDragManager>);
static_assert(std::is_copy_constructible_v<KivDragManager>);
static_assert(std::is_copy_assignable_v<KivDragManager>);
static_assert(std::is_destructible_v<KivDragManager>);
static_assert(KivDragNothing == 0 && KivDragText == 1);

TEST_F(DragManager, HasNothingAtFirst) { expectNothing(); }

TEST_F(DragManager, HasTheTextThatADragBeganWith) {
  KivDragManager::BeginDragAction("Check order");
  expectText("Check order");
}

TEST_F(DragManager, ContentAfterTheEndIsTheEmptyString) {
  KivDragManager::BeginDragAction("Check order");
  KivDragManager::EndDragAction();
  expectNothing();
  EXPECT_EQ(KivDragManager::GetDragContent().Len(), 0);
}

TEST_F(DragManager, EndWithoutABeginDoesNothing) {
  KivDragManager::EndDragAction();
  expectNothing();
}

TEST_F(DragManager, EmptyTextIsDraggedToo) {
  KivDragManager::BeginDragAction("");
  expectText("");
}

TEST_F(DragManager, KeepsTextsOfAnyLengthAndWithAnyCharacters) {
  std::string const texts[] = {std::string("one\0two", 7), "\xC4nderung\r\n\t", std::string(1'000'000, 'x')};
  for (std::string const & text : texts) {
    KivDragManager::BeginDragAction(SV::String(text.data(), static_cast<std::int32_t>(text.size())));
    expectText(text);
  }
}

TEST_F(DragManager, SecondBeginTakesThePlaceOfTheFirst) {
  KivDragManager::BeginDragAction("first");
  KivDragManager::BeginDragAction("second");
  expectText("second");
}

TEST_F(DragManager, OneEndEndsADragThatBeganTwice) {
  KivDragManager::BeginDragAction("outer");
  KivDragManager::BeginDragAction("inner");
  KivDragManager::EndDragAction();
  expectNothing();
  KivDragManager::EndDragAction();
  expectNothing();
}

TEST_F(DragManager, MayBeginAgainAfterItsEnd) {
  KivDragManager::BeginDragAction("first");
  KivDragManager::EndDragAction();
  KivDragManager::BeginDragAction("second");
  expectText("second");
}

TEST_F(DragManager, DoesNotFollowTheTextOfTheCaller) {
  SV::String text("Check order");
  KivDragManager::BeginDragAction(text);
  text += " again";
  expectText("Check order");
}

TEST_F(DragManager, MayBeginWithItsOwnContent) {
  KivDragManager::BeginDragAction("Check order");
  KivDragManager::BeginDragAction(KivDragManager::GetDragContent());
  expectText("Check order");
}

TEST_F(DragManager, CopyOfTheContentOutlivesTheDrag) {
  KivDragManager::BeginDragAction("Check order");
  SV::String const copy = KivDragManager::GetDragContent();
  KivDragManager::EndDragAction();
  EXPECT_STREQ(copy.c_str(), "Check order");
}

// The format

TEST_F(DragManager, FormatHasTheSameNumberEachTime) {
  long const first = KivDragManager::GetClipboardFormatID();
  EXPECT_EQ(KivDragManager::GetClipboardFormatID(), first);
}

TEST_F(DragManager, FormatIsTheOneOfItsNameInTheSession) {
  long const format = KivDragManager::GetClipboardFormatID();
  EXPECT_EQ(static_cast<UINT>(format), RegisterClipboardFormatA("KivDragContent"));
  char name[64] = {};
  GetClipboardFormatNameA(static_cast<UINT>(format), name, sizeof name);
  EXPECT_STREQ(name, "KivDragContent");
}

TEST_F(DragManager, FormatIsRegisteredOnceAndAgainOnlyAfterARefusal) {
  int calls = 0;
  bool refused = true;
  // The system registers no empty name.
  ASSERT_TRUE(support::spyOnImport("SV0105.dll", "RegisterClipboardFormatA", [&](support::SpiedCall & call) {
    EXPECT_STREQ(call.text(0), "KivDragContent");
    ++calls;
    if (refused)
      call.arguments[0] = reinterpret_cast<std::uintptr_t>("");
  }));
  EXPECT_EQ(KivDragManager::GetClipboardFormatID(), 0);
  refused = false;
  long const format = KivDragManager::GetClipboardFormatID();
  EXPECT_NE(format, 0);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(KivDragManager::GetClipboardFormatID(), format);
  EXPECT_EQ(calls, 2);
}

TEST_F(DragManager, FormatStaysWhenDragsBeginAndEnd) {
  long const format = KivDragManager::GetClipboardFormatID();
  KivDragManager::BeginDragAction("Check order");
  EXPECT_EQ(KivDragManager::GetClipboardFormatID(), format);
  KivDragManager::EndDragAction();
  EXPECT_EQ(KivDragManager::GetClipboardFormatID(), format);
}

} // namespace
