// Modules that meet at run time: plug-ins that are loaded and discarded, libraries, and far calls.

#include "../activity.hpp"

#include "adll.hpp"
#include "afarcall.hpp"
#include "aplugin.hpp"
#include "plugins/farcall_agreement.hpp"
#include "support/data/files.hpp"

#include <cstring>

namespace endurance {
namespace {

class Plugins : public Activity {
public:
  bool round() override {
    KivPluginManager & manager = KivPluginManager::Instance();
    expect(load("plugin_fixture.dll") == KIV_PLUGIN_LOADED, "a plug-in was not loaded");
    expect(load("plugin_no_version.dll") == KIV_PLUGIN_ENTRY_MISSING, "a bad plug-in was not refused");
    expect(load("no_such_file.dll") == KIV_PLUGIN_NOT_LOADED, "no plug-in was loaded");
    KivBasicPluginList plugins;
    manager.GetAllPlugins(plugins, true);
    expect(plugins.size() == 1, "the list does not have the plug-in");
    expect(manager.DiscardPlugins(), "plug-ins were not discarded");
    KivDLLLoader library;
    expect(library.load((support::binFolder() + "plugin_needed.dll").c_str()) && library.unload(),
           "a library was not loaded");
    return true;
  }

private:
  static KivPluginLoadResult load(char const * file) {
    return KivPluginManager::Instance().LoadSinglePlugin((support::binFolder() + file).c_str());
  }
};

class FarCalls : public Activity {
public:
  FarCalls() {
    // Its receivers are never taken away, so it stays.
    service_.load((support::binFolder() + "farcall_service.dll").c_str());
  }

  bool round() override {
    static constexpr char kText[] = "a text from one module to the other";
    KivInputData const input{1, kText};
    for (int i = 0; i < 50; ++i) {
      KivMemBuf answer;
      expect(KivFarCallFactory::Instance().call(kEcho, input, answer), "nobody has taken a far call");
      expect(answer.size == std::strlen(kText) && std::memcmp(answer.data, kText, answer.size) == 0,
             "a far call was answered wrongly");
      KivMemBuf nothing;
      expect(!KivFarCallFactory::Instance().call("nobody", input, nothing), "somebody has taken a far call");
    }
    return true;
  }

private:
  KivDLLLoader service_;
};

} // namespace

ActivityPtr loadPlugins(Place const &) { return std::make_unique<Plugins>(); }
ActivityPtr callFar(Place const &) { return std::make_unique<FarCalls>(); }

} // namespace endurance
