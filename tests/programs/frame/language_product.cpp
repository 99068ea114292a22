// A product whose KIVARA_STEPS, separated by '|', say what to do with the languages. It prints what it sees as "name=value".
// Steps before "run" happen in prepareApplication, the others in runApplication; without "run" the program ends with code 5.

#include "frame_program.hpp"

#include "aappinfo.hpp"
#include "ainter.hpp"
#include "amlstr.hpp"
#include "locale/ainter_state.hpp"
#include "support/imports/import_spy.hpp"
#include "sv/help.hpp"
#include "sv/mdi.hpp"
#include "tools/international.hpp"

#include <functional>
#include <map>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using SV::String;
using Words = std::vector<std::string>;

void print(std::string const & name, std::string const & value) {
  std::printf("%s=%s\n", name.c_str(), value.c_str());
  std::fflush(stdout);
}
void print(std::string const & name, String const & value) { print(name, std::string(value.c_str())); }
void print(std::string const & name, long value) { print(name, std::to_string(value)); }

unsigned long numberOf(std::string const & word) { return std::stoul(word, nullptr, 0); }
unsigned short shortOf(std::string const & word) { return static_cast<unsigned short>(numberOf(word)); }

std::string nameOf(SV::ResMgr const * manager) { return manager ? manager->GetFileName().c_str() : "none"; }

/// Every manager from the active one on.
void printChain(Words const & words) {
  SV::ResMgr * const active = SV::Resource::GetResManager();
  std::string chain = nameOf(active);
  while (SV::ResMgr * const next = KivInternational::getNextResMgr()) {
    chain += ", " + nameOf(next);
    SV::Resource::SetResManager(next);
  }
  SV::Resource::SetResManager(active);
  print(words[0], chain);
}

void printLanguages(Words const & words) {
  std::string list;
  for (unsigned short const id : KivInternational::GetAvailableLanguages())
    list += (list.empty() ? "" : ",") + std::to_string(id);
  print(words[0], list);
}

void printButtons(Words const & words) {
  SV::International const & labels = SV::Application::GetAppInternational();
  print(words[0], std::string(labels.GetOKButtonText().c_str()) + ',' + labels.GetCancelButtonText().c_str() + ',' +
                      labels.GetHelpButtonText().c_str());
}

/// "search 1001 text" and the like: the result and the length, which is -1 where none was given.
void printLookUp(Words const & words) {
  std::string const & text = words.size() > 2 ? words[2] : words[1];
  unsigned short const resId = words.size() > 2 ? shortOf(words[1]) : 0;
  String const string(text.c_str());
  int length = -1;
  int lengthOfPointer = -1;
  std::map<std::string, std::function<long()>> const lookUps{
      {"equals", [&] { return Kiv_MultiLangEquals(string, resId, &length); }},
      {"starts", [&] { return Kiv_MultiLangStartsWith(string, resId, &length); }},
      {"search", [&] { return Kiv_MultiLangSearchForAny(string, resId, &length); }},
      {"find", [&] { return Kiv_MultiLangFindResId(string); }}};
  std::map<std::string, std::function<long()>> const pointerLookUps{
      {"equals", [&] { return Kiv_MultiLangEquals(text.c_str(), resId, &lengthOfPointer); }},
      {"starts", [&] { return Kiv_MultiLangStartsWith(text.c_str(), resId, &lengthOfPointer); }},
      {"find", [&] { return Kiv_MultiLangFindResId(text.c_str()); }}};
  long const result = lookUps.at(words[0])();
  auto const other = pointerLookUps.find(words[0]);
  bool const agree = other == pointerLookUps.end() || (other->second() == result && lengthOfPointer == length);
  print(words[0], std::to_string(result) + ", " + std::to_string(length) + (agree ? "" : ", but not for a pointer"));
}

/// The look-ups without a place for the length, and without a text.
void printNulls(Words const & words) {
  unsigned short const resId = shortOf(words[1]);
  String const text(words.at(2).c_str());
  char const * const none = nullptr;
  std::ostringstream results;
  results << Kiv_MultiLangEquals(text, resId, nullptr) << Kiv_MultiLangEquals(text.c_str(), resId, nullptr)
          << Kiv_MultiLangStartsWith(text, resId, nullptr) << Kiv_MultiLangStartsWith(text.c_str(), resId, nullptr)
          << ", " << Kiv_MultiLangSearchForAny(text, resId, nullptr) << ", "
          << Kiv_MultiLangEquals(none, resId, nullptr) << Kiv_MultiLangStartsWith(none, resId, nullptr)
          << Kiv_MultiLangFindResId(none);
  print(words[0], results.str());
}

/// Whether two texts of one identifier are the same characters in memory.
void printShared(Words const & words) {
  String const first = Kiv_MultiLangGet(shortOf(words[1]), shortOf(words.at(2)));
  String const second = Kiv_MultiLangGet(shortOf(words[1]), shortOf(words.at(2)));
  print(words[0], first.Len() > 0 && first.c_str() == second.c_str());
}

void labelOK(Words const & words) {
  SV::International international(SV::Application::GetAppInternational());
  international.ChangeOKButtonText(words[1].c_str());
  SV::Application::ChangeAppInternational(international);
}

/// What the toolkit does with the files of resource DLLs.
struct {
  bool failureIsOurs = true; ///< the flag says so at each opening
  int openings = 0;
  int unloads = 0;
  std::string steps; ///< since the last question: each opening with the manager that is active then, and each unloading
} files;

void noteFile(std::string const & step) { files.steps += (files.steps.empty() ? "" : ", ") + step; }

void watchFiles() {
  support::spyOnImport("SV0105.dll", "CreateFileW", [](support::SpiedCall const &) {
    ++files.openings;
    files.failureIsOurs = files.failureIsOurs && kivara::loadingResourceFile;
    noteFile("open (" + nameOf(SV::Resource::GetResManager()) + ")");
  });
  support::spyOnImport("SV0105.dll", "FreeLibrary", [](support::SpiedCall const &) {
    ++files.unloads;
    noteFile("unload");
  });
}

class LanguageProgram : public FrameProgram {
  int prepareApplication() override {
    watchFiles();
    support::spyOnImport("SV0105.dll", "MessageBoxA", [](support::SpiedCall const & call) {
      char text[64];
      std::snprintf(text, sizeof text, "owner %d, style %x", call.arguments[0] != 0,
                    static_cast<unsigned>(call.arguments[3]));
      print("box", std::string(text));
    });
    if (!perform())
      return 5;
    return 0;
  }

  void run() override { perform(); }

  /// The next steps, up to and with "run"; false when there is none.
  bool perform() {
    for (std::string step; std::getline(steps_, step, '|');) {
      Words words;
      std::istringstream stream(step);
      for (std::string word; words.size() < 2 ? static_cast<bool>(stream >> word) : false;)
        words.push_back(word);
      std::string rest;
      if (std::getline(stream, rest) && rest.size() > 1)
        words.push_back(rest.substr(1));
      if (words.empty())
        continue;
      if (words[0] == "run")
        return true;
      actions_.at(words[0])(words);
    }
    return false;
  }

  void create(Words const & words) {
    print(words[0], createResourceManager(words[1].c_str(), words.at(2) == "1"));
    print("failed", KivInternational::errorLoadingResourceFiles());
  }

  void openWindow() {
    frame_ = std::make_unique<SV::MDIFrame>("Languages");
    frame_->Show();
  }

  std::istringstream steps_{setting("STEPS")};
  std::unique_ptr<SV::MDIFrame> frame_;
  std::map<std::string, std::function<void(Words const &)>> const actions_{
      {"languages", printLanguages},
      {"current", [](Words const & w) { print(w[0], KivInternational::GetCurrentLanguageID()); }},
      {"locale",
       [](Words const & w) { print(w[0], static_cast<long>(KivInternational::GetCurrentWindowsLocaleID())); }},
      {"iso", [](Words const & w) { print(w[0], KivInternational::GetCurrentISOID()); }},
      {"base", [](Words const & w) { print(w[0], KivInternational::GetDefaultLanguageID()); }},
      {"baseiso", [](Words const & w) { print(w[0], KivInternational::GetIso639OfBaseLanguage()); }},
      {"again", [](Words const &) { KivInternational::InitAvailableLanguages(); }},
      {"set", [](Words const & w) { KivInternational::SetCurrentLanguageID(shortOf(w[1])); }},
      {"create", [this](Words const & w) { create(w); }},
      {"delete", [](Words const &) { KivInternational::DeleteResMgrs(); }},
      {"deactivate", [](Words const &) { SV::Resource::SetResManager(nullptr); }},
      {"files", [](Words const & w) { print(w[0], std::exchange(files.steps, {})); }},
      {"unloads", [](Words const & w) { print(w[0], files.unloads); }},
      {"flag",
       [](Words const & w) {
         print(w[0], std::string(files.openings > 0 && files.failureIsOurs ? "set in each load" : "not set in a load") +
                         (kivara::loadingResourceFile ? " and still set" : ""));
       }},
      {"next", [](Words const & w) { print(w[0], nameOf(KivInternational::getNextResMgr())); }},
      {"chain", printChain},
      {"text", [](Words const & w) { print(w[1], SV::Resource::LoadString(numberOf(w[1]))); }},
      {"buttons", printButtons},
      {"runtime", [](Words const &) { Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME); }},
      {"tool", [](Words const & w) { print(w[0], Kiv_GetToolName(false)); }},
      {"newhelp", [this](Words const & w) { createHelpObject(w[1].c_str()); }},
      {"help", [](Words const & w) { print(w[0], SV::Application::GetHelp()->GetFileName()); }},
      {"helpmodes", [](Words const & w) { print(w[0], SV::Application::EnableHelp(0)); }},
      {"window", [this](Words const &) { openWindow(); }},
      {"wait", [](Words const &) { Execute(); }},
      {"get", [](Words const & w) { print(w[0], Kiv_MultiLangGet(shortOf(w[1]), shortOf(w[2]))); }},
      {"drop", [](Words const &) { Kiv_DeinitializeMultiLanguageStrings(); }},
      {"load", [](Words const &) { Kiv_InitializeMultiLanguageStrings(); }},
      {"equals", printLookUp},
      {"starts", printLookUp},
      {"search", printLookUp},
      {"find", printLookUp},
      {"nulls", printNulls},
      {"shared", printShared},
      {"label", labelOK},
  };
};

LanguageProgram program;

} // namespace
