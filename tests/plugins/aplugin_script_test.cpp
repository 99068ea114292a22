#include "aplugin.hpp"

#include "plugin_run.hpp"
#include "script_agreement.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

using kivtest::plugin;

namespace {

/// A script plug-in that a modelling toolkit has loaded.
class ScriptPlugin : public testing::Test {
protected:
  ScriptPlugin() {
    kivtest::initCommandLine(false);
    manager.emplace();
    plugin("TYPE", "102");
  }

  KivPluginKivScript const & load() {
    EXPECT_EQ(manager->LoadSinglePlugin(kivtest::fixturePath().c_str()), KIV_PLUGIN_LOADED);
    return dynamic_cast<KivPluginKivScript &>(*kivtest::pluginsOf(*manager).at(0));
  }

  std::optional<kivtest::Manager> manager;
};

TEST_F(ScriptPlugin, AnswersWhatItsFunctionsDo) {
  KivPluginKivScript const & script = load();
  EXPECT_STREQ(script.getMessagePortName(), "test port");
  EXPECT_TRUE(script.IsCommandExisting("first"));
  EXPECT_FALSE(script.IsCommandExisting("third"));
  EXPECT_STREQ(script.GetAllCommands(';').c_str(), "first;second");
  EXPECT_STREQ(script.GetAllCommands('|').c_str(), "first|second");
  plugin("EXECUTION", "43");
  EXPECT_EQ(script.getExecutionType(), KIV_PLUGIN_KIVSCRIPT_TOOLKIT);
  plugin("EXECUTION", "7");
  EXPECT_EQ(script.getExecutionType(), 7);
}

TEST_F(ScriptPlugin, GetsARequestWithAMessageAsItIs) {
  KivPluginKivScript const & script = load();
  char const command[] = "command";
  for (bool const answer : {true, false}) {
    KivLeoParser parser{answer};
    KivMessage message{};
    EXPECT_EQ(script.handleRequest(command, parser, &message), answer);
    EXPECT_EQ(message.command, command);
    EXPECT_EQ(message.parser, &parser);
  }
  KivLeoParser parser{true};
  EXPECT_TRUE(script.handleRequest(command, parser, nullptr));
}

TEST_F(ScriptPlugin, GetsARequestWithAResultAsItIs) {
  KivPluginKivScript const & script = load();
  char const command[] = "command";
  for (bool const answer : {true, false}) {
    KivLeoParser parser{answer};
    KivScriptResult result;
    EXPECT_EQ(script.handleRequest(command, parser, result), answer);
    EXPECT_EQ(result.command, command);
    EXPECT_EQ(result.parser, &parser);
  }
}

TEST(ScriptPluginObject, HasNoFunctionsBeforeItsInit) {
  auto * const loader = new KivDLLLoader;
  ASSERT_TRUE(loader->load(kivtest::fixturePath("plugin_needed").c_str()));
  KivPluginKivScript script(loader);
  auto const * const words = reinterpret_cast<void * const *>(&script);
  for (std::size_t i = sizeof(KivBasicPlugin) / sizeof(void *); i < sizeof script / sizeof(void *); ++i)
    EXPECT_EQ(words[i], nullptr) << i;
  EXPECT_FALSE(script.init()) << "its library has none of them";
}

// Which programs take which script plug-ins

enum Program { runtime, toolkit, neither, runtimeService, toolkitService, otherService };

struct Row {
  Program program;
  char const * executionType;
  bool isTaken;
  bool isAccessible;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  constexpr char const * names[] = {"a runtime",          "a toolkit",          "another program",
                                    "a service, runtime", "a service, toolkit", "a service of its own"};
  return out << row.executionType << " in " << names[row.program];
}

void become(Program program) {
  switch (program) {
  case runtime:
  case runtimeService: Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME); break;
  case toolkit:
  case toolkitService: Kiv_SetApplicationType(KIV_APPLICATION_TOOLKIT); break;
  case neither:
  case otherService: Kiv_SetApplicationType(static_cast<KivApplicationType>(2)); break;
  }
  Kiv_SetWS(program >= runtimeService);
}

class ExecutionTypes : public ScriptPlugin, public testing::WithParamInterface<Row> {};

TEST_P(ExecutionTypes, AreTakenByTheProgramsThatTheyAreFor) {
  become(GetParam().program);
  plugin("EXECUTION", GetParam().executionType);
  EXPECT_EQ(manager->LoadSinglePlugin(kivtest::fixturePath().c_str()),
            GetParam().isTaken ? KIV_PLUGIN_LOADED : KIV_PLUGIN_DECLINED);
  EXPECT_EQ(kivtest::isInProcess("plugin_fixture.dll"), GetParam().isTaken);
}

TEST_P(ExecutionTypes, AreAccessibleInThoseProgramsAlone) {
  KivPluginKivScript const & script = load();
  become(GetParam().program);
  plugin("EXECUTION", GetParam().executionType);
  EXPECT_EQ(script.isAccessibleInCurrentApp(), GetParam().isAccessible);
}

constexpr Row kRows[] = {
    {runtime, "42", true, true},
    {runtime, "43", false, false},
    {runtime, "44", true, true},
    {runtime, "45", false, false},
    {runtime, "0", false, false},
    // a toolkit takes all of them, whatever they say
    {toolkit, "42", true, false},
    {toolkit, "43", true, true},
    {toolkit, "44", true, true},
    {toolkit, "45", true, false},
    {toolkit, "-1", true, false},
    {neither, "42", false, false},
    {neither, "43", false, false},
    {neither, "44", false, false},
    {neither, "45", false, false},
    // so does a web service
    {runtimeService, "42", true, true},
    {runtimeService, "43", true, true},
    {runtimeService, "44", true, true},
    {runtimeService, "45", true, true},
    {toolkitService, "42", true, true},
    {toolkitService, "43", true, true},
    {otherService, "42", true, true},
    {otherService, "43", true, true},
    {otherService, "44", true, true},
    {otherService, "45", true, true},
};
INSTANTIATE_TEST_SUITE_P(Table, ExecutionTypes, testing::ValuesIn(kRows));

} // namespace
