#include "aappinfo.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

using SV::String;

TEST(AppInfo, PartsOfTheVersionAsNumbers) {
  EXPECT_EQ(Kiv_GetVersionHigh(), 7);
  EXPECT_EQ(Kiv_GetVersionLow(), 2);
  EXPECT_EQ(Kiv_GetVersionUL(), 0);
  EXPECT_EQ(Kiv_GetVersionHF(), 0);
  EXPECT_EQ(Kiv_GetVersionBuild(), 5050);
  EXPECT_EQ(Kiv_GetVersionIdentifier(), 77050);
}

TEST(AppInfo, FormsOfTheVersion) {
  EXPECT_STREQ(Kiv_GetVersionString().c_str(), "7.2");
  EXPECT_STREQ(Kiv_GetBuildVersionString().c_str(), "7.2_5050");
  EXPECT_STREQ(Kiv_GetPatchVersionString().c_str(), "7.20.00");
  EXPECT_STREQ(Kiv_GetPatchBuildVersionString().c_str(), "7.20.00.5050");
}

TEST(ApplicationType, IsAToolkitUnlessTheProgramSaysOtherwise) {
  EXPECT_EQ(Kiv_GetApplicationType(), 1);
  EXPECT_TRUE(Kiv_IsKVTK());
  EXPECT_FALSE(Kiv_IsREETK());
}

TEST(ApplicationType, DecidesWhatTheProgramIs) {
  struct Row {
    int type;
    bool isToolkit;
    bool isRuntime;
  };
  for (Row const & row : {Row{0, false, true}, Row{1, true, false}, Row{2, false, false}, Row{-1, false, false},
                          Row{4711, false, false}}) {
    Kiv_SetApplicationType(static_cast<KivApplicationType>(row.type));
    EXPECT_EQ(Kiv_GetApplicationType(), row.type);
    EXPECT_EQ(Kiv_IsKVTK(), row.isToolkit) << row.type;
    EXPECT_EQ(Kiv_IsREETK(), row.isRuntime) << row.type;
  }
  static_assert(KIV_APPLICATION_RUNTIME == 0 && KIV_APPLICATION_TOOLKIT == 1);
}

TEST(ApplicationType, HasNothingToDoWithTheWebService) {
  EXPECT_FALSE(Kiv_IsWS());
  Kiv_SetWS(true);
  EXPECT_TRUE(Kiv_IsWS());
  EXPECT_TRUE(Kiv_IsKVTK());
  Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME);
  EXPECT_TRUE(Kiv_IsWS());
  Kiv_SetWS(false);
  EXPECT_FALSE(Kiv_IsWS());
  EXPECT_TRUE(Kiv_IsREETK());
}

TEST(ApplicationInfo, IsEmptyAtFirst) { EXPECT_EQ(KivApplicationInfo::GetInfo().Len(), 0); }

TEST(ApplicationInfo, IsALineForEachKeyWithoutOneAtTheEnd) {
  KivApplicationInfo::SetValue("user", "admin");
  EXPECT_STREQ(KivApplicationInfo::GetInfo().c_str(), "user: admin");
  KivApplicationInfo::SetValue("database", "models");
  EXPECT_STREQ(KivApplicationInfo::GetInfo().c_str(), "database: models\nuser: admin");
}

TEST(ApplicationInfo, AKnownKeyKeepsItsPlaceAndGetsTheNewValue) {
  KivApplicationInfo::SetValue("a", "1");
  KivApplicationInfo::SetValue("b", "2");
  KivApplicationInfo::SetValue("c", "3");
  KivApplicationInfo::SetValue("a", "4");
  KivApplicationInfo::SetValue("b", "");
  EXPECT_STREQ(KivApplicationInfo::GetInfo().c_str(), "a: 4\nb: \nc: 3");
}

TEST(ApplicationInfo, KeysAreInByteOrderWithRegardToCase) {
  for (char const * const key : {"b", "\xE4", "B", "", "a b", "a"})
    KivApplicationInfo::SetValue(key, "x");
  EXPECT_STREQ(KivApplicationInfo::GetInfo().c_str(), ": x\nB: x\na: x\na b: x\nb: x\n\xE4: x");
}

TEST(ApplicationInfo, TakesTextsAsTheyStand) {
  KivApplicationInfo::SetValue("key: with", "two\nlines ");
  EXPECT_STREQ(KivApplicationInfo::GetInfo().c_str(), "key: with: two\nlines ");
}

TEST(ApplicationInfo, HoldsManyKeys) {
  support::Random random(1);
  std::map<std::string, std::string> model;
  for (int i = 0; i < 20000; ++i) {
    std::string const key = "key " + std::to_string(random() % 5000);
    std::string const value = std::to_string(random());
    model[key] = value;
    KivApplicationInfo::SetValue(key.c_str(), value.c_str());
  }
  std::string expected;
  for (auto const & [key, value] : model)
    expected += (expected.empty() ? "" : "\n") + key + ": " + value;
  EXPECT_EQ(KivApplicationInfo::GetInfo().c_str(), expected);
}

TEST(CoreVariables, AreAllZeroAtFirst) {
  for (int i = 0; i < 235; ++i)
    EXPECT_EQ(Kiv_GetCoreVarConst(static_cast<KivCoreVarType>(i)), 0) << i;
}

TEST(CoreVariables, AreIndependentOfEachOther) {
  for (int i = 0; i < 235; ++i)
    Kiv_SetCoreVar(static_cast<KivCoreVarType>(i), 1000 - i * 10);
  for (int i = 0; i < 235; ++i) {
    EXPECT_EQ(Kiv_GetCoreVarConst(static_cast<KivCoreVarType>(i)), 1000 - i * 10);
    EXPECT_EQ(Kiv_GetCoreVar(static_cast<KivCoreVarType>(i)), 1000 - i * 10);
  }
}

TEST(CoreVariables, AreGivenOutThemselves) {
  constexpr KivCoreVarType last{234};
  long & variable = Kiv_GetCoreVar(last);
  variable = -7;
  EXPECT_EQ(Kiv_GetCoreVarConst(last), -7);
  Kiv_SetCoreVar(last, 0x7FFFFFFF);
  EXPECT_EQ(variable, 0x7FFFFFFF);
  EXPECT_EQ(&Kiv_GetCoreVar(last), &variable);
}

namespace {

KivComponentInformation & components() { return KivComponentInformation::Instance(); }

std::vector<std::string> identifiers() {
  ISequence<String> ids{"dropped"};
  components().getComponents(ids);
  std::vector<std::string> texts;
  for (String const & id : ids)
    texts.emplace_back(id.c_str());
  return texts;
}

TEST(Components, NoneIsInstalledAtFirst) { EXPECT_TRUE(identifiers().empty()); }

TEST(Components, AreListedInByteOrderOfTheirIdentifiers) {
  for (char const * const id : {"sim", "doc", "SIM", "", "\xE4"})
    EXPECT_TRUE(components().registerComponent(id, "name", "version", false)) << id;
  EXPECT_EQ(identifiers(), (std::vector<std::string>{"", "SIM", "doc", "sim", "\xE4"}));
}

TEST(Components, HaveANameAndAVersion) {
  components().registerComponent("sim", "Simulation", "2.1", false);
  EXPECT_STREQ(components().getNameOfComponent("sim").c_str(), "Simulation");
  EXPECT_STREQ(components().getVersionOfComponent("sim").c_str(), "2.1");
}

TEST(Components, OfAnUnknownIdentifierHaveEmptyTexts) {
  components().registerComponent("sim", "Simulation", "2.1", false);
  for (char const * const id : {"", "Sim", "si", "simu"}) {
    EXPECT_EQ(components().getNameOfComponent(id).Len(), 0) << id;
    EXPECT_EQ(components().getVersionOfComponent(id).Len(), 0) << id;
  }
  EXPECT_EQ(identifiers(), std::vector<std::string>{"sim"});
}

TEST(Components, StayAsTheyAreUnlessTheyAreOverwritten) {
  EXPECT_TRUE(components().registerComponent("sim", "Simulation", "2.1", false));
  EXPECT_FALSE(components().registerComponent("sim", "Other", "3.0", false));
  EXPECT_STREQ(components().getNameOfComponent("sim").c_str(), "Simulation");
  EXPECT_STREQ(components().getVersionOfComponent("sim").c_str(), "2.1");
  EXPECT_TRUE(components().registerComponent("sim", "Other", "3.0", true));
  EXPECT_STREQ(components().getNameOfComponent("sim").c_str(), "Other");
  EXPECT_STREQ(components().getVersionOfComponent("sim").c_str(), "3.0");
  EXPECT_EQ(identifiers().size(), 1u);
}

TEST(Components, MayBeOverwrittenBeforeTheyAreThere) {
  EXPECT_TRUE(components().registerComponent("sim", "Simulation", "2.1", true));
  EXPECT_STREQ(components().getNameOfComponent("sim").c_str(), "Simulation");
}

TEST(Components, AreListedInWhateverOrderManyOfThemCome) {
  std::vector<std::string> ids;
  for (int i = 0; i < 3000; ++i)
    ids.push_back("component " + std::to_string(i));
  support::Random random(2);
  std::shuffle(ids.begin(), ids.end(), random);
  for (std::string const & id : ids)
    ASSERT_TRUE(components().registerComponent(id.c_str(), ("name of " + id).c_str(), id.c_str(), false));
  for (std::string const & id : ids) {
    ASSERT_EQ(components().getNameOfComponent(id.c_str()).c_str(), "name of " + id);
    ASSERT_EQ(components().getVersionOfComponent(id.c_str()).c_str(), id);
  }
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(identifiers(), ids);
}

} // namespace
