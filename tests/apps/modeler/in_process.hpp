#pragma once
/// \file
/// Parts of the sample product in the process of the test, with windows of their own.

#include "acmdline.hpp"
#include "kivara.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace modeler {

/// The window library and the program's texts, in English; what the program keeps is kept in a folder of the test's.
class InProcess : public testing::Test {
protected:
  InProcess() {
    static std::string keep = "-keep" + (folder / "kept.ini");
    static char program[] = "modeler.exe";
    static char * words[] = {program, keep.data()};
    KivCmdline::init(2, words, true, "log");
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    EXPECT_TRUE(SV::InitSV(0, nullptr));
    KivInternational::InitAvailableLanguages();
    KivInternational::SetCurrentLanguageID(2057);
    KivInternational::createResourceManager("kivara", true);
    KivInternational::createResourceManager("modeler", true);
    Kiv_InitializeMultiLanguageStrings();
  }
  ~InProcess() override {
    Kiv_DeinitializeMultiLanguageStrings();
    KivExitAppEvent("end").trigger();
    SV::DeInitSV();
  }

  /// Waits until that is so, while the windows get their messages.
  template <class Condition> static bool comes(Condition const & condition) {
    return support::eventually([&] {
      SV::Application::Reschedule();
      return condition();
    });
  }

  support::TempFolder folder;
};

} // namespace modeler
