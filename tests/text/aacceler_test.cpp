#include "aacceler.hpp"

#include "diagnostics/reporter_run.hpp"
#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"
#include "sv/menu.hpp"
#include "sv/resource.hpp"
#include "sv0105/application/testapplication.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using SV::String;

namespace {

constexpr char kFirst[] = "testres\\first72.dll";
constexpr char kSecond[] = "testres\\second72.dll";

std::string accelerated(KivAcceleratorTable & table, char const * text) {
  String result(text);
  table.AccelerateString(result);
  return result.c_str();
}

/// All characters that are in use in a table.
std::string takenBy(KivAcceleratorTable const & table) {
  std::string taken;
  for (int c = 0; c < 256; ++c)
    if (table.IsInUse(static_cast<char>(c)))
      taken += static_cast<char>(c);
  return taken;
}

std::string const & takenAtStart() {
  static std::string const taken = takenBy(KivAcceleratorTable());
  return taken;
}

using StringAccelerators = ToolkitTest;

} // namespace

TEST(AcceleratorTable, HoldsOneFlagForEachByte) { EXPECT_EQ(sizeof(KivAcceleratorTable), 256u); }

TEST(AcceleratorTable, StartsWithTheBytes33To127Free) {
  KivAcceleratorTable const table;
  for (int c = 0; c < 256; ++c)
    EXPECT_EQ(table.IsInUse(static_cast<char>(c)), c < 33 || c > 127) << c;
}

TEST(AcceleratorTable, TakesEachFreeByteOnceInBothCases) {
  for (int c = 0; c < 256; ++c) {
    KivAcceleratorTable table;
    EXPECT_EQ(table.SetInUse(static_cast<char>(c)), c >= 33 && c <= 127) << c;
    EXPECT_FALSE(table.SetInUse(static_cast<char>(c))) << c;
    EXPECT_TRUE(table.IsInUse(static_cast<char>(std::toupper(c)))) << c;
    EXPECT_TRUE(table.IsInUse(static_cast<char>(std::tolower(c)))) << c;
  }
}

TEST(AcceleratorTable, KnowsTheLowerCaseOfATakenLetter) {
  KivAcceleratorTable table;
  EXPECT_TRUE(table.SetInUse('A'));
  EXPECT_TRUE(table.IsInUse('a'));
  EXPECT_FALSE(table.SetInUse('a'));
  EXPECT_FALSE(table.IsInUse('b'));
}

TEST(AcceleratorTable, IsAsNewAfterReset) {
  KivAcceleratorTable table;
  for (int c = 0; c < 256; ++c)
    table.SetInUse(static_cast<char>(c));
  EXPECT_EQ(takenBy(table).size(), 256u);
  table.Reset();
  EXPECT_EQ(takenBy(table), takenAtStart());
}

TEST(AcceleratorTable, RegistersTheMnemonicThatATextHas) {
  struct {
    char const * text;
    bool result;
    char mnemonic; ///< NUL: none
  } const rows[] = {{"~Open", true, 'O'},   {"E~xit", true, 'X'}, {"~a~b", true, 'A'},        {"End~", false, '\0'},
                    {"Plain", false, '\0'}, {"", false, '\0'},    {"~", false, '\0'},         {"~~", true, '~'},
                    {"~ Blank", true, ' '}, {"~1", true, '1'},    {"\xE4~\xF6", true, '\xF6'}};
  for (auto const & row : rows) {
    KivAcceleratorTable table;
    EXPECT_EQ(table.AddAcceleratedString(row.text), row.result) << row.text;
    for (int c = 33; c < 128; ++c)
      EXPECT_EQ(table.IsInUse(static_cast<char>(c)), std::toupper(c) == row.mnemonic && row.mnemonic != '\0')
          << row.text << ' ' << c;
  }
}

TEST(AcceleratorTable, ReportsNoClashOfMnemonicsThatTextsHave) {
  KivAcceleratorTable table;
  EXPECT_TRUE(table.AddAcceleratedString("~Open"));
  EXPECT_TRUE(table.AddAcceleratedString("~other"));
}

TEST(AcceleratorTable, GivesEachTextItsFirstFreeCharacter) {
  KivAcceleratorTable table;
  EXPECT_EQ(accelerated(table, "File"), "~File");
  EXPECT_EQ(accelerated(table, "Format"), "F~ormat");
  EXPECT_EQ(accelerated(table, "form"), "fo~rm");
  EXPECT_EQ(accelerated(table, " Form"), " For~m");
  EXPECT_EQ(accelerated(table, "\xD6l"), "\xD6~l");
  EXPECT_EQ(takenBy(table).size(), takenAtStart().size() + 10); // in both cases
}

TEST(AcceleratorTable, LeavesATextWithAMnemonicAloneAndMarksIt) {
  KivAcceleratorTable table;
  String text("~Open");
  EXPECT_TRUE(table.AccelerateString(text));
  EXPECT_STREQ(text.c_str(), "~Open");
  EXPECT_TRUE(table.IsInUse('O'));
  text = "End~";
  EXPECT_TRUE(table.AccelerateString(text));
  EXPECT_STREQ(text.c_str(), "End~");
  EXPECT_FALSE(table.IsInUse('E'));
}

TEST(AcceleratorTable, MarksTheVeryStartWhereAllCharactersAreTaken) {
  KivAcceleratorTable table;
  String text("File");
  for (char const c : {'f', 'i', 'l', 'e'})
    table.SetInUse(c);
  std::string const before = takenBy(table);
  EXPECT_FALSE(table.AccelerateString(text));
  EXPECT_STREQ(text.c_str(), "~File");
  EXPECT_EQ(takenBy(table), before);
}

TEST(AcceleratorTable, MarksTheStartOfBlanksAndOfNothing) {
  KivAcceleratorTable table;
  for (char const * each : {"   ", "", "\xE4\xF6", "\t"}) {
    String text(each);
    EXPECT_FALSE(table.AccelerateString(text)) << each;
    EXPECT_EQ(std::string(text.c_str()), std::string("~") + each);
  }
  EXPECT_EQ(takenBy(table), takenAtStart());
}

TEST(AcceleratorTable, LeavesOtherOwnersOfATextTheirs) {
  KivAcceleratorTable table;
  String const original("File");
  String copy(original);
  table.AccelerateString(copy);
  EXPECT_STREQ(original.c_str(), "File");
}

TEST(AcceleratorTable, SeesCharactersAfterANul) {
  KivAcceleratorTable table;
  EXPECT_TRUE(table.AddAcceleratedString(String("a\0~b", 4)));
  EXPECT_TRUE(table.IsInUse('b'));
}

TEST_F(StringAccelerators, TakeTheMnemonicsOfAMenusItemsAlone) {
  SV::MenuBar bar;
  SV::PopupMenu file;
  file.InsertItem(20, "~Save");
  bar.InsertItem(10, "~File");
  bar.SetPopupMenu(10, &file);
  bar.InsertSeparator();
  bar.InsertItem(11, "F~ormat");
  bar.InsertItem(12, "Help");
  KivAcceleratorTable table;
  table.setAcceleratorsOfMenu(&bar);
  for (char const c : {'f', 'o'})
    EXPECT_TRUE(table.IsInUse(c)) << c;
  EXPECT_EQ(takenBy(table).size(), takenAtStart().size() + 4); // in both cases
  EXPECT_EQ(accelerated(table, "Window"), "~Window");
  table.setAcceleratorsOfMenu(&file);
  EXPECT_TRUE(table.IsInUse('S'));
}

TEST_F(StringAccelerators, OfAnEmptyMenuAreNone) {
  SV::PopupMenu const menu;
  KivAcceleratorTable table;
  table.setAcceleratorsOfMenu(&menu);
  EXPECT_EQ(takenBy(table), takenAtStart());
}

TEST(AcceleratorTable, ReportsAMissingMenu) {
  kivtest::ReporterRun run("-no_dialogs nomenu");
  EXPECT_EQ(run.lines(), kivtest::Lines{"first free 33"});
  EXPECT_EQ(run.texts(), kivtest::Lines{"[dEM] aacceler.cpp (112): " + kivtest::errorCode("aacceler", 112) + "\n"});
}

TEST(StringAcceleratorTable, IsOneObjectThatOnlyItMakes) {
  EXPECT_EQ(KivStringAcceleratorTable::GetGlobal(), KivStringAcceleratorTable::GetGlobal());
  EXPECT_FALSE(std::is_default_constructible_v<KivStringAcceleratorTable>);
  EXPECT_FALSE(std::is_copy_constructible_v<KivStringAcceleratorTable>);
  EXPECT_TRUE(std::has_virtual_destructor_v<KivStringAcceleratorTable>);
}

TEST_F(StringAccelerators, GiveTheTextOfAResource) {
  SV::ResMgr manager(kFirst);
  SV::Resource::SetResManager(&manager);
  auto & table = *KivStringAcceleratorTable::GetGlobal();
  EXPECT_EQ(textOf(table.GetString(1)), "one");
  EXPECT_STREQ(table.GetCharPtr(0x2000001), "one");
  EXPECT_EQ(textOf(table.GetString(0x2002B7E)), "Internal error %s");
  EXPECT_STREQ(table.GetCharPtr(300), "Gr\xF6\xDF"
                                      "e");
  EXPECT_EQ(textOf(table.GetString(0xFFFF)), "the last of all");
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(StringAccelerators, GiveTheSameObjectEachTime) {
  SV::ResMgr manager(kFirst);
  SV::Resource::SetResManager(&manager);
  auto & table = *KivStringAcceleratorTable::GetGlobal();
  String const * const first = &table.GetString(1);
  for (long id : {0x10L, 0x2B7EL, 300L, 301L})
    table.GetString(id);
  EXPECT_EQ(&table.GetString(1), first);
  EXPECT_EQ(table.GetCharPtr(1), first->c_str());
}

TEST_F(StringAccelerators, KeepATextThroughAChangeOfTheLanguage) {
  auto & table = *KivStringAcceleratorTable::GetGlobal();
  {
    SV::ResMgr first(kFirst);
    SV::Resource::SetResManager(&first);
    EXPECT_STREQ(table.GetCharPtr(1), "one");
  }
  SV::ResMgr second(kSecond);
  SV::Resource::SetResManager(&second);
  EXPECT_STREQ(table.GetCharPtr(1), "one");
  EXPECT_STREQ(table.GetCharPtr(400), "nur im zweiten");
}

TEST_F(StringAccelerators, RaiseTheExceptionOfAMissingTextOnceAndAreEmptyThen) {
  SV::ResMgr manager(kFirst);
  SV::Resource::SetResManager(&manager);
  auto & table = *KivStringAcceleratorTable::GetGlobal();
  EXPECT_STREQ(table.GetCharPtr(9999), "");
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_RESOURCE_NOT_LOADED);
  EXPECT_EQ(application.exceptions[0].arg, 0x200270Fu);
  EXPECT_STREQ(table.GetCharPtr(9999), "");
  EXPECT_EQ(application.exceptions.size(), 1u);
}

TEST_F(StringAccelerators, LoadFromTheManagerThatTheExceptionBrings) {
  SV::ResMgr first(kFirst);
  SV::ResMgr second(kSecond);
  SV::Resource::SetResManager(&first);
  application.onException = [&second] { SV::Resource::SetResManager(&second); };
  EXPECT_STREQ(KivStringAcceleratorTable::GetGlobal()->GetCharPtr(400), "nur im zweiten");
}

TEST_F(StringAccelerators, BearTheSameQuestionWhileATextIsLoaded) {
  SV::ResMgr first(kFirst);
  SV::ResMgr second(kSecond);
  SV::Resource::SetResManager(&first);
  auto & table = *KivStringAcceleratorTable::GetGlobal();
  String const * asked = nullptr;
  application.onException = [&] {
    SV::Resource::SetResManager(&second);
    asked = &table.GetString(0x2000190);
  };
  EXPECT_STREQ(table.GetCharPtr(0x2000190), "nur im zweiten");
  EXPECT_EQ(&table.GetString(0x2000190), asked);
}

// A text of any bytes gets one mark or keeps the first that it has.
TEST(AcceleratorDamage, LeavesATextWithAMark) {
  support::Random random(51);
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(1000); ++i) {
    std::string const text =
        support::damaged("Save ~as...\tCtrl+S", random, {.pieces = {"~", "~~", " ", "\t", "\xE4"}});
    String marked(text.data(), static_cast<std::int32_t>(text.size()));
    KivAcceleratorTable table;
    if (i % 2 == 0) // nothing is left for this text
      for (int c = 0; c < 256; ++c)
        table.SetInUse(static_cast<char>(c));
    bool const isDone = table.AccelerateString(marked);
    bool const hadMark = text.find('~') != std::string::npos;
    ASSERT_EQ(static_cast<std::size_t>(marked.Len()), text.size() + (hadMark ? 0 : 1)) << text;
    ASSERT_TRUE(isDone || (!hadMark && marked.charAt(0) == '~')) << text;
    ASSERT_FALSE(hadMark && !isDone) << text;
    ASSERT_EQ(table.AddAcceleratedString(marked),
              std::string(marked.c_str(), static_cast<std::size_t>(marked.Len())).find('~') + 1 <
                  static_cast<std::size_t>(marked.Len()))
        << text;
  }
}
