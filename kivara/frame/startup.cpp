#include "frame/startup.hpp"

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/openfile.hpp"
#include "base/textids.hpp"
#include "locale/buttontexts.hpp"
#include "sv/application.hpp"
#include "sv/imagepool.hpp"
#include "sv/resource.hpp"
#include "system/machine/startdir.hpp"
#include "tools/international.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <process.h>
#include <utility>

using SV::String;

namespace kivara {
namespace {

FILE * traceFile = nullptr;

} // namespace

void openTraceFile() {
  String const name = KivCmdline::Instance().getTraceFilename();
  if (name.Len() == 0)
    return;
  traceFile = openForThisProgram(name.c_str(), "wt");
  if (traceFile != nullptr)
    Kiv_TraceSetHandle(traceFile);
}

void closeTraceFile() {
  if (traceFile == nullptr)
    return;
  Kiv_TraceSetHandle(nullptr); // later lines go to stdout
  handles::Stream const file(std::exchange(traceFile, nullptr));
}

void applySuppression() {
  SV::Application::SetModalDialogSuppression(KivCmdline::modalDialogSuppression());
  SV::Application::SetModalDialogSuppressionLogfileName(KivCmdline::Instance().getModalDialogSuppressionLogfileName());
  SV::Application::SetShowWindowSuppression(KivCmdline::showWindowSuppression());
}

void registerPictures() { SV::ImagePool::SetPoolFile(Kiv_GetProgramPathFilename("agfx.zip")); }

void writePidFile() {
  String const name = KivCmdline::Instance().getValue("pidfile");
  if (name.Len() == 0)
    return;
  int const id = _getpid();
  if (OpenFile const file = openFile(name.c_str(), "w"))
    std::fprintf(file.get(), "%d\n", id);
}

void keepStartDirectory() {
  char directory[260] = "";
  DWORD const length = GetCurrentDirectoryA(sizeof directory, directory);
  if (length < sizeof directory)
    storeStartDirectory(directory);
}

void applyCharSet() {
  String text = KivCmdline::Instance().getUICharSet();
  if (text.Len() == 0)
    text = SV::Resource::LoadString(texts::kCharacterSet);
  if (text.Len() == 0)
    return;
  SV::Font font = SV::Application::GetAppFont();
  font.ChangeCharSet(static_cast<SV::CharSet>(SV::h_atoi(text.c_str())));
  SV::Application::ChangeAppFont(font);
}

void applyButtonLabels() { installWithButtonTexts(SV::International(SV::COUNTRY_SYSTEM, SV::LANGUAGE_SYSTEM)); }

} // namespace kivara
